#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "jet/schema.h"
#include "jet/value.h"

namespace tolva::data {

/// Rows as tab-separated text, made to come back unchanged:
/// - fields are parted by tabs, rows by line feeds; inside a field tab, carriage return, line feed, the null
///   character and the backslash are written \t, \r, \n, \0 and \\;
/// - null is \N, which differs from an empty text;
/// - yes/no is 1 or 0; whole numbers, currency and decimals are plain digits; a real number is the shortest
///   text that reads back as the same number of its column's width;
/// - a date is YYYY-MM-DD HH:MM:SS, its time rounded to the second; a number beyond the calendar (damaged or
///   odd files) is written as days since 1899-12-30;
/// - binary, OLE and GUID are 0x and two hexadecimal digits a byte, in the file's order.

/// Appends one field, escaped.
void append_field(std::string& out, const jet::ColumnSchema& column, const jet::Value& value);

/// The value that a column stores for an escaped field. A date may go without its time, or be a number of
/// days. Error 3421, with a text that says what was expected.
jet::Value field_from_text(const jet::ColumnSchema& column, std::string_view text);

std::string escape(std::string_view text);
/// Error 3421 on a backslash that starts no escape.
std::string unescape(std::string_view text);

/// A line's fields, still escaped. A carriage return at the line's end is not part of it.
std::vector<std::string_view> split_fields(std::string_view line);

} // namespace tolva::data
