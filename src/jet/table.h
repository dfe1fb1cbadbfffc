#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "jet/schema.h"
#include "jet/value.h"

namespace tolva::jet {

/// Where a row's header slot stands. Ordering is the engine's order of rows without an order: page and slot.
struct RowId {
    std::uint32_t page = 0;
    std::uint8_t slot = 0;
    /// Which of the rows that stood in this slot since the file was opened: a deleted row's id never names
    /// the row that took its slot later.
    std::uint16_t life = 0;

    friend bool operator==(const RowId&, const RowId&) = default;
    friend bool operator<(const RowId& a, const RowId& b) {
        return a.page != b.page ? a.page < b.page : a.slot < b.slot;
    }
};

/// Decodes one column of the row under a cursor; what is not asked for is not decoded, and a long value is
/// fetched only here. Valid until the cursor moves or the table changes.
class RowReader {
  public:
    virtual ~RowReader() = default;
    virtual Value value(std::size_t column) const = 0;
    /// The same into a value that a walk uses again and again: text takes the room of the text before it.
    virtual void read_into(std::size_t column, Value& into) const { into = value(column); }
};

/// A reader that can be sent to any row, so that a walk by row ids needs only one.
class RowSeeker : public RowReader {
  public:
    /// Error 3167 when the row is gone.
    virtual void go_to(RowId id) = 0;
};

/// Walks the rows of a table in page and slot order. `next` goes to the following row and says whether there
/// was one; a table that changes under a cursor is read as it then stands. After an error on a damaged page
/// or row it goes on behind that.
class RowCursor : public RowReader {
  public:
    virtual bool next() = 0;
    virtual RowId id() const = 0;
};

/// One table of an open database: its rows and every index over them, kept equal. Each change is whole or
/// absent: all its checks come first (3047 record too large, 3163 too long for its column, 3314 and 3315
/// required and zero length, 3022 and 3058 index violations), and a failure in the middle is undone. Changes
/// are pending until `Database::commit`.
class Table {
  public:
    virtual ~Table() = default;

    virtual const TableSchema& schema() const = 0;
    /// The column's position, or nothing; letter case does not matter.
    virtual std::optional<std::size_t> find_column(const std::string& name) const = 0;
    /// What the table definition counts; the structure check compares it with the rows.
    virtual std::uint32_t row_count() const = 0;

    /// `row` holds one value for each column, of the kind that its column stores (see Value). An AutoNumber
    /// that is null gets the next number.
    virtual RowId insert(const Row& row) = 0;
    /// Gives each AutoNumber of a row to come its number now. That number is gone, whatever becomes of the
    /// row.
    virtual void draw_auto_numbers(Row& row) = 0;
    /// The row keeps its RowId, whatever its new size.
    virtual void update(RowId id, const Row& row) = 0;
    /// The same for the columns that are `written`, which get their place in `values`; the others stay.
    virtual void change(RowId id, const Row& values, const std::vector<bool>& written) {
        Row row = read(id);
        for (std::size_t i = 0; i < row.size(); ++i)
            if (written[i])
                row[i] = values[i];
        update(id, row);
    }
    virtual void erase(RowId id) = 0;

    /// Error 3167 when the row is gone.
    virtual Row read(RowId id) const = 0;
    virtual bool exists(RowId id) const = 0;
    /// Tells which rows a walk will go to next, in that order, so that it need not wait for each. Nothing but
    /// a hint.
    virtual void expect(std::span<const RowId> coming) const { static_cast<void>(coming); }
    /// A reader on one row, error 3167 when it is gone.
    virtual std::unique_ptr<RowSeeker> reader(RowId id) const = 0;
    virtual std::unique_ptr<RowCursor> scan() const = 0;

    /// The rows whose first index columns equal `values` in the index's own sense of equality (text without
    /// letter case and trailing blanks), sorted by RowId. `index` is a position in `schema().indexes`; where
    /// it is damaged the rows themselves are asked.
    virtual std::vector<RowId> find(std::size_t index, std::span<const Value> values) const = 0;

    /// Looks at an entry's key in an index, the form of which `append_key` tells.
    using KeyTest = std::function<bool(std::span<const std::uint8_t> key)>;
    /// The rows whose keys in an index pass a test, and those whose keys were too long to be whole, sorted by
    /// RowId. What the index leaves out for its nulls is not among them. Nothing where the index's keys can't
    /// be relied on.
    virtual std::optional<std::vector<RowId>> find_by_key(std::size_t index, const KeyTest& passes) const = 0;
};

} // namespace tolva::jet
