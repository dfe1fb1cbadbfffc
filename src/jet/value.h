#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "basic/currency.h"
#include "basic/date.h"

namespace tolva::jet {

using Bytes = std::vector<std::uint8_t>;

using Currency = basic::Currency;

/// A decimal number of up to 28 digits: sign, 96-bit magnitude (least significant word first), and how many
/// of its digits stand behind the point.
struct Decimal {
    bool negative = false;
    std::array<std::uint32_t, 3> magnitude{};
    std::uint8_t scale = 0;
    friend bool operator==(const Decimal&, const Decimal&) = default;
};

/// The content of one field: null, yes/no, a whole number (Byte, Integer, Long), a real one (Single, Double),
/// currency, a decimal, a moment, text and memo (UTF-8), or bytes (binary, OLE, GUID).
using Value = std::variant<std::monostate, bool, std::int64_t, double, Currency, Decimal, basic::Date,
                           std::string, Bytes>;

inline bool is_null(const Value& value) {
    return std::holds_alternative<std::monostate>(value);
}

using Row = std::vector<Value>;

} // namespace tolva::jet
