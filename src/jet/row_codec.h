#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "jet/table_definition.h"
#include "jet/value.h"

namespace tolva::jet {

/// The bytes of one row, taken apart as far as one column asks. Layout: the count of columns at its writing;
/// the fixed columns; the variable ones; then, only in tables with variable columns, where those end, their
/// offsets in reverse, in Jet 3 a table of jumps (see there), and their count; last the null mask, a bit for
/// each column id, set for a value.
class RowView {
  public:
    /// Error 3049 when the row is too short for what it claims. `where` is named in messages.
    RowView(const Pager& pager, PageNumber where, std::span<const std::uint8_t> bytes);

    /// Columns that the row did not know yet when it was written are null.
    bool is_null(const Column& column) const {
        return column.id >= columns_ || !(mask_[column.id / 8] >> column.id % 8 & 1);
    }
    /// The stored bytes of a column that is not null; none for yes/no, which lives in the null mask.
    std::span<const std::uint8_t> field(const Column& column) const;

    const Format& format() const { return *format_; }

  private:
    /// What the row's end tells of its variable columns.
    struct Trailer {
        const std::uint8_t* offsets = nullptr; ///< behind the first one; null before it has been looked at
        std::size_t count = 0;                 ///< of variable columns
        std::size_t last = 0;                  ///< where their values end at most
        std::span<const std::uint8_t> jumps;
    };

    [[noreturn]] void fail(const std::string& reason) const;
    std::size_t number(const std::uint8_t* at) const;
    void find_trailer(const Column& asking) const;
    std::size_t offset(std::size_t variable_column) const;

    const Pager* pager_;
    const Format* format_;
    PageNumber where_;
    std::span<const std::uint8_t> bytes_;
    std::size_t width_;
    std::size_t columns_ = 0;
    const std::uint8_t* mask_ = nullptr;
    std::size_t mask_size_ = 0;
    mutable Trailer trailer_;
};

/// A stored field as a value; not for long values. Error 3049 when its size is not its type's.
Value decode_field(const Pager& pager, PageNumber where, const Column& column,
                   std::span<const std::uint8_t> field);

struct StoredField {
    bool null = true;
    std::vector<std::uint8_t> bytes;
};
/// The same, somebody else's.
struct StoredFieldView {
    StoredFieldView() = default;
    StoredFieldView(bool is_null, std::span<const std::uint8_t> content) : null(is_null), bytes(content) {}
    StoredFieldView(const StoredField& field) : null(field.null), bytes(field.bytes) {}

    bool null = true;
    std::span<const std::uint8_t> bytes;
};
/// Builds the bytes of a row. `fields` holds one entry for each column of the table, in its order.
std::vector<std::uint8_t> encode_row(const Format& format, const TableDefinition& table,
                                     std::span<const StoredFieldView> fields);
std::vector<std::uint8_t> encode_row(const Format& format, const TableDefinition& table,
                                     std::span<const StoredField> fields);

/// The stored form of a value; not for long values. 3163 when it is too long, 3421 when it is not of the
/// column's kind, 6 when a number is beyond the column's range.
StoredField encode_field(const Format& format, const Column& column, const Value& value);

} // namespace tolva::jet
