#include "jet/column_properties.h"

#include <cstring>

#include "basic/text.h"
#include "jet/bytes.h"
#include "jet/text_codec.h"

namespace tolva::jet {
namespace {

constexpr char jet4_magic[] = "MR2";
constexpr char jet3_magic[] = "KKD";
constexpr std::size_t magic_size = 4; // with its closing zero
constexpr std::uint16_t names_chunk = 0x80;
constexpr std::uint16_t column_chunk = 1;
constexpr std::uint8_t boolean_type = 1, text_type = 10, memo_type = 12;

/// In the order in which a new table's blob names them.
constexpr const char* property_names[] = {"AllowZeroLength", "Required", "DefaultValue"};
enum Property : std::size_t { zero_length_property, required_property, default_property };

const char* magic_of(const Format& format) {
    return format.version == Format::Version::jet4 ? jet4_magic : jet3_magic;
}

/// Takes pieces off the front; an empty one when there is not enough.
class Pieces {
  public:
    explicit Pieces(std::span<const std::uint8_t> bytes) : rest_(bytes) {}
    bool has(std::size_t count) const { return rest_.size() >= count; }
    std::span<const std::uint8_t> take(std::size_t count) {
        if (!has(count))
            count = rest_.size();
        const auto piece = rest_.first(count);
        rest_ = rest_.subspan(count);
        return piece;
    }
    std::uint16_t take16() { return has(2) ? get16(take(2).data()) : std::uint16_t{0}; }
    std::uint32_t take32() { return has(4) ? get32(take(4).data()) : 0; }

  private:
    std::span<const std::uint8_t> rest_;
};

void append16(std::vector<std::uint8_t>& out, std::size_t value) {
    out.resize(out.size() + 2);
    put16(out.data() + out.size() - 2, value);
}

void append_name(std::vector<std::uint8_t>& out, const std::string& name, const Format& format) {
    const std::u16string units = to_utf16(name);
    append16(out, units.size() * format.character_size);
    encode_text(out, units, false, format);
}

/// A chunk: its length (this head included), its kind, its content.
void append_chunk(std::vector<std::uint8_t>& out, std::uint16_t kind,
                  const std::vector<std::uint8_t>& content) {
    const std::size_t start = out.size();
    out.resize(start + 4);
    put32(out.data() + start, static_cast<std::uint32_t>(content.size() + 6));
    append16(out, kind);
    out.insert(out.end(), content.begin(), content.end());
}

} // namespace

std::map<std::string, ColumnRules> read_column_properties(std::span<const std::uint8_t> blob,
                                                          const Format& format) {
    std::map<std::string, ColumnRules> rules;
    if (blob.size() < magic_size || std::memcmp(blob.data(), magic_of(format), magic_size) != 0)
        return rules;
    const auto text = [&](std::span<const std::uint8_t> bytes) { return decode_text(bytes, format); };
    std::vector<std::string> names;
    Pieces chunks(blob.subspan(magic_size));
    while (chunks.has(6)) {
        const std::uint32_t size = chunks.take32();
        const std::uint16_t kind = chunks.take16();
        if (size < 6)
            break;
        Pieces content(chunks.take(size - 6));
        if (kind == names_chunk) {
            while (content.has(2))
                names.push_back(text(content.take(content.take16())));
            continue;
        }
        if (kind != column_chunk)
            continue;
        content.take32(); // the size of what names the column
        ColumnRules& column = rules[text(content.take(content.take16()))];
        while (content.has(8)) {
            const std::uint16_t entry_size = content.take16();
            if (entry_size < 8)
                break;
            Pieces entry(content.take(entry_size - 2u));
            entry.take(1);
            const std::uint8_t type = entry.has(1) ? entry.take(1)[0] : std::uint8_t{0};
            const std::size_t name = entry.take16();
            const auto value = entry.take(entry.take16());
            if (value.empty() || name >= names.size())
                continue;
            const auto is = [&](Property property) {
                return basic::equal_names(names[name], property_names[property]);
            };
            if (type == boolean_type && is(required_property))
                column.required = value[0] != 0;
            if (type == boolean_type && is(zero_length_property))
                column.zero_length = value[0] != 0;
            if ((type == text_type || type == memo_type) && is(default_property))
                column.default_value = text(value);
        }
    }
    return rules;
}

std::vector<std::uint8_t> write_column_properties(const TableSchema& table, const Format& format) {
    std::vector<std::uint8_t> names;
    for (const char* name : property_names)
        append_name(names, name, format);
    std::vector<std::uint8_t> blob(magic_of(format), magic_of(format) + magic_size);
    append_chunk(blob, names_chunk, names);
    for (const ColumnSchema& column : table.columns) {
        const bool has_length = column.type == ColumnType::text || column.type == ColumnType::memo;
        if (!has_length && !column.required && column.default_value.empty())
            continue;
        std::vector<std::uint8_t> name;
        append_name(name, column.name, format);
        std::vector<std::uint8_t> content;
        append16(content, name.size() + 4);
        append16(content, 0); // the upper half of that size
        content.insert(content.end(), name.begin(), name.end());
        const auto property = [&](Property which, std::uint8_t type, std::span<const std::uint8_t> value) {
            append16(content, value.size() + 8);
            content.push_back(1);
            content.push_back(type);
            append16(content, which);
            append16(content, value.size());
            content.insert(content.end(), value.begin(), value.end());
        };
        const auto yes_no = [&](Property which, bool value) {
            const std::uint8_t byte = value ? 0xff : 0;
            property(which, boolean_type, {&byte, 1});
        };
        if (has_length)
            yes_no(zero_length_property, column.zero_length);
        yes_no(required_property, column.required);
        if (!column.default_value.empty()) {
            std::vector<std::uint8_t> expression;
            encode_text(expression, to_utf16(column.default_value), false, format);
            property(default_property, memo_type, expression);
        }
        append_chunk(blob, column_chunk, content);
    }
    return blob;
}

} // namespace tolva::jet
