#include "rtf/escape.h"

#include <optional>

#include "basic/text.h"

namespace tolva::rtf {

namespace {

constexpr char digits[] = "0123456789abcdef";

/// A byte of the page. In a symbol font the format's own characters are glyphs, which not every reader takes
/// from behind a backslash.
void write_byte(std::string& out, unsigned char byte, bool symbol) {
    const bool special = byte == '\\' || byte == '{' || byte == '}';
    if (special && !symbol) {
        out += '\\';
        out += static_cast<char>(byte);
    } else if (byte >= 0x20 && byte < 0x7F && !special) {
        out += static_cast<char>(byte);
    } else {
        write_raw_byte(out, static_cast<char>(byte));
    }
}

void write_unit(std::string& out, char32_t unit) {
    out += "\\u";
    out += std::to_string(static_cast<int>(unit) - (unit >= 0x8000 ? 0x10000 : 0));
    out += '?';
}

/// Characters that the format has words or symbols for; null for others.
const char* word_of(char32_t character) {
    switch (character) {
    case U'\t':
        return "\\tab ";
    case U'\v':
        return "\\line ";
    case U'\f':
        return "\\page ";
    case 0xA0:
        return "\\~";
    case 0xAD:
        return "\\-";
    case 0x2011:
        return "\\_";
    case 0x2013:
        return "\\endash ";
    case 0x2014:
        return "\\emdash ";
    case 0x2018:
        return "\\lquote ";
    case 0x2019:
        return "\\rquote ";
    case 0x201C:
        return "\\ldblquote ";
    case 0x201D:
        return "\\rdblquote ";
    case 0x2022:
        return "\\bullet ";
    default:
        return nullptr;
    }
}

void write_character(std::string& out, char32_t character, const CodePage& page) {
    const bool glyph = page.is_symbol() && page.encode(character);
    if (const char* const word = word_of(character); word && !glyph) {
        out += word;
        return;
    }
    if (const std::optional<unsigned char> byte = page.encode(character)) {
        write_byte(out, *byte, page.is_symbol());
    } else if (character > 0xFFFF) {
        write_unit(out, 0xD800 + ((character - 0x10000) >> 10));
        write_unit(out, 0xDC00 + ((character - 0x10000) & 0x3FF));
    } else {
        write_unit(out, character);
    }
}

/// Text without anything to escape in a page that leaves ASCII alone: most of a letter.
std::size_t plain_length(std::string_view text) {
    std::size_t length = 0;
    while (length < text.size() && text[length] >= 0x20 && text[length] < 0x7F && text[length] != '\\' &&
           text[length] != '{' && text[length] != '}')
        ++length;
    return length;
}

std::size_t sequence_length(char first) {
    const auto byte = static_cast<unsigned char>(first);
    return byte < 0xC0 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

} // namespace

void write_escaped(std::string& out, std::string_view utf8, const CodePage& page) {
    while (!utf8.empty()) {
        if (!page.is_symbol()) {
            const std::size_t plain = plain_length(utf8);
            out += utf8.substr(0, plain);
            utf8.remove_prefix(plain);
            if (utf8.empty())
                return;
        }
        const std::string_view sequence = utf8.substr(0, sequence_length(utf8.front()));
        for (const char32_t character : basic::to_code_points(sequence))
            write_character(out, character, page);
        utf8.remove_prefix(sequence.size());
    }
}

void write_raw_byte(std::string& out, char byte) {
    const auto value = static_cast<unsigned char>(byte);
    out += "\\'";
    out += digits[value >> 4];
    out += digits[value & 0xF];
}

void write_hex(std::string& out, std::string_view bytes) {
    constexpr std::size_t line = 64;
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        if (at % line == 0)
            out += "\r\n";
        const auto byte = static_cast<unsigned char>(bytes[at]);
        out += digits[byte >> 4];
        out += digits[byte & 0xF];
    }
}

} // namespace tolva::rtf
