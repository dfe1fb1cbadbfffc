#include "records/sold.h"

#include "basic/number.h"
#include "basic/run_time_error.h"
#include "basic/text.h"
#include "messages/message_kind.h"
#include "module/option_lists.h"
#include "records/birthday_reminders.h"

namespace tolva::records {

using basic::leading_number;
using basic::money_text;
using basic::trim;

namespace {

/// Not Enter: on this screen another key runs the quick search. Meant.
constexpr int search_key = 12;
constexpr int invalid_use_of_null = 94;
constexpr int object_required = 424;

/// The first role that is ticked.
std::string agency_cell(const dao::Recordset& row) {
    if (row.field("agency0").yes_no())
        return "Listing Agent";
    if (row.field("agency1").yes_no())
        return "Selling Agent";
    if (row.field("agency2").yes_no())
        return "Listing & Selling Agent";
    return {};
}

void add(std::optional<double>& sum, const dao::FieldValue& value) {
    if (value.is_null())
        sum.reset();
    else if (sum)
        *sum += value.number();
}

std::string total_text(const std::optional<double>& sum) {
    if (!sum)
        throw basic::RunTimeError(invalid_use_of_null);
    return money_text(*sum);
}

} // namespace

sold::sold(module::Module& module)
    : RecordScreen(module, "sold", "Sold Properties", "Sold Homes", 7,
                   {module.solddb, module.soldset, module.soldquery, module.soldfirstload,
                    &module::Settings::sold_counter, &module.soldnewrecord, true}) {
    Frame9[0].caption = "Totals";
    Frame9[1].caption = "Averages";
    agency[0].caption = "Listing Agent";
    agency[1].caption = "Selling Agent";
    agency[2].caption = "Listing && Selling Agent";

    grid_columns_ = {
        {"", 1, [](const dao::Recordset& row) { return trimmed(row, "id"); }},
        {"Name", 3000, owners},
        {"Address", 3000, [](const dao::Recordset& row) { return trimmed(row, "soldaddress"); }},
        {"City", 2000, [](const dao::Recordset& row) { return trimmed(row, "soldcity"); }},
        {"Selling Price", 1200, [](const dao::Recordset& row) { return price(row, "sellingprice"); }},
        {"Date Sold", 1200, [](const dao::Recordset& row) { return trimmed(row, "datesold"); }},
        {"Agency", 2000, agency_cell},
    };

    const SaveRule date = save::date_or_null(module);
    const auto net = [this](std::function<jet::Value()> worked_out) {
        return FieldRule{
            "netcommission", std::move(worked_out),
            [this](const dao::FieldValue& value) { netcommission.caption = load::positive()(value); },
            [this] { netcommission.caption.clear(); }};
    };
    fields_ = {
        text_field("first", first, save::cut_then_trim(50), load::trimmed()),
        text_field("middle", middle, save::cut_then_trim(50), load::trimmed()),
        text_field("last", last, save::cut_then_trim(50), load::trimmed()),
        text_field("address", address, save::cut_then_trim(50), load::trimmed()),
        text_field("city", city, save::cut_then_trim(50), load::trimmed()),
        text_field("state", state, save::cut_then_trim(2), load::trimmed()),
        text_field("zip", zip, save::cut_then_trim(10), load::trimmed()),
        text_field("homephone", homephone, save::cut_then_trim(20), load::trimmed()),
        text_field("workphone", workphone, save::cut_then_trim(20), load::trimmed()),
        text_field("cellphone", cellphone, save::cut_then_trim(20), load::trimmed()),
        text_field("fax", fax, save::cut_then_trim(20), load::trimmed()),
        text_field("employer", employer, save::cut_then_trim(50), load::trimmed()),
        text_field("email", email, save::cut_then_trim(100), load::trimmed()),
        text_field("businessname", businessname, save::trim_then_cut(50), load::trimmed()),
        text_field("co_first", co_first, save::cut_then_trim(50), load::trimmed()),
        text_field("co_middle", co_middle, save::cut_then_trim(50), load::trimmed()),
        text_field("co_last", co_last, save::cut_then_trim(50), load::trimmed()),
        text_field("soldbusiness", soldbusiness, save::cut_then_trim(50), load::trimmed()),
        text_field("soldaddress", soldaddress, save::cut_then_trim(50), load::trimmed()),
        text_field("soldcity", soldcity, save::cut_then_trim(50), load::trimmed()),
        text_field("soldstate", soldstate, save::cut_then_trim(20), load::trimmed()),
        text_field("soldzip", soldzip, save::cut_then_trim(10), load::trimmed()),
        text_field("construction", construction, save::cut_then_trim(50), load::trimmed()),
        text_field("squarefeet", squarefeet, save::number(), load::positive()),
        text_field("bedrooms", bedrooms, save::number(), load::positive()),
        text_field("bathrooms", bathrooms, save::number(), load::positive()),
        text_field("basement", basement, save::trim_then_cut(50), load::trimmed()),
        text_field("garage", garage, save::trim_then_cut(50), load::trimmed()),
        text_field("lotx", lotx, save::number(), load::positive()),
        text_field("loty", loty, save::number(), load::positive()),
        text_field("acres", acres, save::number(), load::positive()),
        text_field("customersource", customersource, save::trim_then_cut(50), load::trimmed()),
        text_field("contacthistory", contacthistory, save::trimmed(), load::trimmed()),
        text_field("datesold", datesold, date, load::trimmed()),
        text_field("datelastcontact", datelastcontact, date, load::trimmed()),
        text_field("datenextcontact", datenextcontact, date, load::trimmed()),
        check_field("agency0", agency[0]),
        check_field("agency1", agency[1]),
        check_field("agency2", agency[2]),
        text_field("listingname", listingname, save::trim_then_cut(50), load::trimmed()),
        text_field("listingcompany", listingcompany, save::trim_then_cut(50), load::trimmed()),
        text_field("listingphone", listingphone, save::trim_then_cut(50), load::trimmed()),
        text_field("sellingname", sellingname, save::trim_then_cut(50), load::trimmed()),
        text_field("sellingcompany", sellingcompany, save::trim_then_cut(50), load::trimmed()),
        text_field("sellingphone", sellingphone, save::trim_then_cut(50), load::trimmed()),
        // Written twice in one pass: the unrounded difference, and further down what the label shows, which
        // stays.
        net([this] { return leading_number(commission.text) - leading_number(expenses.text); }),
        text_field("sellingprice", sellingprice, save::number(), load::positive()),
        text_field("commissionrate", commissionrate, save::number(), load::positive()),
        text_field("commission", commission, save::number(), load::positive()),
        text_field("expenses", expenses, save::number(), load::positive()),
        net([this] { return leading_number(netcommission.caption); }),
        text_field("notes", notes, save::trimmed(), load::trimmed()),
        kept_field("id", id, save::trimmed(), load::trimmed()),
        check_field("includeinprinting", includeinprinting),
        // What is typed here serves the reminders of this close and is gone on the next load: never written.
        text_field("birthday", birthday, nullptr, load::trimmed()),
        text_field("co_birthday", co_birthday, nullptr, load::trimmed()),
    };

    // "Listed" on this screen too.
    tests_ = std::vector<Test>{
        {datesold, true, "Invalid Date Listed"},
        {birthday, false, "Invalid Buyer Birthday"},
        {co_birthday, false, "Invalid Co-Buyer Birthday"},
        {datelastcontact, true, "Invalid Date Last Contact"},
        {datenextcontact, false, "Invalid Date Next Contact"},
    };

    // clang-format off
    modes_ = std::vector<Mode>{
        //                 grid   form
        {Command5,          false, true},
        {Command6,          false, true},
        {Command7,          false, true},
        {Command8,          false, true},
        {Command9,          false, true},
        {f_customerlist,    true,  false},
        {Frame9[0],         true,  false},
        {Frame9[1],         true,  false},
        {Frame10,           true,  false},
        {Command10,         true,  false},
        {m_newcustomer,     true,  false},
        {m_searchcustomer,  true,  false},
        {m_import,          true,  false},
        {m_exit,            true,  false},
        {m_printlist,       true,  false},
        {m_printlabels,     true,  false},
        {m_quicksearch,     true,  false},
        {m_deletecustomer,  false, true},
        {m_printcustomer,   false, true},
        {m_followup,        false, true},
    };
    // clang-format on

    lists_ = std::vector<OptionList>{
        {module::construction_list, construction},
        {module::basement_list, basement},
        {module::listingsource_list, customersource},
        {module::garage_list, garage},
    };

    grid_failures_are_silent_ = false;

    bind_navigation({Command6, Command7, Command8, Command9});
    bind_quick_search(Command4, search_key);
    bind_contact_button(Command1, datelastcontact, contacthistory);
    module_.bind_date_button(Command2, datenextcontact);
    module_.bind_date_button(Command3, datesold);
    module_.bind_date_button(Command36, birthday);
    module_.bind_date_button(Command37, co_birthday);
    bind_city({city, state, zip, homephone});

    select_on_focus({&acres,
                     &address,
                     &basement,
                     &bathrooms,
                     &bedrooms,
                     &birthday,
                     &businessname,
                     &cellphone,
                     &city,
                     &co_birthday,
                     &co_first,
                     &co_last,
                     &co_middle,
                     &commission,
                     &commissionrate,
                     &construction,
                     &customersource,
                     &datelastcontact,
                     &datenextcontact,
                     &datesold,
                     &email,
                     &employer,
                     &expenses,
                     &fax,
                     &first,
                     &garage,
                     &homephone,
                     &last,
                     &listingcompany,
                     &listingname,
                     &listingphone,
                     &lotx,
                     &loty,
                     &middle,
                     &sellingcompany,
                     &sellingname,
                     &sellingphone,
                     &sellingprice,
                     &soldaddress,
                     &soldbusiness,
                     &soldcity,
                     &soldstate,
                     &soldzip,
                     &squarefeet,
                     &state,
                     &workphone,
                     &zip});
    commission.on_lost_focus = [this] { work_out_net(); };
    expenses.on_lost_focus = [this] { work_out_net(); };

    Command5.on_click = [this] { close_record(); };
    Command10.on_click = [this] { exit_unloading(); };
    m_newcustomer.on_click = [this] { new_record(); };
    m_deletecustomer.on_click = [this] { delete_record("Delete Customer?"); };
    m_exit.on_click = [this] { exit_hiding(); };
    m_searchcustomer.on_click = [this] { search_customer(); };
    // Nothing, on this screen.
    m_import.on_click = [] {};
    m_schmess.on_click = [this] {
        schedule_message(messages::sold_reminder,
                         reminder_text({first, last, co_first, co_last}, "", contact()));
    };
    m_schlet.on_click = [this] { schedule_letter(messages::sold_letter); };
    m_printcustomer.on_click = [this] { print_sheet(); };
    bind_list(m_printlist, printing::customer_list);
    bind_labels(m_printlabels, module::LabelMode::sold, "No Active Customers");
    bind_letters(m_printletters, module::LetterMode::sold_list, module::LetterMode::sold_form,
                 "No Active Customers");
    bind_appointment(m_setappointment, '3', {first, last, co_first, co_last}, homephone);
    bind_views();
}

/// There is no search dialog: the screen goes, and the reference to show was never set.
void sold::search_customer() {
    unload();
    throw basic::RunTimeError(object_required);
}

// --- The grid and its summary ---

void sold::cleargrid() {
    RecordScreen::cleargrid();
    ttsold.caption = "0";
    for (platform::Label* label : {&ttsales, &ttcom, &ttexp, &ttnet, &aasales, &aacom, &aaexp, &aanet})
        label->caption = "0.00";
}

void sold::row_added(const dao::Recordset& row) {
    ++totals_.rows;
    add(totals_.sales, row.field("sellingprice"));
    add(totals_.commission, row.field("commission"));
    add(totals_.expenses, row.field("expenses"));
    add(totals_.net, row.field("netcommission"));
}

void sold::fill_grid() {
    totals_ = {};
    RecordScreen::fill_grid();
    ttsold.caption = std::to_string(totals_.rows);
    // All rows stand in the grid by now; a sum that is null cannot be shown, and that ends the program.
    ttsales.caption = total_text(totals_.sales);
    ttcom.caption = total_text(totals_.commission);
    ttexp.caption = total_text(totals_.expenses);
    ttnet.caption = total_text(totals_.net);
    // With no rows the averages stay as they stood.
    if (totals_.rows == 0)
        return;
    aasales.caption = money_text(*totals_.sales / totals_.rows);
    aacom.caption = money_text(*totals_.commission / totals_.rows);
    aaexp.caption = money_text(*totals_.expenses / totals_.rows);
    aanet.caption = money_text(*totals_.net / totals_.rows);
}

// --- The form ---

void sold::work_out_net() {
    netcommission.caption =
        trim(basic::number_to_text(leading_number(commission.text) - leading_number(expenses.text)));
    netcommission.caption = money_text(leading_number(netcommission.caption));
}

void sold::rectoform() {
    RecordScreen::rectoform();
    for (platform::TextBox* box : {&commission, &expenses})
        if (!box->text.empty())
            box->text = money_text(leading_number(box->text));
    // Worked out afresh: what the column holds is not shown.
    work_out_net();
}

// --- A new sale and its closing ---

/// The listings' counter, though the row was given the sold one's: with the next save the id is overwritten
/// by it, so ids repeat on this table. Meant.
std::string sold::new_id_text() const {
    return std::to_string(module_.settings.listing_counter);
}

void sold::fill_new_record() {
    datesold.text = module_.today_text();
    datelastcontact.text = module_.today_text();
    includeinprinting.value = 1;
    netcommission.caption = "0.00";
}

void sold::close_new_record() {
    module_.soldnewrecord = false;
    schedule_birthdays(module_, {messages::sold_reminder,
                                 trim(id.text),
                                 {{{first, last, birthday}, {co_first, co_last, co_birthday}}},
                                 contact()});
}

// --- Views ---

void sold::first_view() {
    caption = "Homes Sold this Year: Quick Search for Others";
    module_.soldquery = "select * from [table] where datesold >= #1/1/" +
                        std::to_string(module_.this_year()) + "# order by datesold, last, first";
}

void sold::bind_views() {
    const auto sold_within = [](const DateSpan& span) {
        return "select * from [table] where datesold >= #" + span.start + "# and datesold <= #" + span.end +
               "# order by datesold, last, first";
    };
    m_soldthismonth.on_click = [this, sold_within] {
        show_view("This Month's Sales", sold_within(month_of(module_.today())));
    };
    m_soldlastmonth.on_click = [this, sold_within] {
        show_view("Last Month's Sales", sold_within(month_before(module_.today())));
    };
    m_soldthisyear.on_click = [this, sold_within] {
        show_view("Sold this Year",
                  sold_within({"1/1/" + std::to_string(module_.this_year()), module_.today_text()}));
    };
    m_allcustomers.on_click = [this] {
        show_view("All Sales",
                  "select * from [table] where datesold>#1/1/1800# order by datesold, last, first");
    };

    constexpr const char* clearing =
        "Select * from [table] where datesold > #1/1/1800# order by last, first, datesold";
    m_birthdays.on_click = [this] {
        show_follow_up({"Customers with Birthdays", clearing,
                        "Select * from [table] where birthday > #01/01/1800# or co_birthday > #01/01/1800# "
                        "order by last, first",
                        "select * from [table] where flag>0 order by last, first", "birthday", "No Birthdays",
                        either_birthday(module_.today())});
    };
    m_customerstocontact.on_click = [this] {
        show_follow_up(
            {"Customers to Contact", clearing,
             "Select * from [table] where datenextcontact > #01/01/1800# order by datenextcontact, last, "
             "first",
             "select * from [table] where flag>0 order by datenextcontact, last, first", "contact",
             "No Customers to Contact",
             next_contact_within(basic::leading_number(module_.settings.p_customer), module_.today())});
    };
}

} // namespace tolva::records
