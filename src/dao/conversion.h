#pragma once

#include <optional>
#include <string>

#include "jet/schema.h"
#include "jet/value.h"

namespace tolva::dao {

/// A value in another form, or nothing when it has none: null and bytes have none, nor has a text that is not
/// to its end a number, a date or a yes/no.
std::optional<std::string> text_of(const jet::Value& value);
std::optional<double> number_of(const jet::Value& value);
std::optional<bool> yes_no_of(const jet::Value& value);
/// A number is the days since day zero, within the calendar. `current_year` as for basic::to_date.
std::optional<basic::Date> date_of(const jet::Value& value, int current_year);

/// The value as a column stores it. Numbers are rounded to what the column can hold, halves to even; null
/// stays null, but is no in a yes/no column. Error 3421 when there is no such value: a text that is none (""
/// is no number), a number beyond the column's range, bytes for anything but bytes. Error 3163 when a text or
/// bytes are wider than the column.
jet::Value convert(const jet::Value& value, const jet::ColumnSchema& column, int current_year);

} // namespace tolva::dao
