#include "sql/row_order.h"

#include <algorithm>
#include <cstring>
#include <type_traits>
#include <variant>

#include "jet/text_codec.h"
#include "jet/text_order.h"
#include "sql/conversion.h"

namespace tolva::sql {

namespace {

constexpr std::uint8_t null_flag = 0x00, value_flag = 0x7F;

/// A long text counts with its start only.
constexpr std::size_t longest_sorted_text = 255;

void append_big_endian(std::vector<std::uint8_t>& key, std::uint64_t bits) {
    for (int shift = 56; shift >= 0; shift -= 8)
        key.push_back(static_cast<std::uint8_t>(bits >> shift));
}

/// Bits that ascend with the number: the sign inverted, of negative ones everything.
void append_number(std::vector<std::uint8_t>& key, double number) {
    number += 0.0; // a negative zero is a zero
    std::uint64_t bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    constexpr std::uint64_t sign = std::uint64_t{1} << 63;
    append_big_endian(key, (bits & sign) != 0 ? ~bits : bits | sign);
}

/// The units that the text order reads, into a string that is used again and again.
void assign_units(std::u16string& units, std::string_view text) {
    const auto plain = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    if (std::all_of(text.begin(), text.end(), plain))
        units.assign(text.begin(), text.end());
    else
        units = jet::to_utf16(text);
    if (units.size() > longest_sorted_text)
        units.resize(longest_sorted_text);
}

} // namespace

void RowOrder::add(jet::RowId id) {
    const std::size_t begin = keys_.size();
    for (const Part& part : parts_) {
        const std::size_t part_begin = keys_.size();
        append_key(row_.at(part.slot));
        if (!part.descending)
            continue;
        for (std::size_t i = part_begin; i < keys_.size(); ++i)
            keys_[i] = static_cast<std::uint8_t>(~keys_[i]);
    }
    const std::size_t size = keys_.size() - begin;
    std::uint64_t start = 0;
    for (std::size_t i = 0; i < sizeof start; ++i)
        start = start << 8 | (i < size ? keys_[begin + i] : 0u);
    entries_.push_back({begin, size, start, id});
}

void RowOrder::append_key(const jet::Value& value) {
    keys_.push_back(jet::is_null(value) ? null_flag : value_flag);
    std::visit(
        [this](const auto& content) {
            using Content = std::decay_t<decltype(content)>;
            if constexpr (std::is_same_v<Content, bool>) {
                keys_.push_back(content ? 0x00 : 0xFF);
            } else if constexpr (std::is_same_v<Content, std::int64_t>) {
                append_big_endian(keys_, static_cast<std::uint64_t>(content) ^ std::uint64_t{1} << 63);
            } else if constexpr (std::is_same_v<Content, double>) {
                append_number(keys_, content);
            } else if constexpr (std::is_same_v<Content, jet::Currency>) {
                append_big_endian(keys_, static_cast<std::uint64_t>(content.scaled) ^ std::uint64_t{1} << 63);
            } else if constexpr (std::is_same_v<Content, jet::Decimal>) {
                append_number(keys_, to_double(content));
            } else if constexpr (std::is_same_v<Content, basic::Date>) {
                append_number(keys_, content.days);
            } else if constexpr (std::is_same_v<Content, std::string>) {
                assign_units(units_, content);
                jet::append_text_key(keys_, units_, text_order_);
            } else if constexpr (std::is_same_v<Content, jet::Bytes>) {
                for (const std::uint8_t byte : content)
                    keys_.insert(keys_.end(), {0x01, byte}); // so that no key starts another one
                keys_.push_back(0x00);
            }
        },
        value);
}

std::vector<jet::RowId> RowOrder::sorted() const {
    std::vector<Entry> entries = entries_;
    std::stable_sort(entries.begin(), entries.end(), [this](const Entry& a, const Entry& b) {
        if (a.start != b.start)
            return a.start < b.start;
        const int order =
            std::memcmp(keys_.data() + a.begin, keys_.data() + b.begin, std::min(a.size, b.size));
        return order != 0 ? order < 0 : a.size < b.size;
    });
    std::vector<jet::RowId> rows;
    rows.reserve(entries.size());
    for (const Entry& entry : entries)
        rows.push_back(entry.id);
    return rows;
}

} // namespace tolva::sql
