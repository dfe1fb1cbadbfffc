#include "sample/desk.h"
#include "sample/homes.h"
#include "sample/record.h"

namespace tolva::sample {

namespace {

constexpr int listing_count = 60;

/// Days from today to the end of the agreement: the first few around today, so that the reminders and the
/// expiring view have something to show, the rest in coming months.
constexpr int early_ends[] = {0, 2, 5, 9, 14, 21, 28, 30, -3, -20};

/// A number as somebody types it who knows that it is kept as typed.
std::string typed(Dice& dice, int least, int most, int step) {
    return std::to_string(dice.between(least / step, most / step) * step);
}

} // namespace

std::vector<Customer> fill_listings(Desk& desk) {
    static constexpr const char* taglines[] = {"Key under the third flower pot.",
                                               "Dog in the yard – call first.", "Show after 4:00 PM only.",
                                               "Price is firm till the roof is done."};
    static constexpr const char* subdivisions[] = {"Lakeview", "Quarry Heights", "Old Town", "Prairie Acres"};
    static constexpr const char* acres[] = {".25", ".5", ".75", "1", "2.5", "12"};
    static constexpr double commissions[] = {5, 5.5, 6, 6, 7};

    const auto file = desk.open("listings.mdb");
    const auto rows = file->OpenRecordset("table");
    Dice& dice = desk.dice;
    std::vector<Customer> customers;
    int id = 0;
    for (int i = 0; i < listing_count; ++i) {
        id += dice.one_in(9) ? 2 : 1;
        Person owner = desk.people.next();
        if (i < 4)
            owner.birthday = desk.people.born(i * 2); // someone to congratulate whatever the day
        const bool elsewhere = dice.one_in(4);
        const Place home = elsewhere ? desk.people.place() : owner.home;
        const int ends = i < static_cast<int>(std::size(early_ends)) ? early_ends[i] : dice.between(31, 180);
        const basic::Date expires = basic::add_days(desk.today, ends);
        const int ran = dice.one_in(3) ? 90 : 180;

        Record record(*rows);
        record.person(owner);
        record.text("listingaddress", home.address).text("listingcity", home.city);
        record.text("listingstate", home.state).text("listingzip", home.zip);
        record.text("construction", dice.pick(constructions)).text("basement", dice.pick(basements));
        record.text("garage", dice.pick(garages)).text("listingsource", dice.pick(sources));
        if (dice.one_in(2)) {
            record.text("legaldescription", "Lot " + typed(dice, 1, 40, 1) + ", Block " +
                                                typed(dice, 1, 6, 1) + ",\r\n" + dice.pick(subdivisions) +
                                                " Addition");
        }
        if (dice.one_in(2))
            record.text("subdivision", dice.pick(subdivisions));
        record.text("yearbuilt", typed(dice, 1884, 2019, 1)).text("squarefeet", typed(dice, 900, 4200, 20));
        record.text("rooms", typed(dice, 4, 12, 1)).text("bedrooms", typed(dice, 1, 5, 1));
        record.text("bathrooms", typed(dice, 1, 3, 1) + (dice.one_in(2) ? ".5" : ""));
        record.text("citytaxes", typed(dice, 400, 2600, 10)).text("countytaxes", typed(dice, 200, 1900, 10));
        record.text("lotx", typed(dice, 50, 160, 5)).text("loty", typed(dice, 80, 240, 5));
        if (dice.one_in(2))
            record.text("acres", dice.pick(acres));
        record.text("contacthistory", contact_notes(dice, desk.today, dice.between(0, 4)));
        if (dice.one_in(3))
            record.text("notes", dice.pick(taglines));
        record.date("datelisted", basic::add_days(expires, -ran)).date("dateexpires", expires);
        record.date("datelastcontact", basic::add_days(desk.today, -dice.between(1, 60)));
        if (!dice.one_in(4))
            record.date("datenextcontact", basic::add_days(desk.today, dice.between(-3, 40)));
        record.number("listingprice", dice.between(149, 1150) * 500)
            .number("commission", dice.pick(commissions));
        record.number("id", id).text("mls", "M" + typed(dice, 100000, 899999, 1));
        record.yes("includeinprinting", !dice.one_in(10)).number("Flag", 100);
        record.store();
        customers.push_back({id, owner.name, owner.homephone, owner.birthday, expires});
    }
    desk.engine.commit();
    return customers;
}

} // namespace tolva::sample
