#include "module/shared_routines.h"

#include <variant>

#include "basic/run_time_error.h"
#include "basic/text.h"

namespace tolva::module {

int daysinmonth(basic::Date date) {
    const auto [year, month, day, hour, minute, second] = basic::parts_of(date);
    switch (month) {
    case 4:
    case 6:
    case 9:
    case 11:
        return 30;
    case 2:
        if (year % 400 == 0)
            return 29;
        if (year % 100 == 0)
            return 28;
        return year % 4 == 0 ? 29 : 28;
    default:
        return 31;
    }
}

std::string lastdayofmonth(basic::Date date) {
    const basic::DateParts parts = basic::parts_of(date);
    return std::to_string(parts.month) + "/" + std::to_string(daysinmonth(date)) + "/" +
           std::to_string(parts.year);
}

std::string shown_text(const dao::FieldValue& value) {
    if (const auto* text = std::get_if<std::string>(&value.raw()))
        return basic::trim(*text);
    return value.is_null() ? std::string() : basic::trim(value.text());
}

std::string filepartofpath(const std::string& path) {
    constexpr int overflow = 6;
    const std::string trimmed = basic::trim(path);
    const std::size_t slash = trimmed.rfind('\\');
    if (slash == std::string::npos)
        throw basic::RunTimeError(overflow);
    return trimmed.substr(slash + 1);
}

} // namespace tolva::module
