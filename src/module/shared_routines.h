#pragma once

#include <string>

#include "basic/date.h"
#include "dao/field_value.h"

namespace tolva::module {

/// The days of the date's month, by the Gregorian leap rule.
int daysinmonth(basic::Date date);

/// The last day of the date's month as text, without leading zeros: "6/30/2005".
std::string lastdayofmonth(basic::Date date);

/// What a screen or a sheet shows of a stored value: its text without outer blanks; a null is nothing.
std::string shown_text(const dao::FieldValue& value);

/// What follows the last backslash. Error 6 for a path that has none: callers test first.
std::string filepartofpath(const std::string& path);

} // namespace tolva::module
