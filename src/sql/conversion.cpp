#include "sql/conversion.h"

#include <cmath>

namespace tolva::sql {

namespace {

constexpr int currency_decimals = 4;

/// A whole number's digits with a point set `decimals` places from their end.
std::string point_set(std::string digits, std::size_t decimals, bool negative) {
    if (digits.size() <= decimals)
        digits.insert(0, decimals + 1 - digits.size(), '0');
    if (decimals > 0) {
        digits.insert(digits.size() - decimals, 1, '.');
        digits.erase(digits.find_last_not_of('0') + 1);
        if (digits.back() == '.')
            digits.pop_back();
    }
    if (negative && digits != "0")
        digits.insert(digits.begin(), '-');
    return digits;
}

} // namespace

double to_double(const jet::Decimal& value) {
    double magnitude = 0;
    for (int word = 2; word >= 0; --word)
        magnitude = magnitude * 4294967296.0 + value.magnitude[static_cast<std::size_t>(word)];
    const double number = magnitude / std::pow(10.0, value.scale);
    return value.negative ? -number : number;
}

std::string to_text(jet::Currency value) {
    const bool negative = value.scaled < 0;
    const std::uint64_t bits = static_cast<std::uint64_t>(value.scaled);
    return point_set(std::to_string(negative ? 0 - bits : bits), currency_decimals, negative);
}

std::string digits_of(const jet::Decimal& value) {
    std::array<std::uint32_t, 3> rest = value.magnitude;
    std::string digits;
    while (rest[0] != 0 || rest[1] != 0 || rest[2] != 0) {
        std::uint64_t remainder = 0;
        for (std::size_t word = rest.size(); word-- > 0;) {
            const std::uint64_t dividend = remainder << 32 | rest[word];
            rest[word] = static_cast<std::uint32_t>(dividend / 10);
            remainder = dividend % 10;
        }
        digits.insert(digits.begin(), static_cast<char>('0' + remainder));
    }
    return digits.empty() ? "0" : digits;
}

std::string to_text(const jet::Decimal& value) {
    return point_set(digits_of(value), value.scale, value.negative);
}

} // namespace tolva::sql
