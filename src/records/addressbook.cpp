#include "records/addressbook.h"

#include "basic/run_time_error.h"
#include "basic/text.h"

namespace tolva::records {

using basic::trim;

namespace {

constexpr int enter_key = 13;
constexpr int object_required = 424;

} // namespace

addressbook::addressbook(module::Module& module)
    : RecordScreen(module, "addressbook", "Address Book", "Address List", 7,
                   {module.addressdb, module.addressset, module.addressquery, module.addressfirstload,
                    &module::Settings::address_counter, nullptr, false}) {
    grid_columns_ = {
        {"", 1, [](const dao::Recordset& row) { return trimmed(row, "id"); }},
        {"Name", 1900,
         [](const dao::Recordset& row) { return trimmed(row, "first") + " " + trimmed(row, "last"); }},
        {"Business Name", 1900, [](const dao::Recordset& row) { return trimmed(row, "businessname"); }},
        {"Address", 1900, [](const dao::Recordset& row) { return trimmed(row, "address"); }},
        {"City State Zip", 1900,
         [](const dao::Recordset& row) {
             return trimmed(row, "city") + " " + trimmed(row, "state") + " " + trimmed(row, "zip");
         }},
        {"Home Phone", 1100, [](const dao::Recordset& row) { return trimmed(row, "homephone"); }},
        {"Work Phone", 1100, [](const dao::Recordset& row) { return trimmed(row, "workphone"); }},
    };

    fields_ = {
        text_field("first", first, save::trimmed(), load::trimmed()),
        text_field("middle", middle, save::trimmed(), load::trimmed()),
        text_field("last", last, save::trimmed(), load::trimmed()),
        text_field("businessname", businessname, save::trimmed(), load::trimmed()),
        text_field("address", address, save::trimmed(), load::trimmed()),
        text_field("city", city, save::trimmed(), load::trimmed()),
        text_field("state", state, save::trimmed(), load::trimmed()),
        text_field("zip", zip, save::trimmed(), load::trimmed()),
        text_field("homephone", homephone, save::trimmed(), load::trimmed()),
        text_field("workphone", workphone, save::trimmed(), load::trimmed()),
        text_field("cellphone", cellphone, save::trimmed(), load::trimmed()),
        text_field("fax", fax, save::trimmed(), load::trimmed()),
        text_field("email", email, save::trimmed(), load::trimmed()),
        text_field("notes", notes, save::trimmed(), load::trimmed()),
        kept_field("id", id, save::number(), load::trimmed()),
    };

    // clang-format off
    modes_ = std::vector<Mode>{
        //               grid   form
        {f_customerlist, true,  false},
        {Command1,       true,  false},
        {Frame10,        true,  false},
        {Command3,       false, true},
        {Command4,       false, true},
        {Command5,       false, true},
        {Command6,       false, true},
        {Command18,      false, true},
        {mimport,        true,  false},
        {m_quicksearch,  true,  false},
        {m_new,          true,  false},
        {m_search,       true,  false},
        {m_delete,       false, true},
        {m_save,         false, true},
        {m_exit,         true,  false},
        {m_printaddress, false, true},
        {m_printlist,    true,  false},
    };
    // clang-format on

    bind_navigation({Command3, Command4, Command5, Command6});
    bind_quick_search(Command2, enter_key);
    bind_city({city, state, zip, homephone});

    // All but notes.
    select_on_focus({&address, &businessname, &cellphone, &city, &email, &fax, &first, &homephone, &last,
                     &middle, &state, &workphone, &zip});

    Command18.on_click = [this] { close_record(); };
    Command1.on_click = [this] { exit_unloading(); };
    bind_search(m_search, module_.addresssearch);
    m_new.on_click = [this] { new_record(); };
    m_save.on_click = [this] { savecustomer(); };
    m_delete.on_click = [this] { delete_record("Delete Address?"); };
    m_exit.on_click = [this] { exit_hiding(); };
    // Also changes the order for good: only a quick search sorts by person again.
    m_alladdresses.on_click = [this] {
        cleargrid();
        show_query("select * from [table] where id>0 order by businessname, last, first");
    };
    m_printaddress.on_click = [this] { print_sheet(); };
    bind_list(m_printlist, printing::address_list);
    // There is no import: the screen that this entry would show was never set.
    mimport.on_click = [] { throw basic::RunTimeError(object_required); };
}

void addressbook::on_load() {
    take_first_view();
    open(store_.query);
    showgridbuttons();
    creategrid("normal");
}

/// No heading, no position and no font but the size: lines down from the page's corner.
void addressbook::print_sheet() {
    using printing::shown;
    constexpr float font_size = 11;
    platform::Printer& printer = module_.printer();
    printer.job_name = "Address: " + shown(first) + " " + shown(last);
    printer.FontSize = font_size;
    for (const std::string& line : {
             shown(first) + " " + shown(middle) + " " + shown(last),
             shown(businessname),
             shown(address),
             shown(city) + ", " + shown(state) + " " + shown(zip),
             std::string(),
             "Home Phone: " + shown(homephone),
             "Work Phone: " + shown(workphone),
             "Cell Phone: " + shown(cellphone),
             "Fax: " + shown(fax),
             "Email: " + shown(email),
         })
        printer.Print(line);
    printer.EndDoc();
}

void addressbook::first_view() {
    module_.addressquery = "select * from [table] where id>0 order by last, first";
}

std::string addressbook::quick_search_query() const {
    return "select * from [table] where last like '*" + trim(sname.text) + "*'and city like '*" +
           trim(scity.text) + "*' order by last, first";
}

void addressbook::fill_grid() {
    caption = "Address Book";
    RecordScreen::fill_grid();
}

} // namespace tolva::records
