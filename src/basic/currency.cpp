#include "basic/currency.h"

#include <cmath>
#include <limits>

#include "basic/number.h"
#include "basic/run_time_error.h"

namespace tolva::basic {

namespace {

constexpr double scale = 10000;

[[noreturn]] void overflow() {
    throw RunTimeError(6);
}

} // namespace

Currency to_currency(double value) {
    const double scaled = round_half_even(value * scale);
    // 2^63 is a double, the largest 64-bit number is not.
    constexpr double limit = 9223372036854775808.0;
    if (!(scaled >= -limit && scaled < limit))
        overflow();
    return {static_cast<std::int64_t>(scaled)};
}

double to_double(Currency value) {
    return static_cast<double>(value.scaled) / scale;
}

Currency operator-(Currency a, Currency b) {
    using Limits = std::numeric_limits<std::int64_t>;
    if (b.scaled > 0 ? a.scaled < Limits::min() + b.scaled : a.scaled > Limits::max() + b.scaled)
        overflow();
    return {a.scaled - b.scaled};
}

Currency operator*(Currency a, Currency b) {
    return to_currency(to_double(a) * to_double(b));
}

} // namespace tolva::basic
