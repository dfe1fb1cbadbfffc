#pragma once

#include <string>

#include "jet/value.h"

namespace tolva::sql {

/// The kinds of number that a file keeps exactly, as the language's double and as text: every digit that
/// counts, no zeros behind the last one.
using basic::to_double;
double to_double(const jet::Decimal& value);
std::string to_text(jet::Currency value);
std::string to_text(const jet::Decimal& value);
/// All its digits, without sign, point and leading zeros.
std::string digits_of(const jet::Decimal& value);

} // namespace tolva::sql
