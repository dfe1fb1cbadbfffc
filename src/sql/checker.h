#pragma once

#include <span>
#include <string>
#include <vector>

#include "jet/table.h"
#include "sql/condition.h"
#include "sql/row_values.h"

namespace tolva::sql {

/// Looks the names of a query up in a table and sees to it that the kinds of its values fit together.
class Checker {
  public:
    Checker(const jet::Table& table, RowValues& values, std::span<const std::string> optional = {})
        : table_(table), values_(values), optional_(optional) {}

    /// An expression over the table's columns, in which an optional one that the table lacks is null. Names
    /// that are none are noted; nothing may be evaluated, nor `check` be called, before `require_names` has
    /// passed.
    Condition bind(const Expression& expression);
    /// A column by its name alone; its slot and place. Noted when it is none.
    Condition bind_column(const std::string& qualifier, const std::string& name);

    /// Error 3061, with their count, when names were no columns of the table: the engine takes such a name
    /// for a parameter that nobody gave.
    void require_names() const;

    /// Gives each part of a condition on rows its kind. Error 3464 where kinds do not fit, 93 for a faulty
    /// pattern.
    void check(Condition& condition) const;

  private:
    /// Whether the table lacks an optional column.
    bool is_absent(const Expression& column) const;
    void give_kind(Condition& condition) const;
    void note_unknown(const std::string& name);

    const jet::Table& table_;
    RowValues& values_;
    std::span<const std::string> optional_;
    std::vector<std::string> unknown_;
};

} // namespace tolva::sql
