#include "search/prospectsearch.h"

#include "basic/run_time_error.h"
#include "basic/text.h"
#include "module/option_lists.h"

namespace tolva::search {

namespace {

constexpr int object_required = 424;

} // namespace

prospectsearch::prospectsearch(module::Module& module)
    : Screen(module.runtime, "prospectsearch", "Search for Prospects"), module_(module) {
    prospecttype[0].caption = "Listing Prospect";
    prospecttype[1].caption = "Buying Prospect";

    module_.bind_date_button(Command4, dateacquired1);
    module_.bind_date_button(Command5, dateacquired2);
    // These two hand the date to a reference that was never set, and the rest do nothing. Meant.
    for (platform::Button* button : {&Command6, &Command7})
        button->on_click = [this] {
            module_.choosedate().show_modal();
            throw basic::RunTimeError(object_required);
        };
    for (platform::Button* button : {&Command8, &Command9, &Command10, &Command11})
        button->on_click = [] {};

    Command1.on_click = [this] { Command1_Click(); };
    Command2.on_click = [this] { Command2_Click(); };
    Command3.on_click = [this] {
        unload();
        module_.prospect().show();
    };
}

void prospectsearch::on_load() {
    for (const char* level : module::interest_levels)
        interestlevel.add_item(level);
    for (int index = 0; index < module::feature_count; ++index)
        feature[index].caption = basic::trim(module_.settings.features.at(static_cast<std::size_t>(index)));
}

std::string prospectsearch::compose() const {
    Criteria criteria(module_, "select * from [table] where dateacquired > #1/1/1800#");
    criteria.either_contains("last", "co_last", last);
    criteria.either_contains("first", "co_first", first);
    criteria.contains("businessname", businessname);
    criteria.either_contains("city", "c_city", city);
    criteria.contains("state", state);
    criteria.phone(phone);
    criteria.contains("employer", employer);
    criteria.dates("dateacquired", dateacquired1, dateacquired2);
    criteria.dates("datelastcontact", datelastcontact1, datelastcontact2);
    criteria.dates("datenextcontact", datenextcontact1, datenextcontact2);
    criteria.dates("dateinmarket", dateinmarket1, dateinmarket2);
    criteria.either_numbers("price", "c_price", price1, price2);
    criteria.either_numbers("acres", "c_acres", acres1, acres2);
    criteria.either_numbers("squarefeet", "c_squarefeet", squarefeet1, squarefeet2);
    criteria.either_numbers("rooms", "c_rooms", rooms1, rooms2);
    criteria.either_numbers("bedrooms", "c_bedrooms", bedrooms1, bedrooms2);
    criteria.either_numbers("bathrooms", "c_bathrooms", bathrooms1, bathrooms2);
    criteria.either_contains("basement", "c_basement", basement);
    criteria.either_contains("garage", "c_garage", garage);
    criteria.contains("prospectsource", prospectsource);
    criteria.contains("cities", cities);
    criteria.either_contains("construction", "c_construction", construction);
    criteria.either_contains("subdivision", "c_subdivision", subdivision);
    criteria.contains("streets", streets);
    criteria.contains("interestlevel", interestlevel);
    if (prospecttype[0].value == 1)
        criteria.add(" and (prospecttype0 = true)");
    if (prospecttype[1].value == 1)
        criteria.add(" and (prospecttype1 = true)");
    for (int index = 0; index < module::feature_count; ++index)
        if (feature[index].value == 1) {
            const std::string number = std::to_string(index);
            criteria.add(" and ((feature" + number + " = true) or (c_feature" + number + " = true))");
        }
    return criteria.query();
}

void prospectsearch::Command1_Click() {
    const Target target{module_.prospect, *module_.prospectdb, module_.prospectset, "No Prospects Found"};
    const std::string query = compose();
    // The listings' view, on a search for prospects. Meant.
    module_.listingquery = query;
    if (!run_search(module_, target, query))
        return;
    module_.prospectquery = query;
    show_found(target);
}

/// Forgets the towns desired and the dates of contact, which go on limiting the next search. Meant.
void prospectsearch::Command2_Click() {
    for (platform::TextControl* box : std::initializer_list<platform::TextControl*>{
             &last,          &first,         &businessname,  &city,          &state,         &phone,
             &employer,      &construction,  &subdivision,   &streets,       &squarefeet1,   &squarefeet2,
             &rooms1,        &rooms2,        &bedrooms1,     &bedrooms2,     &bathrooms1,    &bathrooms2,
             &interestlevel, &basement,      &garage,        &acres1,        &acres2,        &price1,
             &price2,        &dateacquired1, &dateacquired2, &dateinmarket1, &dateinmarket2, &prospectsource})
        box->text.clear();
    for (const auto& box : feature)
        box->value = 0;
    for (const auto& box : prospecttype)
        box->value = 0;
}

} // namespace tolva::search
