#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "jet/text_order.h"

namespace tolva::jet {

/// The numbers are the file's own.
enum class ColumnType : std::uint8_t {
    boolean = 1,
    byte = 2,
    integer = 3,
    long_integer = 4,
    currency = 5,
    single_real = 6,
    double_real = 7,
    date = 8,
    binary = 9,
    text = 10,
    ole = 11,
    memo = 12,
    guid = 15,
    numeric = 16,
};

struct ColumnSchema {
    std::string name;
    ColumnType type = ColumnType::text;
    /// Characters for text, bytes for binary; 0 elsewhere.
    int size = 0;
    bool required = false;
    bool zero_length = true;
    bool auto_number = false;
    /// Text that always fills its width with blanks.
    bool fixed_length = false;
    /// For numeric.
    int precision = 0, scale = 0;
    /// The expression that gives a new row its value; empty for none. What it comes to is the logic's affair.
    std::string default_value = {};
};

struct IndexSchema {
    struct Part {
        std::string column;
        bool descending = false;
    };

    std::string name;
    std::vector<Part> parts;
    bool primary = false;
    bool unique = false;
    bool ignore_nulls = false;
    bool required = false;
};

struct TableSchema {
    std::string name;
    std::vector<ColumnSchema> columns;
    std::vector<IndexSchema> indexes;
    /// In which texts of the table's file are compared and sorted; the file's version tells.
    TextOrder text_order = TextOrder::general_jet4;
    /// Properties of the table and its columns, in the catalog's own form. A new table without any gets those
    /// that its columns' rules need.
    std::vector<std::uint8_t> properties = {};
};

} // namespace tolva::jet
