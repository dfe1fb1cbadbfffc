#include "data/number_text.h"

#include <array>
#include <charconv>
#include <cmath>

#include "sql/conversion.h"

namespace tolva::data {

namespace {

/// The shortest digits that read back the same, with an exponent only where plain digits would be many.
template <typename Real>
std::string real_text(Real value) {
    std::array<char, 64> buffer{};
    const Real magnitude = std::fabs(value);
    const bool plain = value == 0 || (magnitude >= Real(1e-6) && magnitude < Real(1e15));
    const auto form = plain ? std::chars_format::fixed : std::chars_format::scientific;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, form);
    return {buffer.data(), result.ptr};
}

template <typename Number>
std::optional<Number> whole_text_number(std::string_view text) {
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

/// A plain decimal number, taken apart: the digits without their point, and how many stood behind it.
struct Digits {
    bool negative = false;
    std::string digits;
    int behind_point = 0;
};

std::optional<Digits> parse_digits(std::string_view text) {
    Digits result;
    if (!text.empty() && text.front() == '-') {
        result.negative = true;
        text.remove_prefix(1);
    }
    bool point = false;
    for (const char c : text) {
        if (c == '.' && !point) {
            point = true;
        } else if (c >= '0' && c <= '9') {
            result.digits += c;
            if (point)
                ++result.behind_point;
        } else {
            return std::nullopt;
        }
    }
    if (result.digits.empty())
        return std::nullopt;
    return result;
}

/// The digits with exactly `scale` of them behind the point, without leading zeros; nothing when one that is
/// not zero would be lost.
std::optional<std::string> scaled_digits(Digits number, int scale) {
    for (; number.behind_point < scale; ++number.behind_point)
        number.digits += '0';
    for (; number.behind_point > scale; --number.behind_point) {
        if (number.digits.back() != '0')
            return std::nullopt;
        number.digits.pop_back();
    }
    number.digits.erase(0, number.digits.find_first_not_of('0'));
    return number.digits;
}

/// Puts the point back, with at least one digit ahead of it.
std::string with_point(bool negative, std::string digits, int scale) {
    const auto behind = static_cast<std::size_t>(scale);
    if (digits.size() <= behind)
        digits.insert(0, behind + 1 - digits.size(), '0');
    if (behind > 0)
        digits.insert(digits.size() - behind, ".");
    return (negative ? "-" : "") + digits;
}

/// 0100-01-01 and the day after 9999-12-31.
constexpr double first_day = -657434;
constexpr double past_last_day = 2958466;

/// A run of exactly `width` digits at `at`.
std::optional<int> digits_at(std::string_view text, std::size_t at, std::size_t width) {
    int value = 0;
    for (std::size_t i = at; i < at + width; ++i) {
        if (text[i] < '0' || text[i] > '9')
            return std::nullopt;
        value = value * 10 + (text[i] - '0');
    }
    return value;
}

/// Text of the shape "dd-dd" and the like: every mark of `shape` stands where it belongs, digits elsewhere.
bool has_shape(std::string_view text, std::string_view shape) {
    if (text.size() != shape.size())
        return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool digit = text[i] >= '0' && text[i] <= '9';
        if (shape[i] == 'd' ? !digit : text[i] != shape[i])
            return false;
    }
    return true;
}

} // namespace

std::string shortest(double value) {
    return real_text(value);
}

std::string shortest(float value) {
    return real_text(value);
}

std::string decimal_to_text(const jet::Decimal& value) {
    return with_point(value.negative, sql::digits_of(value), value.scale);
}

void append_moment(std::string& out, basic::Date value) {
    // The last half second of the calendar would round past its end.
    if (!(value.days >= first_day && value.days < past_last_day - 0.5 / 86400)) {
        out += shortest(value.days);
        return;
    }
    const basic::DateParts parts = basic::parts_of(value);
    std::array<char, 19> text = {'0', '0', '0', '0', '-', '0', '0', '-', '0', '0',
                                 ' ', '0', '0', ':', '0', '0', ':', '0', '0'};
    const auto put = [&](std::size_t last, int number) {
        for (; number > 0; number /= 10)
            text[last--] = static_cast<char>('0' + number % 10);
    };
    put(3, parts.year);
    put(6, parts.month);
    put(9, parts.day);
    put(12, parts.hour);
    put(15, parts.minute);
    put(18, parts.second);
    out.append(text.data(), text.size());
}

std::optional<std::int64_t> parse_whole(std::string_view text) {
    return whole_text_number<std::int64_t>(text);
}

std::optional<double> parse_double(std::string_view text) {
    return whole_text_number<double>(text);
}

std::optional<float> parse_single(std::string_view text) {
    return whole_text_number<float>(text);
}

std::optional<jet::Currency> parse_currency(std::string_view text) {
    const auto number = parse_digits(text);
    if (!number)
        return std::nullopt;
    const auto digits = scaled_digits(*number, 4);
    if (!digits)
        return std::nullopt;
    // The sign goes with the digits: the lowest amount has no positive counterpart.
    const auto scaled = parse_whole((number->negative ? "-" : "") + (digits->empty() ? "0" : *digits));
    if (!scaled)
        return std::nullopt;
    return jet::Currency{*scaled};
}

std::optional<jet::Decimal> parse_decimal(std::string_view text, int precision, int scale) {
    const auto number = parse_digits(text);
    if (!number)
        return std::nullopt;
    const auto digits = scaled_digits(*number, scale);
    if (!digits || digits->size() > static_cast<std::size_t>(precision))
        return std::nullopt;

    jet::Decimal value;
    value.scale = static_cast<std::uint8_t>(scale);
    value.negative = number->negative && !digits->empty();
    for (const char digit : *digits) {
        std::uint64_t carry = static_cast<std::uint64_t>(digit - '0');
        for (std::uint32_t& word : value.magnitude) {
            const std::uint64_t part = std::uint64_t{word} * 10 + carry;
            word = static_cast<std::uint32_t>(part);
            carry = part >> 32;
        }
        if (carry != 0)
            return std::nullopt;
    }
    return value;
}

std::optional<basic::Date> parse_moment(std::string_view text) {
    const bool day_only = has_shape(text, "dddd-dd-dd");
    if (!day_only && !has_shape(text, "dddd-dd-dd dd:dd:dd")) {
        const auto days = parse_double(text);
        if (!days)
            return std::nullopt;
        return basic::Date{*days};
    }
    basic::DateParts parts{*digits_at(text, 0, 4), *digits_at(text, 5, 2), *digits_at(text, 8, 2)};
    if (!day_only) {
        parts.hour = *digits_at(text, 11, 2);
        parts.minute = *digits_at(text, 14, 2);
        parts.second = *digits_at(text, 17, 2);
        if (parts.hour > 23 || parts.minute > 59 || parts.second > 59)
            return std::nullopt;
    }
    if (parts.year < 100 || parts.month < 1 || parts.month > 12 || parts.day < 1 ||
        parts.day > basic::days_in_month(parts.year, parts.month)) {
        return std::nullopt;
    }
    return basic::make_moment(parts);
}

} // namespace tolva::data
