#pragma once

#include <cstdint>

namespace tolva::basic {

/// A fixed-point number of four decimals, as money is counted: a whole number of ten-thousandths in 64 bits.
/// What does not fit is error 6.
struct Currency {
    std::int64_t scaled = 0;

    friend bool operator==(const Currency&, const Currency&) = default;
};

/// Rounds halves to even at the fourth decimal.
Currency to_currency(double value);
double to_double(Currency value);

Currency operator-(Currency a, Currency b);
/// The product of two, rounded to four decimals.
Currency operator*(Currency a, Currency b);

} // namespace tolva::basic
