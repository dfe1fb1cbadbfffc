#include "search/listingsearch.h"

#include "basic/run_time_error.h"
#include "basic/text.h"

namespace tolva::search {

namespace {

constexpr int object_required = 424;

} // namespace

listingsearch::listingsearch(module::Module& module)
    : Screen(module.runtime, "listingsearch", "Search for Listings"), module_(module) {
    const std::pair<platform::Button*, platform::TextBox*> date_buttons[] = {
        {&Command1, &datelisted1},      {&Command5, &datelisted2},      {&Command2, &dateexpires1},
        {&Command6, &dateexpires2},     {&Command3, &datelastcontact1}, {&Command7, &datelastcontact2},
        {&Command4, &datenextcontact1}, {&Command8, &datenextcontact2},
    };
    for (const auto& [button, field] : date_buttons)
        module_.bind_date_button(*button, *field);

    Command9.on_click = [this] { Command9_Click(); };
    Command10.on_click = [this] { Command10_Click(); };
    Command11.on_click = [this] {
        unload();
        module_.listings().show();
    };
}

std::string listingsearch::compose() const {
    Criteria criteria(module_, "select * from [table] where datelisted > #1/1/1800#");
    criteria.either_contains("last", "co_last", last);
    criteria.either_contains("first", "co_first", first);
    criteria.contains("businessname", businessname);
    criteria.contains("mls", mls);
    criteria.contains("city", city);
    criteria.contains("state", state);
    criteria.phone(phone);
    criteria.contains("employer", employer);
    criteria.dates("datelisted", datelisted1, datelisted2);
    criteria.dates("datelastcontact", datelastcontact1, datelastcontact2);
    criteria.dates("datenextcontact", datenextcontact1, datenextcontact2);
    // The upper bound is looked for through a reference that was never set: two dates here end the search
    // before any query runs. Meant.
    if (criteria.both_dates(dateexpires1, dateexpires2))
        throw basic::RunTimeError(object_required);
    criteria.numbers("listingprice", listingprice1, listingprice2);
    criteria.contains("listingaddress", listingaddress);
    criteria.contains("listingcity", listingcity);
    return criteria.query();
}

void listingsearch::Command9_Click() {
    const Target target{module_.listings, *module_.listingdb, module_.listingset, "No Listings Found"};
    // The view is the search just made, found or not.
    module_.listingquery = compose();
    if (run_search(module_, target, module_.listingquery))
        show_found(target);
}

void listingsearch::Command10_Click() {
    for (platform::TextBox* box : {&last,
                                   &first,
                                   &businessname,
                                   &city,
                                   &state,
                                   &phone,
                                   &employer,
                                   &listingaddress,
                                   &listingcity,
                                   &datelisted1,
                                   &datelisted2,
                                   &dateexpires1,
                                   &dateexpires2,
                                   &datelastcontact1,
                                   &datelastcontact2,
                                   &datenextcontact1,
                                   &datenextcontact2,
                                   &listingprice1,
                                   &listingprice2,
                                   &mls})
        box->text.clear();
}

} // namespace tolva::search
