#include "basic/code_page.h"

#include <algorithm>
#include <iterator>

#include "basic/text.h"

namespace tolva::basic {

namespace {

/// Bytes 80 to 9F; all others are the code point of the same number.
constexpr char32_t upper_control_bytes[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

char byte_of(char32_t code_point) {
    if (code_point < 0x80 || (code_point >= 0xA0 && code_point <= 0xFF))
        return static_cast<char>(code_point);
    const auto found = std::find(std::begin(upper_control_bytes), std::end(upper_control_bytes), code_point);
    if (found == std::end(upper_control_bytes))
        return '?';
    return static_cast<char>(0x80 + (found - std::begin(upper_control_bytes)));
}

} // namespace

std::string from_windows_1252(std::string_view bytes) {
    std::u32string code_points;
    code_points.reserve(bytes.size());
    for (char c : bytes) {
        const unsigned char byte = static_cast<unsigned char>(c);
        code_points.push_back(byte >= 0x80 && byte < 0xA0 ? upper_control_bytes[byte - 0x80] : byte);
    }
    return from_code_points(code_points);
}

std::string to_windows_1252(std::string_view utf8) {
    std::string bytes;
    for (char32_t code_point : to_code_points(utf8))
        bytes.push_back(byte_of(code_point));
    return bytes;
}

} // namespace tolva::basic
