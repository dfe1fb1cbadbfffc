#include "records/prospect.h"

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

/// The captions in the screen's design; the settings' names replace them as the screen loads.
constexpr const char* design_features[module::feature_count] = {
    "Central Air",
    "Forced Air",
    "In-Ground Pool",
    "Above Ground Pool",
    "Spa/Hot Tub",
    "Den/Office",
    "Dining Room",
    "Family Room",
    "Disability Features",
    "Fireplace",
    "Hardwood Floors",
    "Laundry Room",
    "Patio",
    "Deck",
    "Corner Lot",
    "Waterfront",
    "Golf Course Lot",
    "Basement",
    "Finished Basement",
    "Attached Garage",
    "Un-Attached Garage",
    "Landscaping",
};

/// Column names of a row of check boxes: they live as long as the program.
constexpr const char* feature_columns[module::feature_count] = {
    "feature0",  "feature1",  "feature2",  "feature3",  "feature4",  "feature5",  "feature6",  "feature7",
    "feature8",  "feature9",  "feature10", "feature11", "feature12", "feature13", "feature14", "feature15",
    "feature16", "feature17", "feature18", "feature19", "feature20", "feature21",
};

} // namespace

prospect::prospect(module::Module& module)
    : RecordScreen(module, "prospect", "Listing and Sale Prospects", "Prospects", 7,
                   {module.prospectdb, module.prospectset, module.prospectquery, module.prospectfirstload,
                    &module::Settings::prospect_counter, &module.prospectnewrecord, true}) {
    prospecttype[0].caption = "Listing Prospect";
    prospecttype[1].caption = "Buying Prospect";
    for (int index = 0; index < module::feature_count; ++index)
        feature[index].caption = design_features[index];

    grid_columns_ = {
        {"", 1, [](const dao::Recordset& row) { return trimmed(row, "id"); }},
        {"Name", 3000, owners},
        {"Address", 3000, [](const dao::Recordset& row) { return trimmed(row, "address"); }},
        {"City", 2000, [](const dao::Recordset& row) { return trimmed(row, "city"); }},
        {"Phone #", 1500, [](const dao::Recordset& row) { return trimmed(row, "homephone"); }},
        {"Date Acquired", 1500, [](const dao::Recordset& row) { return trimmed(row, "dateacquired"); }},
        {"Interest Level", 2000, [](const dao::Recordset& row) { return trimmed(row, "interestlevel"); }},
    };

    const SaveRule date = save::date_or_null(module);
    fields_ = {
        text_field("first", first, save::cut_then_trim(50), load::trimmed()),
        text_field("middle", middle, save::cut_then_trim(50), load::trimmed()),
        text_field("last", last, save::cut_then_trim(50), load::trimmed()),
        text_field("co_first", co_first, save::cut_then_trim(50), load::trimmed()),
        text_field("co_middle", co_middle, save::cut_then_trim(50), load::trimmed()),
        text_field("co_last", co_last, save::cut_then_trim(50), load::trimmed()),
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
        text_field("cities", cities, save::cut_then_trim(100), load::trimmed()),
        text_field("construction", construction, save::cut_then_trim(50), load::trimmed()),
        text_field("subdivision", subdivision, save::cut_then_trim(100), load::trimmed()),
        text_field("streets", streets, save::cut_then_trim(100), load::trimmed()),
        text_field("squarefeet", squarefeet, save::number(), load::positive()),
        text_field("rooms", rooms, save::number(), load::positive()),
        text_field("bedrooms", bedrooms, save::number(), load::positive()),
        text_field("bathrooms", bathrooms, save::number(), load::positive()),
        text_field("basement", basement, save::cut_then_trim(50), load::trimmed()),
        text_field("garage", garage, save::cut_then_trim(50), load::trimmed()),
        text_field("acres", acres, save::number(), load::positive()),
        text_field("price", price, save::number(), load::positive()),
        text_field("notes", notes, save::trimmed(), load::trimmed()),
    };
    for (int index = 0; index < module::feature_count; ++index)
        fields_.push_back(check_field(feature_columns[index], feature[index]));
    for (FieldRule& field : std::vector<FieldRule>{
             text_field("prospectsource", prospectsource, save::cut_then_trim(50), load::trimmed()),
             text_field("id", id, save::number(), load::trimmed()),
             text_field("datelastcontact", datelastcontact, date, load::trimmed()),
             text_field("datenextcontact", datenextcontact, date, load::trimmed()),
             text_field("dateacquired", dateacquired, date, load::trimmed()),
             text_field("dateinmarket", dateinmarket, date, load::trimmed()),
             text_field("birthday", birthday, date, load::trimmed()),
             text_field("co_birthday", co_birthday, date, load::trimmed()),
             text_field("interestlevel", interestlevel, save::cut_then_trim(50), load::trimmed()),
             check_field("prospecttype0", prospecttype[0]),
             check_field("prospecttype1", prospecttype[1]),
             text_field("contacthistory", contacthistory, save::trimmed(), load::trimmed()),
             check_field("includeinprinting", includeinprinting),
         })
        fields_.push_back(std::move(field));

    tests_ = std::vector<Test>{
        {dateacquired, true, "Invalid Date Acquired"},
        {birthday, false, "Invalid Buyer Birthday"},
        {co_birthday, false, "Invalid Co-Buyer Birthday"},
        {dateinmarket, false, "Invalid Date in Market"},
        {datelastcontact, true, "Invalid Date Last Contact"},
        {datenextcontact, false, "Invalid Date Next Contact"},
    };

    // clang-format off
    modes_ = std::vector<Mode>{
        //                grid   form
        {Command5,         false, true},
        {Command6,         false, true},
        {Command7,         false, true},
        {Command8,         false, true},
        {Command9,         false, true},
        {Command11,        true,  false},
        {Frame10,          true,  false},
        {f_customerlist,   true,  false},
        {m_import,         true,  false},
        {m_quicksearch,    true,  false},
        {m_newprospect,    true,  false},
        {m_searchprospect, true,  false},
        {m_deleteprospect, false, true},
        {m_saveprospect,   false, true},
        {m_exit,           true,  false},
        {m_printprospect,  false, true},
        {m_printlist,      true,  false},
        {m_printlabels,    true,  false},
        {m_followup,       false, true},
        {m_appointment,    false, true},
    };
    // clang-format on

    lists_ = std::vector<OptionList>{
        {module::construction_list, construction},
        {module::basement_list, basement},
        {module::listingsource_list, prospectsource},
        {module::garage_list, garage},
    };

    saves_on_close_ = 2;

    bind_navigation({Command6, Command7, Command8, Command9});
    bind_quick_search(Command10, enter_key);
    bind_contact_button(Command1, datelastcontact, contacthistory);
    module_.bind_date_button(Command2, datenextcontact);
    module_.bind_date_button(Command3, dateacquired);
    module_.bind_date_button(Command4, dateinmarket);
    module_.bind_date_button(Command36, birthday);
    module_.bind_date_button(Command37, co_birthday);
    bind_city({city, state, zip, homephone});

    select_on_focus({&acres,         &address,      &basement,        &bathrooms,       &bedrooms,
                     &birthday,      &businessname, &cellphone,       &cities,          &city,
                     &co_birthday,   &co_first,     &co_last,         &co_middle,       &construction,
                     &dateacquired,  &dateinmarket, &datelastcontact, &datenextcontact, &email,
                     &employer,      &fax,          &first,           &garage,          &homephone,
                     &interestlevel, &last,         &middle,          &price,           &prospectsource,
                     &rooms,         &squarefeet,   &state,           &streets,         &subdivision,
                     &workphone,     &zip});

    Command5.on_click = [this] { close_record(); };
    Command11.on_click = [this] { exit_unloading(); };
    bind_search(m_searchprospect, module_.prospectsearch);
    m_newprospect.on_click = [this] { new_record(); };
    m_saveprospect.on_click = [this] { save_with_notice("Prospect Saved"); };
    m_deleteprospect.on_click = [this] { delete_record("Delete Prospect?"); };
    m_exit.on_click = [this] { exit_hiding(); };
    m_schmes.on_click = [this] {
        schedule_message(messages::prospect_reminder,
                         reminder_text({first, last, co_first, co_last}, "", contact()));
    };
    m_schlet.on_click = [this] { schedule_letter(messages::prospect_letter); };
    bind_appointment(m_appointment, '2', {first, last, co_first, co_last}, homephone);
    m_printprospect.on_click = [this] { print_sheet(); };
    bind_list(m_printlist, printing::customer_list);
    bind_labels(m_printlabels, module::LabelMode::prospects, "No Active Prospects");
    bind_letters(m_printletters, module::LetterMode::prospect_list, module::LetterMode::prospect_form,
                 "No Active Prospects");
    // There is no import: the screen that this entry would show was never set.
    m_import.on_click = [] { throw basic::RunTimeError(object_required); };
    bind_views();
}

// --- Loading ---

void prospect::on_load() {
    for (int index = 0; index < module::feature_count; ++index)
        feature[index].caption = trim(module_.settings.features.at(static_cast<std::size_t>(index)));
    RecordScreen::on_load();
}

void prospect::first_view() {
    module_.prospectquery =
        "select * from [table] where interestlevel like '*Hot*' order by dateacquired, last, first";
}

void prospect::createlists() {
    RecordScreen::createlists();
    for (const char* level : module::interest_levels)
        interestlevel.add_item(level);
}

void prospect::fill_grid() {
    caption = "Prospects";
    RecordScreen::fill_grid();
}

void prospect::rectoform() {
    RecordScreen::rectoform();
    caption = trim(first.text) + " " + trim(last.text);
    if (!trim(co_first.text).empty())
        caption += " & " + trim(co_first.text) + " " + trim(co_last.text);
}

// --- A new prospect and its closing ---

void prospect::fill_new_record() {
    dateacquired.text = module_.today_text();
    datelastcontact.text = module_.today_text();
    includeinprinting.value = 1;
}

/// The stored row keeps an empty level until the next save.
void prospect::new_record_copied() {
    interestlevel.set_list_index(0);
}

void prospect::close_new_record() {
    if (module_.is_date(dateinmarket.text))
        schedule_in_market();
    module_.prospectnewrecord = false;
    schedule_birthdays(module_, {messages::prospect_reminder,
                                 trim(id.text),
                                 {{{first, last, birthday}, {co_first, co_last, co_birthday}}},
                                 contact()});
}

void prospect::schedule_in_market() {
    // The listings' kind, though the customer is a prospect: its button looks among the listings. Meant.
    messages::schedule(module_, {module_.to_date(dateinmarket.text), "8:00 AM",
                                 "PREVIOUS PROSPECT NOW IN MARKET!\r\n"
                                 "Date in Market: " +
                                     trim(dateinmarket.text) + "\r\n" + trim(first.text) + " " +
                                     trim(last.text) + "\r\n" + trim(co_first.text) + " " +
                                     trim(co_last.text) + "\r\n" + contact_lines(contact()),
                                 messages::listing_reminder, trim(id.text)});
}

// --- Views ---

void prospect::bind_views() {
    constexpr const char* clearing =
        "Select * from [table] where dateacquired > #1/1/1800# order by last, first, dateacquired";
    m_allprospects.on_click = [this] { show_all_prospects(); };
    m_birthdays.on_click = [this] {
        show_follow_up({"Prospects with Birthdays", clearing,
                        "Select * from [table] where birthday > #01/01/1800# or co_birthday > #01/01/1800# "
                        "order by last, first",
                        "select * from [table] where flag>0 order by last, first", "birthday", "No Birthdays",
                        either_birthday(module_.today())});
    };
    m_prospectstocontact.on_click = [this] {
        show_follow_up(
            {"Prospects to Contact", clearing,
             "Select * from [table] where datenextcontact > #01/01/1800# order by datenextcontact, last, "
             "first",
             "select * from [table] where flag>0 order by datenextcontact, last, first", "contact",
             "No Prospects to Contact",
             next_contact_within(basic::leading_number(module_.settings.p_prospect), module_.today())});
    };
}

void prospect::show_all_prospects() {
    const std::string query = "Select * from [table] order by dateacquired, last, first";
    open(query);
    if (set().RecordCount() > 0) {
        module_.prospectquery = query;
        cleargrid();
    } else {
        runtime().message("No Active Prospects", "Message");
        cleargrid();
        open(module_.prospectquery);
    }
    creategrid("normal");
}

} // namespace tolva::records
