#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "jet/format.h"
#include "jet/schema.h"

namespace tolva::jet {

/// The properties of a column that concern whoever writes to it. Where a column says nothing, nothing binds.
struct ColumnRules {
    bool required = false;
    bool zero_length = true;
    std::string default_value; ///< an expression; empty for none
};

/// Reads the property blob of a table's catalog row, by column name. Bytes that make no sense end the
/// reading; what was understood until then counts.
std::map<std::string, ColumnRules> read_column_properties(std::span<const std::uint8_t> blob,
                                                          const Format& format);

/// The blob of a new table: these properties of each column that departs from an engine's defaults.
std::vector<std::uint8_t> write_column_properties(const TableSchema& table, const Format& format);

} // namespace tolva::jet
