#pragma once

#include <string>

#include "basic/date.h"

namespace tolva::module {

/// The days of the date's month, by the Gregorian leap rule.
int daysinmonth(basic::Date date);

/// The last day of the date's month as text, without leading zeros: "6/30/2005".
std::string lastdayofmonth(basic::Date date);

/// What follows the last backslash. Error 6 for a path that has none: callers test first.
std::string filepartofpath(const std::string& path);

} // namespace tolva::module
