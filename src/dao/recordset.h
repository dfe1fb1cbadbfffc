#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "dao/field_value.h"
#include "jet/table.h"

namespace tolva::dao {

class Database;

/// The rows that a table or a query gave when it was opened, and a position among them. Which rows belong to
/// the set is fixed then; what they hold is read anew each time. Order of effects:
/// - `AddNew` draws the row's AutoNumbers, which are gone then whatever becomes of it. Else `AddNew` and
///   `Edit` touch nothing until `Update`; any move drops what they had begun, and so does the other of the
///   two.
/// - `Update` of an edit stores the columns that were written and leaves the others as they then are. An
///   `Update` that fails leaves the edit open.
/// - After `AddNew`, writes and `Update` the new row stands at the end of the set, whatever its order, and
///   the row that was current before is current again.
/// - `Delete` acts at once; the position stays on the deleted row, which reads as no record until
///   a move.
/// - A value is converted to its column's type as it is written (3421 when it cannot be), and tested for
///   width (3163), required (3314) and zero length (3315) at the latest by `Update`.
class Recordset {
  public:
    enum class Kind {
        table,  ///< all rows of a table; counted from the start
        dynaset ///< what a query gave
    };

    Recordset(Database& database, jet::Table& table, std::vector<jet::RowId> rows, Kind kind = Kind::dynaset);
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    bool Eof() const;
    bool Bof() const;

    /// 0 for an empty set; else the rows visited so far, and the whole count after `MoveLast`. A row that
    /// this set added counts at once, one that it deleted no longer. A table's own set knows its count at
    /// once.
    long RecordCount() const;

    /// Reading the row under `AddNew` or `Edit` gives what was written to it. 3021 without a current row,
    /// 3265 for an unknown name, 3167 when the row was deleted through another set.
    FieldValue field(const std::string& name) const;
    /// The same for a long walk, by the column's place in `schema()`. Good until this set is asked for the
    /// column again.
    const jet::Value& value(std::size_t column) const;

    /// Writing needs `AddNew` or `Edit` (3020). Text, numbers, dates, yes/no and null, converted as told at
    /// `convert`; 3265 for an unknown name, 3163 for what is too wide for its column.
    void write(const std::string& name, const jet::Value& value);

    /// A new row starts with its AutoNumbers and its columns' defaults (see dao/default_value.h), without one
    /// with null, and no in a yes/no. 3027 when the file cannot be written.
    void AddNew();
    /// 3021 without a current row, 3167 when it was deleted through another set, 3027 as above.
    void Edit();
    /// 3020 without `AddNew` or `Edit`; else the table's own errors.
    void Update();
    /// Errors as `Edit`.
    void Delete();

    /// 3021 from behind the end on, from ahead of the start back, and on a set without rows.
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();

    /// The current row, to come back to; nothing where there is none.
    std::optional<jet::RowId> Bookmark() const;
    /// Moves to the row of a bookmark. False, without a move, when the set doesn't have it (any more).
    bool go_to(const jet::RowId& bookmark);

    /// The columns of the table behind the set, in the file's order.
    const jet::TableSchema& schema() const { return table_.schema(); }

  private:
    enum class Pending { none, add, edit };

    bool on_deleted_row() const;
    bool is_empty() const { return live_rows_ == 0 && !on_deleted_row(); }
    jet::RowId current_row() const;
    const jet::RowReader& current_reader() const;
    std::size_t column(const std::string& name) const;
    /// Whether reading this column gives what was written under `AddNew` or `Edit`.
    bool is_pending(std::size_t column) const;
    std::ptrdiff_t size() const { return static_cast<std::ptrdiff_t>(rows_.size()); }

    jet::Row new_row() const;
    void begin(Pending pending, jet::Row buffer);
    void drop_pending();
    void require_writable() const;
    /// Goes on from `from` in steps of 1 or -1 to a row that this set has not deleted, or off the end.
    void settle(std::ptrdiff_t from, std::ptrdiff_t step);

    Database& database_;
    jet::Table& table_;
    std::vector<jet::RowId> rows_;
    /// Rows that this set deleted keep their place.
    std::vector<bool> deleted_;
    std::size_t live_rows_;
    /// How many rows the query gave; those behind were added through this set.
    std::size_t first_added_;
    /// -1 ahead of the first row, size() behind the last.
    std::ptrdiff_t position_ = 0;
    std::size_t visited_ = 0;

    Pending pending_ = Pending::none;
    /// Of an edit only what was written; the rest of the row stays where it is until `Update`.
    jet::Row buffer_;
    std::vector<bool> written_;

    /// Names as they were asked for, since a walk asks for the same ones on each row.
    mutable std::unordered_map<std::string, std::size_t> columns_;
    /// What was read by place, kept so that its room is used again.
    mutable jet::Row values_;

    /// A reader on the current row, good until a move or a change of the store.
    mutable std::unique_ptr<jet::RowSeeker> reader_;
    mutable bool reader_is_here_ = false;
    mutable std::size_t reader_age_ = 0;
};

} // namespace tolva::dao
