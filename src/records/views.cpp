#include "records/views.h"

#include "module/shared_routines.h"

namespace tolva::records {

namespace {

constexpr double birthday_days_ahead = 7;
constexpr int plain_mark = 1;

std::string month_start(int year, int month) {
    return std::to_string(month) + "/1/" + std::to_string(year);
}

} // namespace

DateSpan month_of(basic::Date day) {
    const basic::DateParts parts = basic::parts_of(day);
    return {month_start(parts.year, parts.month), module::lastdayofmonth(day)};
}

DateSpan month_before(basic::Date day) {
    basic::DateParts parts = basic::parts_of(day);
    if (--parts.month < 1) {
        parts.month = 12;
        --parts.year;
    }
    return month_of(basic::make_date(parts.year, parts.month, 1));
}

std::function<std::optional<int>(const dao::Recordset&)> either_birthday(basic::Date today) {
    return [today](const dao::Recordset& row) -> std::optional<int> {
        if (birthday_within_a_week(row.field("birthday"), today) ||
            birthday_within_a_week(row.field("co_birthday"), today))
            return plain_mark;
        return std::nullopt;
    };
}

std::function<std::optional<int>(const dao::Recordset&)> next_contact_within(double days, basic::Date today) {
    return [days, today](const dao::Recordset& row) -> std::optional<int> {
        if (within_days(row.field("datenextcontact"), days, today))
            return plain_mark;
        return std::nullopt;
    };
}

bool birthday_within_a_week(const dao::FieldValue& birthday, basic::Date today) {
    if (birthday.is_null())
        return false;
    const basic::DateParts born = basic::parts_of(birthday.date());
    const int day = born.month == 2 && born.day == 29 ? 28 : born.day;
    const basic::Date date = basic::make_date(basic::parts_of(today).year, born.month, day);
    return date.days - today.days <= birthday_days_ahead && !(date < today);
}

bool within_days(const dao::FieldValue& date, double days, basic::Date today) {
    if (date.is_null())
        return false;
    const basic::Date day = date.date();
    return !(day < basic::add_days(today, -days)) && !(basic::add_days(today, days) < day);
}

} // namespace tolva::records
