#include "letters/followupletters.h"

#include "basic/number.h"
#include "basic/run_time_error.h"
#include "basic/text.h"
#include "module/shared_routines.h"
#include "printing/page.h"
#include "printing/rows.h"

namespace tolva::letters {

using basic::trim;

followupletters::followupletters(module::Module& module)
    : Screen(module.runtime, "followupletters", "Print Follow Up Letters"), module_(module) {
    Command2.on_click = [this] { unload(); };
    Command1.on_click = [this] { printfollowupletters(); };
}

std::vector<followupletters::Kind> followupletters::kinds() {
    return {
        {5, *module_.listingdb, module_.listingset, &followupletters::print_listing_letter},
        {6, *module_.prospectdb, module_.prospectset, &followupletters::print_prospect_letter},
        {7, *module_.solddb, module_.soldset, &followupletters::print_sold_letter},
    };
}

void followupletters::printfollowupletters() {
    const auto due = [this](const char* types) {
        return std::string("Select * from [table] where messagetype ") + types + " and messagedate <= #" +
               module_.today_text() + "# order by messagedate, messagetime";
    };

    std::unique_ptr<dao::Recordset>& messages = module_.messageset;
    messages = module_.messagedb->OpenRecordset(due(">3"));
    if (messages->RecordCount() == 0) {
        runtime().message("No Letters to Print", "Message");
        return;
    }
    const int count = print_all(*messages);

    // The date is taken anew: a run across midnight clears what the second date covers.
    messages = module_.messagedb->OpenRecordset(due(">4"));
    for (messages->MoveFirst(); !messages->Eof(); messages->MoveNext())
        messages->Delete();
    runtime().message(std::to_string(count) + " Letters Printed", "Message");
}

int followupletters::print_all(dao::Recordset& messages) {
    platform::LongWork work(runtime(), "Printing letters");
    Trap trap;
    int count = 0;
    for (messages.MoveFirst(); !messages.Eof(); messages.MoveNext()) {
        try {
            count += print_due(messages, trap);
        } catch (const basic::RunTimeError&) {
            if (!trap.take())
                throw;
        }
        work.step();
    }
    return count;
}

int followupletters::print_due(const dao::Recordset& message, Trap& trap) {
    const std::string id = basic::spaced_number_text(message.field("customerid").number());
    // Reminders come with the query too; they match no kind and stay for the poll.
    const double type = message.field("messagetype").number();
    for (const Kind& kind : kinds()) {
        if (type != kind.messagetype)
            continue;
        kind.set = kind.database.OpenRecordset("Select * from [table] where id=" + id);
        if (kind.set->RecordCount() < 1)
            return 0;
        if (printing::included(*kind.set)) {
            trap.arm();
            print_and_stamp(kind, message);
        }
        // A customer who is left out of printing is counted all the same.
        return 1;
    }
    return 0;
}

void followupletters::print_and_stamp(const Kind& kind, const dao::Recordset& message) {
    // Whatever folder it was chosen from, a scheduled letter comes from the program's own.
    std::string name = trim(message.field("letterpath").text());
    if (name.find('\\') != std::string::npos)
        name = module::filepartofpath(name);
    rtf1.change().load(module_.read_document(trim(module_.appfolder + "\\letters\\" + name)));
    (this->*kind.print)();

    dao::Recordset& customer = *kind.set;
    // The letter is on paper: a text that is missing here must not cost its entry.
    const std::string history = module_.today_text() + ": " + printing::stored_text(message, "messagetext") +
                                "\r\n" + printing::stored_text(customer, "contacthistory");
    customer.Edit();
    customer.write("datelastcontact", module_.today());
    customer.write("contacthistory", history);
    customer.Update();
}

void followupletters::print_listing_letter() {
    print_merged(*module_.listingset);
}

void followupletters::print_prospect_letter() {
    print_merged(*module_.prospectset);
}

void followupletters::print_sold_letter() {
    print_merged(*module_.soldset);
}

/// In the listings' order for every kind, and with nothing for a postscript.
void followupletters::print_merged(const dao::Recordset& customer) {
    rtf1.change().set_text_rtf(merge(rtf1.content().text_rtf(), customer, module_, "", TagOrder::listings));
    const module::Settings& settings = module_.settings;
    platform::Printer& printer = module_.printer();
    printer.job_name = printing::customer_job("Letter", customer);
    printing::printrichtext(
        printer, rtf1.content(),
        printing::margins_in_inches(settings.lmargin, settings.tmargin, settings.rmargin, settings.bmargin));
}

} // namespace tolva::letters
