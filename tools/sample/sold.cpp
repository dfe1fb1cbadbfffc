#include "sample/desk.h"
#include "sample/homes.h"
#include "sample/record.h"

namespace tolva::sample {

namespace {

constexpr int sold_count = 40;

} // namespace

std::vector<Customer> fill_sold(Desk& desk) {
    static constexpr double rates[] = {2.5, 3, 3, 3.5, 6};
    static constexpr const char* companies[] = {"Harbor Realty", "Kettle & Moraine Homes", "Peña Properties",
                                                "Ledge Realty"};
    static constexpr const char* notes[] = {"Gift basket at the closing.", "Left the piano to the buyers.",
                                            "Knows half of the town – ask for referrals."};

    const auto file = desk.open("sold.mdb");
    const auto rows = file->OpenRecordset("table");
    Dice& dice = desk.dice;
    std::vector<Customer> customers;
    int id = 0;
    for (int i = 0; i < sold_count; ++i) {
        id += dice.one_in(7) ? 2 : 1;
        const Person person = desk.people.next();
        const Place home = desk.people.place();
        const int agency = dice.between(0, 2);
        const double price = dice.between(149, 1050) * 500;
        const double rate = dice.pick(rates);
        const double commission = price * rate / 100;
        const double expenses = dice.between(40, 900);

        Record record(*rows);
        record.person(person);
        record.text("soldaddress", home.address).text("soldcity", home.city);
        record.text("soldstate", home.state).text("soldzip", home.zip);
        if (dice.one_in(10))
            record.text("soldbusiness", person.businessname);
        record.text("construction", dice.pick(constructions)).text("basement", dice.pick(basements));
        record.text("garage", dice.pick(garages)).text("customersource", dice.pick(sources));
        record.number("squarefeet", dice.between(18, 84) * 50).number("bedrooms", dice.between(1, 5));
        record.number("bathrooms", dice.between(2, 7) / 2.0).number("acres", dice.between(0, 10) / 4.0);
        record.number("lotx", dice.between(10, 32) * 5).number("loty", dice.between(16, 48) * 5);
        record.text("contacthistory", contact_notes(dice, desk.today, dice.between(0, 3)));
        if (dice.one_in(3))
            record.text("notes", dice.pick(notes));
        record.date("datesold", basic::add_days(desk.today, -dice.between(3, 1000)));
        record.date("datelastcontact", basic::add_days(desk.today, -dice.between(1, 200)));
        if (dice.one_in(2))
            record.date("datenextcontact", basic::add_days(desk.today, dice.between(-3, 60)));
        record.yes("agency" + std::to_string(agency));
        if (agency == 1) {
            record.text("listingname", desk.people.name().full())
                .text("listingcompany", dice.pick(companies));
            record.text("listingphone", desk.people.telephone());
        }
        if (agency == 0) {
            record.text("sellingname", desk.people.name().full())
                .text("sellingcompany", dice.pick(companies));
            record.text("sellingphone", desk.people.telephone());
        }
        record.number("sellingprice", price).number("commissionrate", rate).number("commission", commission);
        record.number("expenses", expenses).number("netcommission", commission - expenses);
        record.number("id", id).yes("includeinprinting", !dice.one_in(10)).number("Flag", 100);
        record.store();
        customers.push_back({id, person.name, person.homephone, person.birthday, std::nullopt});
    }
    desk.engine.commit();
    return customers;
}

} // namespace tolva::sample
