#include "sample/people.h"

#include <algorithm>

#include "basic/text.h"

namespace tolva::sample {

namespace {

struct Spelling {
    const char* name;
    /// As it stands in a mail address.
    const char* plain;
};

constexpr Spelling first_names[] = {
    {"Alan", "alan"},        {"Amélie", "amelie"},     {"Anna", "anna"},       {"Beatriz", "beatriz"},
    {"Björn", "bjorn"},      {"Carla", "carla"},       {"Curtis", "curtis"},   {"Dale", "dale"},
    {"Denise", "denise"},    {"Edwin", "edwin"},       {"Ellen", "ellen"},     {"François", "francois"},
    {"Grace", "grace"},      {"Harold", "harold"},     {"Inés", "ines"},       {"Irene", "irene"},
    {"Jean-Luc", "jeanluc"}, {"Joan", "joan"},         {"Jorge", "jorge"},     {"José", "jose"},
    {"Kathryn", "kathryn"},  {"Leon", "leon"},         {"Lucía", "lucia"},     {"Marcus", "marcus"},
    {"Mary Ann", "maryann"}, {"Miriam", "miriam"},     {"Nora", "nora"},       {"Oscar", "oscar"},
    {"Patrick", "patrick"},  {"Renée", "renee"},       {"Rosa", "rosa"},       {"Samuel", "samuel"},
    {"Stella", "stella"},    {"Terrence", "terrence"}, {"Ursula", "ursula"},   {"Vernon", "vernon"},
    {"Wendy", "wendy"},      {"Yvonne", "yvonne"},     {"Zachary", "zachary"}, {"Zoë", "zoe"},
};

constexpr Spelling last_names[] = {
    {"Abbott", "abbott"},
    {"Åkesson", "akesson"},
    {"Barker", "barker"},
    {"Bauer", "bauer"},
    {"Castillo", "castillo"},
    {"Côté", "cote"},
    {"D'Amico", "damico"},
    {"de la Rosa", "delarosa"},
    {"Dietrich", "dietrich"},
    {"Ekström", "ekstrom"},
    {"Farrell", "farrell"},
    {"Fitzgerald", "fitzgerald"},
    {"García-López", "garcialopez"},
    {"Grady", "grady"},
    {"Hale", "hale"},
    {"Hobbs-Keller", "hobbskeller"},
    {"Iverson", "iverson"},
    {"Jansen", "jansen"},
    {"Kowalski", "kowalski"},
    {"Lindqvist", "lindqvist"},
    {"MacLeod", "macleod"},
    {"Marsh", "marsh"},
    {"McBride", "mcbride"},
    {"Muñoz", "munoz"},
    {"Novak", "novak"},
    {"Núñez", "nunez"},
    {"O'Keefe", "okeefe"},
    {"O'Shea", "oshea"},
    {"Olsen", "olsen"},
    {"Pratt", "pratt"},
    {"Quinn", "quinn"},
    {"Rasmussen", "rasmussen"},
    {"Schäfer", "schafer"},
    {"St. Clair", "stclair"},
    {"Thorne", "thorne"},
    {"Ulrich", "ulrich"},
    {"Van der Meer", "vandermeer"},
    {"Vaughn", "vaughn"},
    {"Whitaker", "whitaker"},
    {"Zeller", "zeller"},
};

constexpr const char* middle_names[] = {"A.", "B.", "C.", "E.", "J.", "K.", "L.", "M.", "R.", "T.", "W."};

constexpr const char* streets[] = {"Lake Shore Dr",  "Cherry Ln",   "Birch St",     "Prairie Rd",
                                   "Harbor View Ct", "Main St",     "Division St",  "Mill Rd",
                                   "St. Mary's Ln",  "Orchard Ave", "Quarry Rd",    "County Rd K",
                                   "Fox Run",        "Sunset Blvd", "Old Depot Way"};

struct Town {
    const char* city;
    const char* zip;
};

constexpr const char* home_state = "WI";

constexpr Town towns[] = {
    {"Fond Du Lac", "54935"}, {"Oshkosh", "54901"},       {"Oshkosh", "54904"},   {"Ripon", "54971"},
    {"Chilton", "53014"},     {"Campbellsport", "53010"}, {"Eden", "53019"},      {"Rosendale", "54974"},
    {"Van Dyne", "54979"},    {"Elkhart Lake", "53020"},  {"Sheboygan", "53081"}, {"Hartford", "53027"},
    {"West Bend", "53095"},   {"Germantown", "53022"},    {"Cedarburg", "53012"}, {"Stockbridge", "53088"},
};

constexpr const char* area_codes[] = {"920", "920", "920", "262", "414"};

constexpr const char* employers[] = {
    "Lakeland Dairy",    "County Highway Dept.", "Moraine College", "Self employed",   "Retired",
    "Ledge Stone Works", "School District",      "Harbor Clinic",   "Fox Valley Paper"};

constexpr const char* businesses[] = {"Corner Bakery", "Ridge Auto Body", "Bait & Tackle", "Kettle Books",
                                      "Two Sisters' Flowers"};

} // namespace

Name People::name() {
    const Spelling& first = dice_.pick(first_names);
    const Spelling& last = dice_.pick(last_names);
    return {first.name, "", last.name};
}

std::string People::telephone() {
    const std::string number = std::to_string(dice_.between(100, 199));
    return "(" + std::string(dice_.pick(area_codes)) + ") 555-0" + number;
}

Place People::place() {
    const Town& town = dice_.pick(towns);
    std::string address = std::to_string(dice_.between(2, 980)) + " " + dice_.pick(streets);
    if (dice_.one_in(9))
        address += " Apt " + std::to_string(dice_.between(1, 24));
    return {address, town.city, home_state, town.zip};
}

basic::Date People::born(int days_to_birthday) {
    const basic::DateParts next = basic::parts_of(basic::add_days(today_, days_to_birthday));
    const int year = next.year - dice_.between(24, 81);
    return basic::make_date(year, next.month, std::min(next.day, basic::days_in_month(year, next.month)));
}

Person People::next() {
    const Spelling* first = nullptr;
    const Spelling* last = nullptr;
    Person person;
    do {
        first = &dice_.pick(first_names);
        last = &dice_.pick(last_names);
        person.name = {first->name, "", last->name};
    } while (std::find(taken_.begin(), taken_.end(), person.name.full()) != taken_.end());
    taken_.push_back(person.name.full());

    if (dice_.one_in(3))
        person.name.middle = dice_.pick(middle_names);
    if (dice_.one_in(2)) {
        person.co_owner = name();
        if (!dice_.one_in(4))
            person.co_owner.last = person.name.last;
    }
    person.home = place();
    if (!dice_.one_in(6))
        person.homephone = telephone();
    if (dice_.one_in(2))
        person.workphone = telephone();
    if (!dice_.one_in(3))
        person.cellphone = telephone();
    if (dice_.one_in(8))
        person.fax = telephone();
    if (!dice_.one_in(4))
        person.employer = dice_.pick(employers);
    if (!dice_.one_in(3))
        person.email = std::string(first->plain) + "." + last->plain + "@example.com";
    if (dice_.one_in(8))
        person.businessname = dice_.pick(businesses);
    if (!dice_.one_in(4))
        person.birthday = born(dice_.between(0, 364));
    if (!person.co_owner.first.empty() && dice_.one_in(2))
        person.co_birthday = born(dice_.between(0, 364));
    return person;
}

} // namespace tolva::sample
