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

/// Appends one column's share of an index key: the flag byte (null or not) and the value's bytes, so that
/// keys compare as the engine orders values. Keys beyond the format's limit are cut and checked as the engine
/// does it. `value` is of the kind that the column stores.
void append_key(Key& key, const KeyPart& part, const Value& value);

/// A whole entry's key.
Key make_key(std::span<const KeyPart> parts, std::span<const Value> values);

} // namespace tolva::jet
