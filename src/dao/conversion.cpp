#include "dao/conversion.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>
#include <type_traits>

#include "basic/number.h"
#include "basic/run_time_error.h"
#include "basic/text.h"
#include "jet/text_codec.h"
#include "sql/conversion.h"

namespace tolva::dao {

namespace {

constexpr int conversion_error = 3421;
constexpr int field_too_small = 3163;

template <typename Content>
Content require(const std::optional<Content>& content) {
    if (!content)
        throw basic::RunTimeError(conversion_error);
    return *content;
}

void require_width(std::size_t units, int column_size) {
    if (column_size > 0 && units > static_cast<std::size_t>(column_size))
        throw basic::RunTimeError(field_too_small);
}

/// A whole number within the bounds, both of which a double holds exactly.
std::int64_t whole_number(double number, double lowest, double highest) {
    const double whole = basic::round_half_even(number);
    if (!(whole >= lowest && whole <= highest))
        throw basic::RunTimeError(conversion_error);
    return static_cast<std::int64_t>(whole);
}

template <typename Integer>
std::int64_t whole_number(double number) {
    return whole_number(number, std::numeric_limits<Integer>::min(), std::numeric_limits<Integer>::max());
}

/// A byte has no sign: yes is all its bits.
std::int64_t byte_number(const jet::Value& value) {
    if (const bool* yes = std::get_if<bool>(&value))
        return *yes ? 255 : 0;
    return whole_number<std::uint8_t>(require(number_of(value)));
}

double single_number(double number) {
    if (!(std::fabs(number) <= static_cast<double>(std::numeric_limits<float>::max())))
        throw basic::RunTimeError(conversion_error);
    return static_cast<double>(static_cast<float>(number));
}

jet::Currency currency(const jet::Value& value) {
    if (const auto* already = std::get_if<jet::Currency>(&value))
        return *already;
    constexpr double bound = 9.2e18; // a little inside of what 64 bits hold
    return {whole_number(require(number_of(value)) * 10000.0, -bound, bound)};
}

/// The decimal with the column's number of places, from the number's own digits.
jet::Decimal decimal(const jet::Value& value, const jet::ColumnSchema& column) {
    constexpr int most_digits = 28;
    const double number = require(number_of(value));
    const int precision = column.precision > 0 ? column.precision : most_digits;
    char buffer[400];
    const auto [end, failure] = std::to_chars(buffer, buffer + sizeof buffer, std::fabs(number),
                                              std::chars_format::fixed, column.scale);
    if (failure != std::errc() || !std::isfinite(number))
        throw basic::RunTimeError(conversion_error);

    jet::Decimal result;
    result.negative = number < 0;
    result.scale = static_cast<std::uint8_t>(column.scale);
    int digits = 0;
    for (const char* at = buffer; at != end; ++at) {
        if (*at == '.')
            continue;
        if (digits > 0 || *at != '0')
            ++digits;
        if (digits > precision)
            throw basic::RunTimeError(conversion_error);
        std::uint64_t carry = static_cast<std::uint64_t>(*at - '0');
        for (std::uint32_t& word : result.magnitude) {
            carry += std::uint64_t{word} * 10;
            word = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
    }
    return result;
}

struct TextOf {
    using Text = std::optional<std::string>;
    Text operator()(std::monostate) const { return std::nullopt; }
    Text operator()(bool value) const { return value ? "True" : "False"; }
    Text operator()(std::int64_t value) const { return basic::number_to_text(value); }
    Text operator()(double value) const { return basic::number_to_text(value); }
    Text operator()(jet::Currency value) const { return sql::to_text(value); }
    Text operator()(const jet::Decimal& value) const { return sql::to_text(value); }
    Text operator()(basic::Date value) const { return basic::date_to_text(value); }
    Text operator()(const std::string& value) const { return value; }
    Text operator()(const jet::Bytes&) const { return std::nullopt; }
};

struct NumberOf {
    using Number = std::optional<double>;
    Number operator()(std::monostate) const { return std::nullopt; }
    Number operator()(bool value) const { return value ? -1.0 : 0.0; }
    Number operator()(std::int64_t value) const { return static_cast<double>(value); }
    Number operator()(double value) const { return value; }
    Number operator()(jet::Currency value) const { return sql::to_double(value); }
    Number operator()(const jet::Decimal& value) const { return sql::to_double(value); }
    Number operator()(basic::Date value) const { return value.days; }
    Number operator()(const std::string& value) const { return basic::strict_number(value); }
    Number operator()(const jet::Bytes&) const { return std::nullopt; }
};

} // namespace

std::optional<std::string> text_of(const jet::Value& value) {
    return std::visit(TextOf{}, value);
}

std::optional<double> number_of(const jet::Value& value) {
    return std::visit(NumberOf{}, value);
}

std::optional<bool> yes_no_of(const jet::Value& value) {
    if (const auto* text = std::get_if<std::string>(&value)) {
        if (basic::equal_names(*text, "True"))
            return true;
        if (basic::equal_names(*text, "False"))
            return false;
    }
    const auto number = number_of(value);
    if (!number)
        return std::nullopt;
    return *number != 0;
}

std::optional<basic::Date> date_of(const jet::Value& value, int current_year) {
    if (const auto* date = std::get_if<basic::Date>(&value))
        return *date;
    if (const auto* text = std::get_if<std::string>(&value)) {
        if (!basic::is_date(*text, current_year))
            return std::nullopt;
        return basic::to_date(*text, current_year);
    }
    const auto days = number_of(value);
    if (!days || !(*days > -657435 && *days < 2958466))
        return std::nullopt;
    return basic::Date{*days};
}

jet::Value convert(const jet::Value& value, const jet::ColumnSchema& column, int current_year) {
    if (column.type == jet::ColumnType::boolean)
        return !jet::is_null(value) && require(yes_no_of(value));
    if (jet::is_null(value))
        return value;
    switch (column.type) {
    case jet::ColumnType::byte:
        return byte_number(value);
    case jet::ColumnType::integer:
        return whole_number<std::int16_t>(require(number_of(value)));
    case jet::ColumnType::long_integer:
        return whole_number<std::int32_t>(require(number_of(value)));
    case jet::ColumnType::currency:
        return currency(value);
    case jet::ColumnType::single_real:
        return single_number(require(number_of(value)));
    case jet::ColumnType::double_real:
        return require(number_of(value));
    case jet::ColumnType::date:
        return require(date_of(value, current_year));
    case jet::ColumnType::numeric:
        return decimal(value, column);
    case jet::ColumnType::text: {
        std::string text = require(text_of(value));
        require_width(jet::to_utf16(text).size(), column.size);
        return text;
    }
    case jet::ColumnType::memo:
        return require(text_of(value));
    default:
        break;
    }
    const auto* bytes = std::get_if<jet::Bytes>(&value);
    if (bytes == nullptr)
        throw basic::RunTimeError(conversion_error);
    require_width(bytes->size(), column.size);
    return *bytes;
}

} // namespace tolva::dao
