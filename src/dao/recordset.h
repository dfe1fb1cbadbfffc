#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "jet/table.h"

namespace tolva::dao {

class Database;

/// What a field holds, with the conversions that the logic uses. They fail as the language's own do: null
/// gives error 94, text that is no number, date or yes/no gives 13.
class FieldValue {
  public:
    FieldValue() = default;
    explicit FieldValue(jet::Value value) : value_(std::move(value)) {}

    bool is_null() const { return jet::is_null(value_); }
    const jet::Value& raw() const { return value_; }

    /// The string form: dates in the platform's short form, numbers up to 15 digits, yes/no "True"/"False".
    std::string text() const;
    /// A yes is -1; text goes through the strict conversion.
    double number() const;
    bool yes_no() const;
    basic::Date date() const;

    /// Null and "" alike: how the screens test for an empty field.
    bool is_null_or_empty() const;

  private:
    jet::Value value_;
};

/// The rows that a table or a query gave when it was opened, and a position among them. Which rows belong to
/// the set is fixed then; what they hold is read anew each time. Order of effects:
/// - `AddNew` and `Edit` touch nothing until `Update`; any move drops what they had begun.
/// - After `AddNew`, writes and `Update` the new row stands at the end of the set, whatever its order, and the
///   row that was current before is current again.
/// - `Delete` acts at once; the position stays on the deleted row, which reads as no record until a move.
/// - A value is converted to its column's type as it is written (3421 when it cannot be), and tested for
///   width (3163), required (3314) and zero length (3315) at the latest by `Update`.
class Recordset {
  public:
    Recordset(Database& database, jet::Table& table, std::vector<jet::RowId> rows);
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    bool Eof() const;
    bool Bof() const;

    /// 0 for an empty set; else the rows visited so far, and the whole count after `MoveLast`.
    long RecordCount() const;

    /// Reading the row under `AddNew` or `Edit` gives what was written to it. 3021 without a current row,
    /// 3265 for an unknown name, 3167 when the row was deleted through another set.
    FieldValue field(const std::string& name) const;

    /// Writing needs `AddNew` or `Edit` (3020). Text, numbers, dates, yes/no and null.
    void write(const std::string& name, const jet::Value& value);

    void AddNew();
    void Edit();
    void Update();
    void Delete();

    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();

    /// The columns of the table behind the set, in the file's order.
    const jet::TableSchema& schema() const { return table_.schema(); }

  private:
    enum class Pending { none, add, edit };

    const jet::RowId& current_row() const;
    std::size_t column(const std::string& name) const;
    void drop_pending();

    Database& database_;
    jet::Table& table_;
    std::vector<jet::RowId> rows_;
    std::vector<bool> deleted_;
    /// -1 ahead of the first row, rows_.size() behind the last.
    std::ptrdiff_t position_ = 0;
    std::size_t visited_ = 0;
    Pending pending_ = Pending::none;
    jet::Row buffer_;
};

} // namespace tolva::dao
