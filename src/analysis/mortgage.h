#pragma once

#include <string>

#include "basic/currency.h"

namespace tolva::analysis {

/// The monthly payment of a level mortgage, as text. `rate` is percent a year, `days` the days from closing
/// to the first payment (30 is a plain annuity in arrears; more adds simple interest for the longer first
/// period). `fee` and `perpayment` are two further charges; `perpayment` is left holding what the formula
/// makes of it. Without a rate the text keeps the blank that stands ahead of a number. Currency is fixed
/// point, the arithmetic double unless told. Error 11 for a term of no months, 6 for what does not fit, 5 for
/// a negative rate so large that a broken number of months has no power of it.
std::string mortgagepayment(basic::Currency amount, basic::Currency months, basic::Currency rate,
                            basic::Currency fee, basic::Currency days, basic::Currency& perpayment);

} // namespace tolva::analysis
