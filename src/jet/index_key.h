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

/// The longest key that an index holds. Of a longer one it keeps the first `kept_of_long_key` bytes and two
/// that sum up the rest.
inline constexpr std::size_t longest_key = 510;
inline constexpr std::size_t kept_of_long_key = 508;

/// Appends one column's share of an index key: the flag byte (null or not) and the value's bytes, so that
/// keys compare as the engine orders values. `value` is of the kind that the column stores; of a memo the
/// first 255 characters count. The length is not limited here.
void append_key(Key& key, const KeyPart& part, const Value& value);

/// A whole entry's key, one value for each part, within `longest_key`.
Key make_key(std::span<const KeyPart> parts, std::span<const Value> values);

/// What the keys of all entries start with whose first columns have these values. Where it reaches
/// `kept_of_long_key` it may fit further entries too, so that a reader must look at the rows.
Key search_prefix(std::span<const KeyPart> parts, std::span<const Value> values);

/// Cuts a key that is too long, as the engine does.
void limit_key(Key& key);

} // namespace tolva::jet
