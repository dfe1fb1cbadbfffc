#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "jet/schema.h"
#include "jet/text_order.h"
#include "jet/value.h"

namespace tolva::jet {

using Key = std::vector<std::uint8_t>;

struct KeyPart {
    ColumnType type;
    bool descending = false;
    TextOrder order = TextOrder::general_jet4;
};

/// A key that is longer than the format's `longest_key` ends in two bytes that sum up what it loses.
inline constexpr std::size_t key_sum_size = 2;

/// Appends one column's share of an index key: the flag byte (null or not) and the value's bytes, so that
/// keys compare as the engine orders values. `value` is of the kind that the column stores; of a memo the
/// first 255 characters count. The length is not limited here.
void append_key(Key& key, const KeyPart& part, const Value& value);

/// A whole entry's key, one value for each part, within `longest` bytes.
Key make_key(std::span<const KeyPart> parts, std::span<const Value> values, std::size_t longest);

/// What the keys of all entries start with whose first columns have these values. Where it leaves no room for
/// a sum within `longest` it may fit further entries too, so that a reader must look at the rows.
Key search_prefix(std::span<const KeyPart> parts, std::span<const Value> values, std::size_t longest);

/// Cuts a key that is too long, as the engine does.
void limit_key(Key& key, std::size_t longest);

} // namespace tolva::jet
