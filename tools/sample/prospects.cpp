#include "sample/desk.h"
#include "sample/homes.h"
#include "sample/record.h"

namespace tolva::sample {

namespace {

constexpr int prospect_count = 40;
constexpr int feature_count = 22;

} // namespace

std::vector<Customer> fill_prospects(Desk& desk) {
    static constexpr const char* interests[] = {"Hot (In Market Now)", "Warm (In Market Soon)",
                                                "Cold (In Market in Future)", "Warm (In Market Soon)"};
    static constexpr const char* wishes[] = {"Fond Du Lac, Eden", "Oshkosh", "Ripon, Rosendale",
                                             "Elkhart Lake", "West Bend, Hartford, Germantown"};
    static constexpr const char* notes[] = {"Grandparents move in too: needs a bedroom on the ground floor.",
                                            "Sells first, then buys.",
                                            "Approved by the bank up to the price given."};

    const auto file = desk.open("prospect.mdb");
    const auto rows = file->OpenRecordset("table");
    Dice& dice = desk.dice;
    std::vector<Customer> customers;
    int id = 0;
    for (int i = 0; i < prospect_count; ++i) {
        id += dice.one_in(8) ? 2 : 1;
        Person person = desk.people.next();
        if (i < 4)
            person.birthday = desk.people.born(i * 2); // someone to congratulate whatever the day
        const bool lists = dice.one_in(2);
        const bool buys = !lists || dice.one_in(3);

        Record record(*rows);
        record.person(person);
        record.yes("prospecttype0", lists).yes("prospecttype1", buys);
        if (buys)
            record.text("cities", dice.pick(wishes));
        record.text("construction", dice.pick(constructions)).text("basement", dice.pick(basements));
        record.text("garage", dice.pick(garages)).text("prospectsource", dice.pick(sources));
        record.text("interestlevel", dice.pick(interests));
        record.number("squarefeet", dice.between(18, 70) * 50).number("rooms", dice.between(4, 11));
        record.number("bedrooms", dice.between(1, 5)).number("bathrooms", dice.between(2, 7) / 2.0);
        record.number("acres", dice.one_in(3) ? dice.between(1, 12) / 4.0 : 0);
        record.number("price", dice.between(80, 560) * 1000);
        for (int feature = 0; feature < feature_count; ++feature) {
            record.yes("feature" + std::to_string(feature), dice.one_in(5));
        }
        record.text("contacthistory", contact_notes(dice, desk.today, dice.between(0, 4)));
        if (dice.one_in(3))
            record.text("notes", dice.pick(notes));
        record.date("dateacquired", basic::add_days(desk.today, -dice.between(2, 400)));
        record.date("datelastcontact", basic::add_days(desk.today, -dice.between(1, 90)));
        if (!dice.one_in(4))
            record.date("datenextcontact", basic::add_days(desk.today, dice.between(-3, 45)));
        if (!dice.one_in(3))
            record.date("dateinmarket", basic::add_days(desk.today, dice.between(-10, 120)));
        record.number("id", id).yes("includeinprinting", !dice.one_in(10)).number("Flag", 100);
        record.store();
        customers.push_back({id, person.name, person.homephone, person.birthday, std::nullopt});
    }
    desk.engine.commit();
    return customers;
}

} // namespace tolva::sample
