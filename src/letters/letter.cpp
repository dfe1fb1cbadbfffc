#include "letters/letter.h"

#include "basic/text.h"
#include "letters/merge.h"
#include "printing/page.h"
#include "printing/rows.h"

namespace tolva::letters {

using basic::trim;
using module::LetterMode;

letter::letter(module::Module& module) : Screen(module.runtime, "letter", "Print Letters"), module_(module) {
    for (platform::TextBox* box : {&bottom_margin, &right_margin, &top_margin, &left_margin})
        box->text = "1";
    Command2.tool_tip = "Print Letter for Current Person";
    Command2.enabled = false;
    Command1.tool_tip = "Load Letter";
    rtf1.change().set_text("Click Load Letter to Select");
    Command4.on_click = [this] { unload(); };
    Command2.on_click = [this] { Command2_Click(); };
    Command1.on_click = [this] { Command1_Click(); };
}

void letter::on_load() {
    top_margin.text = trim(module_.settings.tmargin);
    bottom_margin.text = trim(module_.settings.bmargin);
    left_margin.text = trim(module_.settings.lmargin);
    right_margin.text = trim(module_.settings.rmargin);
    if (module_.printerready == 0)
        Command2.enabled = false;
}

void letter::load_letter(const std::string& path) {
    rtf1.change().load(module_.read_document(path));
}

void letter::Command1_Click() {
    dlgCommonDialog.initial_folder = module_.appfolder + "\\letters";
    dlgCommonDialog.title = "Open";
    dlgCommonDialog.filter = "All Files (*.*)";
    dlgCommonDialog.show_open();
    if (dlgCommonDialog.file_name.empty())
        return;
    load_letter(dlgCommonDialog.file_name);
    // Also without a printer: the load event's test is not repeated.
    Command2.enabled = true;
    module_.letterfile = dlgCommonDialog.file_name;
}

dao::Recordset& letter::customers() const {
    switch (module_.lettermode) {
    case LetterMode::listing_list:
    case LetterMode::listing_form:
        return *module_.listingset;
    case LetterMode::prospect_list:
    case LetterMode::prospect_form:
        return *module_.prospectset;
    case LetterMode::sold_list:
    case LetterMode::sold_form:
        break;
    }
    return *module_.soldset;
}

void letter::Command2_Click() {
    switch (module_.lettermode) {
    case LetterMode::listing_list:
    case LetterMode::prospect_list:
    case LetterMode::sold_list:
        print_for_list();
        break;
    case LetterMode::listing_form:
        print_for_form("This Customer has 'Include in Printing' set to False");
        break;
    // A sold customer is a Prospect here too: meant.
    case LetterMode::prospect_form:
    case LetterMode::sold_form:
        print_for_form("This Prospect has 'Include in Printing' set to False");
        break;
    }
}

void letter::print_for_list() {
    if (module_.confirm("Print Letters?") != 1)
        return;
    platform::LongWork work(runtime(), "Printing letters");
    dao::Recordset& set = customers();
    for (set.MoveFirst(); !set.Eof(); set.MoveNext()) {
        if (printing::included(set)) {
            printletter();
            work.step();
        }
    }
}

void letter::print_for_form(const char* left_out) {
    const dao::FieldValue included = customers().field("includeinprinting");
    // Null is neither yes nor no.
    if (included.is_null())
        return;
    if (included.yes_no())
        printletter();
    else
        runtime().message(left_out, "Message");
}

void letter::printletter() {
    load_letter(module_.letterfile);
    const bool is_listing =
        module_.lettermode == LetterMode::listing_list || module_.lettermode == LetterMode::listing_form;
    rtf1.change().set_text_rtf(merge(rtf1.content().text_rtf(), customers(), module_, ps.text,
                                     is_listing ? TagOrder::listings : TagOrder::others));
    platform::Printer& printer = module_.printer();
    printer.job_name = printing::customer_job("Letter", customers());
    // The margins are read anew for every letter.
    printing::printrichtext(printer, rtf1.content(),
                            printing::margins_in_inches(left_margin.text, top_margin.text, right_margin.text,
                                                        bottom_margin.text));
    load_letter(module_.letterfile);
}

} // namespace tolva::letters
