#include "rtf/escape.h"

#include <optional>

#include "basic/text.h"

namespace tolva::rtf {

namespace {

constexpr char digits[] = "0123456789abcdef";

void write_byte(std::string& out, unsigned char byte) {
    if (byte == '\\' || byte == '{' || byte == '}') {
        out += '\\';
        out += static_cast<char>(byte);
    } else if (byte >= 0x20 && byte < 0x7F) {
        out += static_cast<char>(byte);
    } else {
        out += "\\'";
        out += digits[byte >> 4];
        out += digits[byte & 0xF];
    }
}

void write_unit(std::string& out, char32_t unit) {
    out += "\\u";
    out += std::to_string(static_cast<int>(unit) - (unit >= 0x8000 ? 0x10000 : 0));
    out += '?';
}

void write_character(std::string& out, char32_t character, const CodePage& page) {
    switch (character) {
    case U'\t':
        out += "\\tab ";
        return;
    case U'\v':
        out += "\\line ";
        return;
    case U'\f':
        out += "\\page ";
        return;
    case 0xA0:
        out += "\\~";
        return;
    case 0xAD:
        out += "\\-";
        return;
    case 0x2011:
        out += "\\_";
        return;
    default:
        break;
    }
    if (const std::optional<unsigned char> byte = page.encode(character)) {
        write_byte(out, *byte);
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
