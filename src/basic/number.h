#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tolva::basic {

/// The lenient conversion used wherever the user types a number: blanks (also tabs and line ends) are
/// skipped, the longest numeric start is taken (sign, digits, one point, exponent with E or D), and a text
/// without one gives 0; "125,000" is 125. A magnitude beyond a double is error 6.
double leading_number(std::string_view text);

/// The string form of a number as the language writes it: up to 15 significant digits, no trailing zeros,
/// no leading zero lost ("0.5"), exponents as "1E+15" and "1E-05" only beyond what plain digits can hold.
std::string number_to_text(double value);
std::string number_to_text(std::int64_t value);

/// The form that joins numbers into query texts: a number that is not negative keeps a blank ahead.
std::string spaced_number_text(double value);

/// The strict conversion of a whole text, thousands commas and a currency sign allowed, as the store does it
/// when text is written to a numeric column; nothing when the text is not a number.
std::optional<double> strict_number(std::string_view text);

/// Rounds half to even, as every conversion to a whole number does.
double round_half_even(double value);

/// "###0.00": at least one integer digit, two decimals, no thousands separator, "-" before a negative value,
/// halves away from zero on the decimal digits that number_to_text shows.
std::string money_text(double value);

} // namespace tolva::basic
