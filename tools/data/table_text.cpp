#include "data/table_text.h"

#include <algorithm>

#include "basic/run_time_error.h"
#include "basic/text.h"
#include "data/number_text.h"
#include "sql/conversion.h"

namespace tolva::data {

using jet::ColumnType;

namespace {

[[noreturn]] void fail(const std::string& reason) {
    throw basic::RunTimeError::with_text(3421, reason);
}

[[noreturn]] void expected(std::string_view what, std::string_view text) {
    fail(std::string(what) + " expected, but found \"" + std::string(text) + "\"");
}

constexpr std::string_view null_text = "\\N";

std::string bytes_to_text(const jet::Bytes& bytes) {
    constexpr char digits[] = "0123456789abcdef";
    std::string text = "0x";
    for (const std::uint8_t byte : bytes) {
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

int hex_digit(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

jet::Bytes bytes_from_text(std::string_view text) {
    if (text.substr(0, 2) != "0x" || text.size() % 2 != 0)
        expected("0x and pairs of hexadecimal digits", text);
    jet::Bytes bytes;
    for (std::size_t at = 2; at < text.size(); at += 2) {
        const int high = hex_digit(text[at]);
        const int low = hex_digit(text[at + 1]);
        if (high < 0 || low < 0)
            expected("0x and pairs of hexadecimal digits", text);
        bytes.push_back(static_cast<std::uint8_t>(high * 16 + low));
    }
    return bytes;
}

/// The text itself. What is no UTF-8 is of another encoding, and would be stored without a trace of what it
/// was.
std::string characters_from_text(std::string_view text) {
    std::string content = unescape(text);
    const bool plain = std::all_of(content.begin(), content.end(),
                                   [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    if (!plain && basic::from_code_points(basic::to_code_points(content)) != content)
        expected("text in UTF-8", text);
    return content;
}

jet::Value whole_from_text(std::string_view text, std::int64_t least, std::int64_t most) {
    const auto value = parse_whole(text);
    if (!value || *value < least || *value > most) {
        expected("a whole number from " + std::to_string(least) + " to " + std::to_string(most), text);
    }
    return *value;
}

/// What stands for a character that cannot stand for itself; 0 for all others.
constexpr char escape_letter(char c) {
    switch (c) {
    case '\t':
        return 't';
    case '\r':
        return 'r';
    case '\n':
        return 'n';
    case '\0':
        return '0';
    case '\\':
        return '\\';
    default:
        return 0;
    }
}

/// Only control characters and the backslash are ever escaped, so nearly every text goes out whole.
void append_escaped(std::string& out, std::string_view text) {
    std::size_t plain = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char letter = escape_letter(text[at]);
        if (letter == 0)
            continue;
        out.append(text, plain, at - plain);
        out += '\\';
        out += letter;
        plain = at + 1;
    }
    out.append(text, plain);
}

struct AppendText {
    std::string& out;
    const jet::ColumnSchema& column;

    void operator()(std::monostate) const { out += null_text; }
    void operator()(bool value) const { out += value ? '1' : '0'; }
    void operator()(std::int64_t value) const { out += std::to_string(value); }
    void operator()(double value) const {
        out += column.type == ColumnType::single_real ? shortest(static_cast<float>(value)) : shortest(value);
    }
    void operator()(jet::Currency value) const { out += sql::to_text(value); }
    void operator()(const jet::Decimal& value) const { out += decimal_to_text(value); }
    void operator()(basic::Date value) const { append_moment(out, value); }
    void operator()(const std::string& value) const { append_escaped(out, value); }
    void operator()(const jet::Bytes& value) const { out += bytes_to_text(value); }
};

} // namespace

void append_field(std::string& out, const jet::ColumnSchema& column, const jet::Value& value) {
    std::visit(AppendText{out, column}, value);
}

jet::Value field_from_text(const jet::ColumnSchema& column, std::string_view text) {
    if (text == null_text) {
        if (column.type == ColumnType::boolean)
            expected("1 or 0", text);
        return std::monostate{};
    }
    switch (column.type) {
    case ColumnType::boolean:
        if (text != "0" && text != "1")
            expected("1 or 0", text);
        return text == "1";
    case ColumnType::byte:
        return whole_from_text(text, 0, 255);
    case ColumnType::integer:
        return whole_from_text(text, INT16_MIN, INT16_MAX);
    case ColumnType::long_integer:
        return whole_from_text(text, INT32_MIN, INT32_MAX);
    case ColumnType::currency:
        if (const auto value = parse_currency(text))
            return *value;
        expected("an amount with up to four digits behind the point", text);
    case ColumnType::single_real:
        if (const auto value = parse_single(text))
            return static_cast<double>(*value);
        expected("a number", text);
    case ColumnType::double_real:
        if (const auto value = parse_double(text))
            return *value;
        expected("a number", text);
    case ColumnType::date:
        if (const auto value = parse_moment(text))
            return *value;
        expected("a date as YYYY-MM-DD or YYYY-MM-DD HH:MM:SS", text);
    case ColumnType::numeric:
        if (const auto value = parse_decimal(text, column.precision, column.scale))
            return *value;
        expected("a number of up to " + std::to_string(column.precision) + " digits, " +
                     std::to_string(column.scale) + " of them behind the point",
                 text);
    case ColumnType::binary:
    case ColumnType::ole:
        return bytes_from_text(text);
    case ColumnType::guid: {
        jet::Bytes bytes = bytes_from_text(text);
        if (bytes.size() != 16)
            expected("16 bytes", text);
        return bytes;
    }
    case ColumnType::text:
    case ColumnType::memo:
        return characters_from_text(text);
    }
    fail("the column " + column.name + " is of an unknown type");
}

std::string escape(std::string_view text) {
    std::string out;
    append_escaped(out, text);
    return out;
}

std::string unescape(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '\\') {
            out += text[at];
            continue;
        }
        switch (++at < text.size() ? text[at] : ' ') {
        case 't':
            out += '\t';
            break;
        case 'r':
            out += '\r';
            break;
        case 'n':
            out += '\n';
            break;
        case '0':
            out += '\0';
            break;
        case '\\':
            out += '\\';
            break;
        default:
            fail("a backslash is written \\\\, but found it alone in \"" + std::string(text) + "\"");
        }
    }
    return out;
}

std::vector<std::string_view> split_fields(std::string_view line) {
    if (!line.empty() && line.back() == '\r')
        line.remove_suffix(1);
    std::vector<std::string_view> fields;
    for (std::size_t at = 0;;) {
        const std::size_t end = line.find('\t', at);
        fields.push_back(line.substr(at, end - at));
        if (end == std::string_view::npos)
            return fields;
        at = end + 1;
    }
}

} // namespace tolva::data
