#include "analysis/mortgage.h"

#include <cmath>

#include "basic/number.h"
#include "basic/run_time_error.h"

namespace tolva::analysis {

using basic::Currency;
using basic::to_double;

namespace {

constexpr double months_a_year = 12;
constexpr double days_a_month = 30;
constexpr double percent_months = 1200;

double require_finite(double result) {
    constexpr int overflow = 6;
    if (std::isinf(result))
        throw basic::RunTimeError(overflow);
    return result;
}

double divide(double a, double b) {
    constexpr int division_by_zero = 11;
    if (b == 0)
        throw basic::RunTimeError(division_by_zero);
    return require_finite(a / b);
}

/// A negative base has no power with a fraction.
double power(double base, double exponent) {
    constexpr int invalid_call = 5;
    const double result = std::pow(base, exponent);
    if (std::isnan(result))
        throw basic::RunTimeError(invalid_call);
    return require_finite(result);
}

} // namespace

std::string mortgagepayment(Currency amount, Currency months, Currency rate, Currency fee, Currency days,
                            Currency& perpayment) {
    const double number = to_double(months);
    if (rate.scaled == 0)
        return basic::spaced_number_text(divide(to_double(amount), number));

    const double monthly = to_double(rate) / percent_months;
    perpayment = basic::to_currency(to_double(perpayment) * (number / months_a_year));
    const double discount = divide(1, 1 + monthly);
    const Currency last = months - basic::to_currency(1);
    const double later = divide(1 - power(discount, to_double(last)), monthly);
    const Currency fees = months * fee;
    const Currency charges = months * perpayment;
    // With no months at all the sum of discount factors is nothing; the powers above would leave a rest.
    const double all = months.scaled == 0 ? 0 : 1 + later;
    const double factor = divide(all, 1 + to_double(days) * monthly / days_a_month);
    return basic::number_to_text(divide(to_double(amount), (factor - to_double(charges)) - to_double(fees)));
}

} // namespace tolva::analysis
