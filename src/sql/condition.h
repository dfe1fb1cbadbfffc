#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sql/expression.h"
#include "sql/like_pattern.h"
#include "sql/row_values.h"

namespace tolva::sql {

/// What the engine tells apart when values meet: yes/no, numbers and dates compare with one another as
/// numbers, texts with texts alone, and bytes with nothing.
enum class Kind { null, yes_no, number, date, text, bytes };

inline bool is_numeric(Kind kind) {
    return kind == Kind::yes_no || kind == Kind::number || kind == Kind::date;
}

/// A value under evaluation. Its text belongs to the row, the condition or the evaluator.
struct Scalar {
    Kind kind = Kind::null;
    double number = 0;
    std::string_view text;
};

/// An expression whose names are columns of a table and whose kinds fit together.
struct Condition {
    Operator op = Operator::literal;
    /// What evaluation gives when it gives no null.
    Kind kind = Kind::null;
    jet::Value literal;
    /// Of a column: its place in RowValues, and in the table.
    std::size_t slot = 0, column = 0;
    /// Of a like whose pattern is a literal.
    std::optional<LikePattern> pattern;
    std::vector<Condition> operands;
};

/// Evaluates conditions on rows, with the three truths of the query language.
class Evaluator {
  public:
    /// `text_order` is the one of the table's file.
    Evaluator(RowValues& row, jet::TextOrder text_order) : row_(row), text_order_(text_order) {}

    /// Whether the condition is true; neither false nor null is. Errors 6, 11 and 3464 of arithmetic, 93 of a
    /// pattern that a row holds.
    bool selects(const Condition& condition);

  private:
    enum class Truth { no, yes, unknown };

    bool is_true(const Condition& condition);
    Truth truth(const Condition& condition);
    Truth compare(Operator op, const Scalar& left, const Scalar& right);
    Truth like(const Condition& condition);
    Truth between(const Condition& condition);
    Truth in(const Condition& condition);

    Scalar value(const Condition& condition);
    Scalar arithmetic(const Condition& condition);
    Scalar concatenation(const Condition& condition);

    /// A value's text form; numbers and dates as the language writes them.
    std::string_view text_of(const Scalar& scalar);
    std::string_view keep(std::string text);

    int order_of(const Scalar& left, const Scalar& right) const;

    RowValues& row_;
    jet::TextOrder text_order_;
    /// Texts that evaluation made for the row at hand.
    std::deque<std::string> made_;
};

} // namespace tolva::sql
