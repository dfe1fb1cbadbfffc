#include "sample/desk.h"
#include "sample/record.h"

namespace tolva::sample {

std::vector<Customer> fill_addresses(Desk& desk) {
    struct Firm {
        const char* name;
        const char* notes;
    };
    // Whom an agent calls in a week's work. Private addresses stand between the firms.
    static constexpr Firm firms[] = {
        {"First Lake Bank", "Mortgages. Ask for the early appointment."},
        {"Kettle Title & Abstract", "Closings.\r\nTitle insurance."},
        {"Ridge Home Inspection", ""},
        {"Moraine Electric", "Certificates within two days."},
        {"O'Shea & Daughters Roofing", "Estimates are free."},
        {"Prairie Well & Septic", "Water tests."},
        {"The Daily Herald", "Advertisements, till Wednesday noon."},
        {"Sign Shop Núñez", "Yard signs."},
        {"Harbor Moving", ""},
        {"County Register of Deeds", "Closed on Fridays."},
        {"Fox Run Surveyors", ""},
        {"Green Thumb Landscaping", "Front yards ahead of an open house."},
        {"Quick Clean", ""},
        {"Ledge Heating & Cooling", "Answers at night."},
        {"Village Hall", "Building permits."},
    };

    const auto file = desk.open("address.mdb");
    const auto rows = file->OpenRecordset("table");
    std::vector<Customer> addresses;
    int id = 0;
    const auto add = [&](const std::string& business, const std::string& notes) {
        id += desk.dice.one_in(10) ? 2 : 1;
        const Person person = desk.people.next();
        Record record(*rows);
        record.text("first", person.name.first)
            .text("middle", person.name.middle)
            .text("last", person.name.last);
        record.text("businessname", business).text("notes", notes);
        record.text("address", person.home.address).text("city", person.home.city);
        record.text("state", person.home.state).text("zip", person.home.zip);
        record.text("homephone", business.empty() ? person.homephone : "");
        record.text("workphone", business.empty() ? person.workphone : desk.people.telephone());
        record.text("cellphone", person.cellphone).text("fax", person.fax).text("email", person.email);
        record.number("id", id);
        record.store();
        addresses.push_back({id, person.name, person.homephone, std::nullopt, std::nullopt});
    };
    for (const Firm& firm : firms) {
        add(firm.name, firm.notes);
        add("", desk.dice.one_in(3) ? "Christmas card." : "");
    }
    desk.engine.commit();
    return addresses;
}

} // namespace tolva::sample
