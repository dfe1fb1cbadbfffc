#include "basic/text.h"

#include <algorithm>

namespace tolva::basic {

namespace {

constexpr char32_t replacement = 0xFFFD;

/// One character at the start of a text: its code point and how many bytes it takes. A byte that starts no
/// well-formed sequence (overlong forms and surrogates are none) is one character by itself.
struct Character {
    char32_t code_point;
    std::size_t bytes;
};

Character first_character(std::string_view text) {
    const auto byte = [text](std::size_t at) {
        return at < text.size() ? static_cast<unsigned char>(text[at]) : 0u;
    };
    const unsigned lead = byte(0);
    if (lead < 0x80)
        return {lead, 1};

    std::size_t size = 0;
    char32_t smallest = 0;
    char32_t code_point = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        size = 2, smallest = 0x80, code_point = lead & 0x1F;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        size = 3, smallest = 0x800, code_point = lead & 0x0F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        size = 4, smallest = 0x10000, code_point = lead & 0x07;
    } else {
        return {replacement, 1};
    }
    for (std::size_t i = 1; i < size; ++i) {
        if ((byte(i) & 0xC0) != 0x80)
            return {replacement, 1};
        code_point = code_point << 6 | (byte(i) & 0x3F);
    }
    const bool surrogate = code_point >= 0xD800 && code_point <= 0xDFFF;
    if (code_point < smallest || code_point > 0x10FFFF || surrogate)
        return {replacement, 1};
    return {code_point, size};
}

char ascii_lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

} // namespace

std::size_t length(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size(); ++count)
        at += first_character(text.substr(at)).bytes;
    return count;
}

std::string left(std::string_view text, std::size_t places) {
    constexpr char32_t last_of_one_place = 0xFFFF;
    std::size_t at = 0;
    while (at < text.size()) {
        const Character character = first_character(text.substr(at));
        const std::size_t width = character.code_point > last_of_one_place ? 2 : 1;
        if (width > places)
            break;
        places -= width;
        at += character.bytes;
    }
    return std::string(text.substr(0, at));
}

std::string trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::u32string to_code_points(std::string_view text) {
    std::u32string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const Character character = first_character(text.substr(at));
        result.push_back(character.code_point);
        at += character.bytes;
    }
    return result;
}

std::string from_code_points(std::u32string_view code_points) {
    std::string result;
    result.reserve(code_points.size());
    const auto put = [&result](char32_t bits) { result.push_back(static_cast<char>(bits)); };
    for (char32_t c : code_points) {
        if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF))
            c = replacement;
        if (c < 0x80) {
            put(c);
        } else if (c < 0x800) {
            put(0xC0 | c >> 6);
            put(0x80 | (c & 0x3F));
        } else if (c < 0x10000) {
            put(0xE0 | c >> 12);
            put(0x80 | (c >> 6 & 0x3F));
            put(0x80 | (c & 0x3F));
        } else {
            put(0xF0 | c >> 18);
            put(0x80 | (c >> 12 & 0x3F));
            put(0x80 | (c >> 6 & 0x3F));
            put(0x80 | (c & 0x3F));
        }
    }
    return result;
}

bool equal_names(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return ascii_lower(x) == ascii_lower(y);
           });
}

} // namespace tolva::basic
