#include "records/listings.h"

#include "basic/number.h"
#include "basic/run_time_error.h"
#include "basic/text.h"
#include "messages/automatic.h"
#include "module/option_lists.h"
#include "records/birthday_reminders.h"

namespace tolva::records {

using basic::trim;

namespace {

constexpr int enter_key = 13;
constexpr int object_required = 424;
constexpr double days_to_expiry = 180;

} // namespace

listings::listings(module::Module& module)
    : RecordScreen(module, "listings", "Current Listings", "Listings", 7,
                   {module.listingdb, module.listingset, module.listingquery, module.listingfirstload,
                    &module::Settings::listing_counter, &module.listingnewrecord, true}) {
    grid_columns_ = {
        {"", 1, [](const dao::Recordset& row) { return trimmed(row, "id"); }},
        {"Name", 3000, owners},
        {"Address", 3000, [](const dao::Recordset& row) { return trimmed(row, "listingaddress"); }},
        {"City", 2000, [](const dao::Recordset& row) { return trimmed(row, "listingcity"); }},
        {"Price", 1300, [](const dao::Recordset& row) { return price(row, "listingprice"); }},
        {"Date Listed", 1300, [](const dao::Recordset& row) { return trimmed(row, "datelisted"); }},
        {"Date Expires", 1300, [](const dao::Recordset& row) { return trimmed(row, "dateexpires"); }},
    };

    const SaveRule date = save::date_or_null(module);
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
        text_field("listingaddress", listingaddress, save::cut_then_trim(50), load::trimmed()),
        text_field("listingcity", listingcity, save::cut_then_trim(50), load::trimmed()),
        text_field("listingstate", listingstate, save::cut_then_trim(20), load::trimmed()),
        text_field("listingzip", listingzip, save::cut_then_trim(10), load::trimmed()),
        text_field("construction", construction, save::cut_then_trim(50), load::trimmed()),
        text_field("legaldescription", legaldescription, save::trimmed(), load::trimmed()),
        text_field("subdivision", subdivision, save::cut_then_trim(50), load::trimmed()),
        text_field("yearbuilt", yearbuilt, save::cut_then_trim(4), load::positive()),
        text_field("squarefeet", squarefeet, save::trim_then_cut(10), load::positive()),
        text_field("rooms", rooms, save::trim_then_cut(3), load::positive()),
        text_field("bedrooms", bedrooms, save::trim_then_cut(3), load::positive()),
        text_field("bathrooms", bathrooms, save::trim_then_cut(5), load::positive()),
        text_field("basement", basement, save::trim_then_cut(50), load::trimmed()),
        text_field("garage", garage, save::trim_then_cut(50), load::trimmed()),
        text_field("citytaxes", citytaxes, save::trim_then_cut(10), load::positive()),
        text_field("countytaxes", countytaxes, save::trim_then_cut(10), load::positive()),
        text_field("lotx", lotx, save::trim_then_cut(10), load::positive()),
        text_field("loty", loty, save::trim_then_cut(10), load::positive()),
        text_field("acres", acres, save::trim_then_cut(10), load::positive()),
        text_field("listingsource", listingsource, save::trim_then_cut(50), load::trimmed()),
        text_field("contacthistory", contacthistory, save::trimmed(), load::trimmed()),
        text_field("notes", notes, save::trimmed(), load::trimmed()),
        text_field("birthday", birthday, date, load::trimmed()),
        text_field("co_birthday", co_birthday, date, load::trimmed()),
        text_field("datelisted", datelisted, date, load::trimmed()),
        text_field("dateexpires", dateexpires, date, load::trimmed()),
        text_field("datelastcontact", datelastcontact, date, load::trimmed()),
        text_field("datenextcontact", datenextcontact, date, load::trimmed()),
        text_field("listingprice", listingprice, save::whole_number(), load::positive()),
        text_field("commission", commission, save::number(), load::positive()),
        kept_field("id", id, save::trimmed(), load::trimmed()),
        text_field("mls", mls, save::trimmed(), load::trimmed()),
        check_field("includeinprinting", includeinprinting),
    };

    // The word "Buyer" on a screen of sellers is meant.
    tests_ = std::vector<Test>{
        {datelisted, true, "Invalid Date Listed"},
        {birthday, false, "Invalid Buyer Birthday"},
        {co_birthday, false, "Invalid Co-Buyer Birthday"},
        {dateexpires, false, "Invalid Date Listing Expires"},
        {datelastcontact, true, "Invalid Date Last Contact"},
        {datenextcontact, false, "Invalid Date Next Contact"},
    };

    // clang-format off
    modes_ = std::vector<Mode>{
        //               grid   form
        {Command5,        false, true},
        {Command6,        false, true},
        {Command7,        false, true},
        {Command8,        false, true},
        {Command9,        false, true},
        {Command10,       true,  false},
        {Frame10,         true,  false},
        {f_customerlist,  true,  false},
        {miport,          true,  false},
        {m_quicksearch,   true,  false},
        {m_newlisting,    true,  false},
        {m_searchlisting, true,  false},
        {m_deletelisting, false, true},
        {m_savelisting,   false, true},
        {m_exit,          true,  false},
        {m_printlisting,  false, true},
        {m_printlistings, true,  false},
        {m_printlabels,   true,  false},
        {m_followup,      false, true},
        {m_appointment,   false, true},
    };
    // clang-format on

    lists_ = std::vector<OptionList>{
        {module::construction_list, construction},
        {module::basement_list, basement},
        {module::listingsource_list, listingsource},
        {module::garage_list, garage},
    };

    bind_navigation({Command6, Command7, Command8, Command9});
    bind_quick_search(Command11, enter_key);
    bind_contact_button(Command1, datelastcontact, contacthistory);
    module_.bind_date_button(Command2, datenextcontact);
    module_.bind_date_button(Command3, datelisted);
    module_.bind_date_button(Command4, dateexpires);
    module_.bind_date_button(Command36, birthday);
    module_.bind_date_button(Command37, co_birthday);
    bind_city({city, state, zip, homephone});

    // All but mls, contacthistory and notes.
    select_on_focus({
        &acres,
        &address,
        &basement,
        &bathrooms,
        &bedrooms,
        &birthday,
        &businessname,
        &cellphone,
        &city,
        &citytaxes,
        &co_birthday,
        &co_first,
        &co_last,
        &co_middle,
        &commission,
        &construction,
        &countytaxes,
        &dateexpires,
        &datelastcontact,
        &datelisted,
        &datenextcontact,
        &email,
        &employer,
        &fax,
        &first,
        &garage,
        &homephone,
        &last,
        &legaldescription,
        &listingaddress,
        &listingcity,
        &listingprice,
        &listingsource,
        &listingstate,
        &listingzip,
        &lotx,
        &loty,
        &middle,
        &rooms,
        &squarefeet,
        &state,
        &subdivision,
        &workphone,
        &yearbuilt,
        &zip,
    });
    datelisted.on_lost_focus = [this] { datelisted_LostFocus(); };

    Command5.on_click = [this] { close_record(); };
    Command10.on_click = [this] { exit_unloading(); };
    bind_search(m_searchlisting, module_.listingsearch);
    m_newlisting.on_click = [this] { new_record(); };
    m_savelisting.on_click = [this] { save_with_notice("Listing Saved"); };
    m_deletelisting.on_click = [this] { delete_record("Delete Listing?"); };
    m_exit.on_click = [this] { exit_hiding(); };
    bind_views();
    m_schmess.on_click = [this] {
        schedule_message(messages::listing_reminder,
                         reminder_text({first, last, co_first, co_last}, "Listing Address:",
                                       {listingaddress, listingcity, listingstate, listingzip, homephone,
                                        cellphone, workphone}));
    };
    m_schlet.on_click = [this] { schedule_letter(messages::listing_letter); };
    bind_appointment(m_appointment, '1', {first, last, co_first, co_last}, homephone);
    m_printlisting.on_click = [this] { print_sheet(); };
    bind_list(m_printlistings, printing::customer_list);
    bind_labels(m_printlabels, module::LabelMode::listings, "No Active Listings");
    bind_letters(m_printletter, module::LetterMode::listing_list, module::LetterMode::listing_form,
                 "No Active Listings");
    // There is no import: the screen that this entry would show was never set.
    miport.on_click = [] { throw basic::RunTimeError(object_required); };
}

void listings::first_view() {
    caption = "Current Listings: Quick Search for Others";
    module_.listingquery =
        "select * from [table] where datelisted >= #1/1/1900# order by datelisted, last, first";
}

void listings::fill_new_record() {
    datelisted.text = module_.today_text();
    datelastcontact.text = module_.today_text();
    includeinprinting.value = 1;
}

/// Every time, so it overwrites an expiry typed earlier.
void listings::datelisted_LostFocus() {
    if (!module_.is_date(datelisted.text))
        return;
    dateexpires.text = basic::date_to_text(basic::add_days(module_.to_date(datelisted.text), days_to_expiry));
}

// --- The close flow of a new listing ---

void listings::close_new_record() {
    module_.listingnewrecord = false;
    if (module_.is_date(dateexpires.text))
        schedule_expiry();
    schedule_birthdays(module_, {
                                    messages::listing_reminder,
                                    trim(id.text),
                                    {{{first, last, birthday}, {co_first, co_last, co_birthday}}},
                                    contact(),
                                });
}

void listings::schedule_expiry() {
    const basic::Date expiry = module_.to_date(dateexpires.text);
    const std::string& days = module_.settings.p_expire;
    messages::schedule(module_, {basic::add_days(expiry, -basic::leading_number(days)), "8:00 AM",
                                 expiry_text("LISTING EXPIRING IN " + trim(days) + " DAYS!"),
                                 messages::listing_reminder, trim(id.text)});
    messages::schedule(module_, {expiry, "8:00 AM", expiry_text("LISTING EXPIRING NOW!"),
                                 messages::listing_reminder, trim(id.text)});
}

std::string listings::expiry_text(const std::string& heading) const {
    // No break and no blank between the date and the name: meant.
    return heading + "\r\n" + "Date Lease Expires: " + trim(dateexpires.text) + trim(first.text) + " " +
           trim(last.text) + "\r\n" + trim(co_first.text) + " " + trim(co_last.text) + "\r\n" +
           contact_lines(contact());
}

} // namespace tolva::records
