#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "jet/data_page.h"
#include "jet/pager.h"
#include "jet/schema.h"

namespace tolva::jet {

/// A column as the table definition tells it.
struct Column {
    enum Flag : std::uint8_t { fixed_flag = 1, nullable_flag = 2, auto_number_flag = 4 };
    enum MoreFlag : std::uint8_t { compressed_flag = 1 };

    std::string name;
    ColumnType type = ColumnType::text;
    std::uint16_t id = 0;             ///< its bit in the null mask; never used again once dropped
    std::uint16_t variable_index = 0; ///< its place in the row's variable offsets
    std::uint16_t position = 0;       ///< where it is shown
    std::uint16_t text_order = 0;
    std::uint8_t text_order_version = 0;
    std::uint8_t precision = 0, scale = 0;
    std::uint8_t flags = 0, more_flags = 0;
    std::uint16_t fixed_offset = 0;
    std::uint16_t length = 0; ///< bytes
    /// Maps of the pages that hold its long values; page 0 where there is none.
    RecordPlace owned_map, free_map;

    /// What the catalog's properties say of it.
    bool required = false;
    bool zero_length = true;
    std::string default_value;

    bool is_fixed() const { return flags & fixed_flag; }
    bool is_auto_number() const { return flags & auto_number_flag; }
    bool compresses() const { return more_flags & compressed_flag; }
    bool is_long() const { return type == ColumnType::memo || type == ColumnType::ole; }
};

/// What is stored on disk for one or several indexes of the user.
struct RealIndex {
    enum Flag : std::uint8_t { unique_flag = 1, ignore_nulls_flag = 2, required_flag = 8 };

    struct Part {
        std::size_t column = 0; ///< place in TableDefinition::columns
        bool descending = false;
    };
    std::vector<Part> parts;
    RecordPlace owned_map;
    PageNumber root = 0;
    std::uint8_t flags = 0;
    /// Where its count of distinct keys stands, from the start of the definition's first page.
    std::size_t counter_offset = 0;

    bool unique() const { return flags & unique_flag; }
    bool ignores_nulls() const { return flags & ignore_nulls_flag; }
    bool required() const { return flags & required_flag; }
};

struct LogicalIndex {
    enum Kind : std::uint8_t { plain = 0, primary = 1, relation = 2 };

    std::string name;
    std::size_t real = 0; ///< place in TableDefinition::real_indexes
    std::uint8_t kind = plain;
};

/// A table definition, read whole. Its pages stay as they are but for the counters on the first one.
struct TableDefinition {
    PageNumber page = 0;
    std::vector<PageNumber> pages;
    std::vector<Column> columns; ///< in the order of their positions
    std::vector<RealIndex> real_indexes;
    std::vector<LogicalIndex> logical_indexes;
    /// Ids ever given out, dropped columns included; the width of a new row's null mask.
    std::uint16_t most_columns = 0;
    std::uint16_t variable_columns = 0;
    RecordPlace owned_map, free_map;
    bool is_system = false;
};

/// Error 3049 when the definition makes no sense.
TableDefinition read_table_definition(const Pager& pager, PageNumber page);

/// The bytes that a value of the type always has; 0 where the column's length tells.
std::size_t natural_length(ColumnType type);

} // namespace tolva::jet
