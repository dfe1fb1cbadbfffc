#pragma once

#include <map>
#include <string>

#include "basic/date.h"
#include "jet/value.h"

namespace tolva::support {

/// A column's value for a test, where a plain text literal is a text and {} is null.
struct ColumnValue : jet::Value {
    ColumnValue() = default;
    ColumnValue(const char* text) : jet::Value(std::string(text)) {}
    template <class T>
    ColumnValue(T value) : jet::Value(std::move(value)) {}
};
using Customer = std::map<std::string, ColumnValue>;

/// A customer's row as the program itself saves one: no text is null, there was a contact, printing is
/// wanted. `values` and `own` go over that.
inline std::map<std::string, jet::Value> customer(const Customer& values,
                                                  const std::map<std::string, jet::Value>& own = {}) {
    std::map<std::string, jet::Value> row = own;
    for (const char* column : {"first", "last", "co_first", "co_last", "homephone", "address", "city",
                               "state", "zip", "businessname", "contacthistory"})
        row[column] = std::string();
    row["includeinprinting"] = true;
    row["datelastcontact"] = basic::make_date(2026, 11, 1);
    for (const auto& [column, value] : values)
        row[column] = value;
    return row;
}

/// The source of a letter with one paragraph.
inline std::string letter_of(const std::string& text) {
    return "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fswiss Arial;}}\\pard\\f0\\fs22 " + text +
           "\\par\r\n}";
}

} // namespace tolva::support
