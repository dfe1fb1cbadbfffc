#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "jet/table.h"
#include "sql/row_values.h"

namespace tolva::sql {

/// Sorts rows by columns. Each row's columns are read once, as it is added, and turned into bytes that
/// compare as the columns do: null first, texts by their file's text order, yes ahead of no, the rest by
/// size.
class RowOrder {
  public:
    struct Part {
        std::size_t slot; ///< in RowValues
        bool descending;
    };

    /// `text_order` is the one of the table's file.
    RowOrder(std::vector<Part> parts, RowValues& row, jet::TextOrder text_order)
        : parts_(std::move(parts)), row_(row), text_order_(text_order) {}

    /// Adds the row at hand.
    void add(jet::RowId id);

    /// The rows in order; equal ones as they were added.
    std::vector<jet::RowId> sorted() const;

  private:
    struct Entry {
        std::size_t begin, size; ///< of its key in `keys_`
        /// The key's first bytes as a number: most comparisons end here.
        std::uint64_t start;
        jet::RowId id;
    };

    void append_key(const jet::Value& value);

    std::vector<Part> parts_;
    RowValues& row_;
    jet::TextOrder text_order_;
    std::vector<std::uint8_t> keys_;
    std::vector<Entry> entries_;
    std::u16string units_;
};

} // namespace tolva::sql
