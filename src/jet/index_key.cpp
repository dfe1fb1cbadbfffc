#include "jet/index_key.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstring>

namespace tolva::jet {
namespace {

constexpr std::uint8_t null_flag = 0x00, value_flag = 0x7f;

void put_big_endian(Key& key, std::uint64_t bits, int bytes) {
    for (int shift = (bytes - 1) * 8; shift >= 0; shift -= 8)
        key.push_back(static_cast<std::uint8_t>(bits >> shift));
}

void complement(Key& key, std::size_t from) {
    for (std::size_t i = from; i < key.size(); ++i)
        key[i] = static_cast<std::uint8_t>(~key[i]);
}

/// Whole numbers: the sign flipped, so that negative ones come first. A Byte has no sign.
void put_whole(Key& key, std::int64_t value, int bytes, bool has_sign) {
    const std::uint64_t sign = has_sign ? std::uint64_t{1} << (bytes * 8 - 1) : 0;
    put_big_endian(key, static_cast<std::uint64_t>(value) ^ sign, bytes);
}

/// Real numbers by their bits: the sign set for positive ones, all bits turned for negative ones.
void put_real(Key& key, std::uint64_t bits, int bytes) {
    const std::uint64_t sign = std::uint64_t{1} << (bytes * 8 - 1);
    put_big_endian(key, bits & sign ? ~bits : bits | sign, bytes);
}

void put_single(Key& key, double value) {
    put_real(key, std::bit_cast<std::uint32_t>(static_cast<float>(value)), 4);
}

void put_double(Key& key, double value) {
    put_real(key, std::bit_cast<std::uint64_t>(value), 8);
}

/// A sign byte and the magnitude in 16 bytes. Descending turns the magnitude but not the sign, so that
/// negative numbers come first in either direction: the engine of these files does so, and its entries have
/// to be found.
void put_decimal(Key& key, const Decimal& value, bool descending) {
    const bool negative = value.negative && std::any_of(value.magnitude.begin(), value.magnitude.end(),
                                                        [](auto w) { return w; });
    key.push_back(negative ? 0x00 : 0xff);
    const std::size_t start = key.size();
    put_big_endian(key, 0, 4);
    for (auto word = value.magnitude.rbegin(); word != value.magnitude.rend(); ++word)
        put_big_endian(key, *word, 4);
    if (negative != descending)
        complement(key, start);
}

/// Bytes in eights, each followed by 09 when more come, else by how many of the eight are real; nothing at
/// all for none. The 09 stays as it is when the order descends.
void put_bytes(Key& key, std::span<const std::uint8_t> bytes, bool descending) {
    constexpr std::size_t group = 8;
    constexpr std::uint8_t more = 9;
    while (!bytes.empty()) {
        const std::size_t real = std::min(bytes.size(), group);
        const std::size_t start = key.size();
        key.insert(key.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(real));
        key.resize(start + group);
        bytes = bytes.subspan(real);
        if (bytes.empty())
            key.push_back(static_cast<std::uint8_t>(real));
        if (descending)
            complement(key, start);
        if (!bytes.empty())
            key.push_back(more);
    }
}

/// As it is written out, while the row has its first three numbers the other way round.
Bytes guid_in_reading_order(Bytes guid) {
    if (guid.size() == 16) {
        std::reverse(guid.begin(), guid.begin() + 4);
        std::reverse(guid.begin() + 4, guid.begin() + 6);
        std::reverse(guid.begin() + 6, guid.begin() + 8);
    }
    return guid;
}

/// Texts end in 00; descending, that end is turned like the rest, and in Jet 4 another one is added.
void put_text(Key& key, const std::string& text, const KeyPart& part) {
    const std::size_t start = key.size();
    append_text_key(key, text, part.order);
    if (!part.descending)
        return;
    complement(key, start);
    if (part.order == TextOrder::general_jet4)
        key.push_back(0x00);
}

/// The value's bytes, but for those types whose descending order is more than a complement.
void put_plain(Key& key, ColumnType type, const Value& value) {
    switch (type) {
    case ColumnType::byte:
        put_whole(key, std::get<std::int64_t>(value), 1, false);
        break;
    case ColumnType::integer:
        put_whole(key, std::get<std::int64_t>(value), 2, true);
        break;
    case ColumnType::long_integer:
        put_whole(key, std::get<std::int64_t>(value), 4, true);
        break;
    case ColumnType::currency:
        put_whole(key, std::get<Currency>(value).scaled, 8, true);
        break;
    case ColumnType::single_real:
        put_single(key, std::get<double>(value));
        break;
    case ColumnType::double_real:
        put_double(key, std::get<double>(value));
        break;
    case ColumnType::date:
        put_double(key, std::get<basic::Date>(value).days);
        break;
    default:
        assert(!"a type without a key");
    }
}

/// Sums up what a long key loses: a feedback shift register that takes each byte into its high half and
/// turns between bytes, not after the last.
std::uint16_t sum_up(std::span<const std::uint8_t> bytes) {
    constexpr std::uint16_t turned_bit[] = {0x0580, 0x0f80, 0x1b80, 0x3380, 0x6380, 0xc380, 0x8381, 0x0383};
    std::uint16_t sum = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i > 0) {
            std::uint16_t turned = sum >> 8;
            for (int bit = 0; bit < 8; ++bit)
                if (sum >> bit & 1)
                    turned ^= turned_bit[bit];
            sum = turned;
        }
        sum = static_cast<std::uint16_t>(sum ^ bytes[i] << 8);
    }
    return sum;
}

Key unlimited_key(std::span<const KeyPart> parts, std::span<const Value> values) {
    Key key;
    for (std::size_t i = 0; i < values.size(); ++i)
        append_key(key, parts[i], values[i]);
    return key;
}

} // namespace

void append_key(Key& key, const KeyPart& part, const Value& value) {
    const std::size_t start = key.size();
    // A Boolean is never null: a row that says nothing says no.
    if (is_null(value) && part.type != ColumnType::boolean) {
        key.push_back(part.descending ? static_cast<std::uint8_t>(~null_flag) : null_flag);
        return;
    }
    key.push_back(part.descending ? static_cast<std::uint8_t>(~value_flag) : value_flag);
    switch (part.type) {
    case ColumnType::text:
    case ColumnType::memo:
        put_text(key, std::get<std::string>(value), part);
        break;
    case ColumnType::binary:
        put_bytes(key, std::get<Bytes>(value), part.descending);
        break;
    case ColumnType::guid:
        put_bytes(key, guid_in_reading_order(std::get<Bytes>(value)), part.descending);
        break;
    case ColumnType::numeric:
        put_decimal(key, std::get<Decimal>(value), part.descending);
        break;
    case ColumnType::boolean: {
        const bool yes = !is_null(value) && std::get<bool>(value);
        key.push_back(yes == part.descending ? 0xff : 0x00);
        break;
    }
    default:
        put_plain(key, part.type, value);
        if (part.descending)
            complement(key, start + 1);
    }
}

void limit_key(Key& key, std::size_t longest) {
    if (key.size() <= longest)
        return;
    const std::size_t kept = longest - key_sum_size;
    const std::uint16_t sum = sum_up(std::span<const std::uint8_t>(key).subspan(kept));
    key.resize(kept);
    put_big_endian(key, sum, static_cast<int>(key_sum_size));
}

Key make_key(std::span<const KeyPart> parts, std::span<const Value> values, std::size_t longest) {
    assert(parts.size() == values.size());
    Key key = unlimited_key(parts, values);
    limit_key(key, longest);
    return key;
}

Key search_prefix(std::span<const KeyPart> parts, std::span<const Value> values, std::size_t longest) {
    assert(values.size() <= parts.size());
    Key key = unlimited_key(parts, values);
    if (key.size() > longest - key_sum_size)
        key.resize(longest - key_sum_size);
    return key;
}

} // namespace tolva::jet
