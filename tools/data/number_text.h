#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "basic/date.h"
#include "jet/value.h"

namespace tolva::data {

// Numbers and dates as text that reads back as the very same value. Nothing here depends on a locale. Each
// `parse_` takes a whole text or gives nothing.

std::string shortest(double value);
std::string shortest(float value);
std::string decimal_to_text(const jet::Decimal& value);

/// Appends YYYY-MM-DD HH:MM:SS, or the number of days where the calendar ends (years 100 to 9999).
void append_moment(std::string& out, basic::Date value);

std::optional<std::int64_t> parse_whole(std::string_view text);
std::optional<double> parse_double(std::string_view text);
std::optional<float> parse_single(std::string_view text);
std::optional<jet::Currency> parse_currency(std::string_view text);

/// Brought to `scale` digits behind the point; nothing when digits would be lost or there are more than
/// `precision`.
std::optional<jet::Decimal> parse_decimal(std::string_view text, int precision, int scale);

/// The forms of `append_moment`; the time may be left out.
std::optional<basic::Date> parse_moment(std::string_view text);

} // namespace tolva::data
