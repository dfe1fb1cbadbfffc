#include "sample/record.h"

namespace tolva::sample {

Record::Record(dao::Recordset& rows) : rows_(rows) {
    rows_.AddNew();
    for (const jet::ColumnSchema& column : rows_.schema().columns) {
        if (column.type == jet::ColumnType::text || column.type == jet::ColumnType::memo)
            text(column.name, "");
    }
}

Record& Record::text(const std::string& column, const std::string& value) {
    rows_.write(column, value);
    return *this;
}

Record& Record::number(const std::string& column, double value) {
    rows_.write(column, value);
    return *this;
}

Record& Record::yes(const std::string& column, bool value) {
    rows_.write(column, value);
    return *this;
}

Record& Record::date(const std::string& column, std::optional<basic::Date> value) {
    if (value)
        rows_.write(column, *value);
    return *this;
}

Record& Record::person(const Person& person) {
    text("first", person.name.first).text("middle", person.name.middle).text("last", person.name.last);
    text("co_first", person.co_owner.first)
        .text("co_middle", person.co_owner.middle)
        .text("co_last", person.co_owner.last);
    text("address", person.home.address).text("city", person.home.city);
    text("state", person.home.state).text("zip", person.home.zip);
    text("homephone", person.homephone).text("workphone", person.workphone);
    text("cellphone", person.cellphone).text("fax", person.fax);
    text("employer", person.employer).text("email", person.email).text("businessname", person.businessname);
    return date("birthday", person.birthday).date("co_birthday", person.co_birthday);
}

std::string contact_notes(Dice& dice, basic::Date today, int lines) {
    static constexpr const char* contacts[] = {
        "Called, left word.",
        "Sent Letter",
        "Met at the house.",
        "Asked for comparable sales, sent three.",
        "Will think it over till spring.",
        "Called back, pleased. Wants a second showing on a Saturday.",
        "Dropped off the papers – José signs on Friday.",
    };
    std::string notes;
    int days = dice.between(1, 25);
    for (int line = 0; line < lines; ++line) {
        if (line > 0)
            notes += "\r\n";
        notes += basic::date_to_text(basic::add_days(today, -days)) + ": " + dice.pick(contacts);
        days += dice.between(6, 70);
    }
    return notes;
}

} // namespace tolva::sample
