#pragma once

#include <optional>
#include <string>

#include "jet/value.h"

namespace tolva::dao {

/// What a column's default expression gives a new row: a number, a text between quotation marks or
/// apostrophes (doubled inside), True, False, Yes, No, Null, Date() and Now(), each with a leading "=" or
/// without. `now` is this moment, if there is a clock. Nothing for any other expression: such a column starts
/// as null.
std::optional<jet::Value> default_value(const std::string& expression, std::optional<basic::Date> now);

} // namespace tolva::dao
