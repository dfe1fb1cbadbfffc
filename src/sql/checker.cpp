#include "sql/checker.h"

#include <algorithm>

#include "basic/run_time_error.h"
#include "basic/text.h"

namespace tolva::sql {

namespace {

Kind kind_of(jet::ColumnType type) {
    switch (type) {
    case jet::ColumnType::boolean:
        return Kind::yes_no;
    case jet::ColumnType::date:
        return Kind::date;
    case jet::ColumnType::text:
    case jet::ColumnType::memo:
        return Kind::text;
    case jet::ColumnType::binary:
    case jet::ColumnType::ole:
    case jet::ColumnType::guid:
        return Kind::bytes;
    default:
        return Kind::number;
    }
}

Kind kind_of(const jet::Value& literal) {
    if (std::holds_alternative<std::monostate>(literal))
        return Kind::null;
    if (std::holds_alternative<bool>(literal))
        return Kind::yes_no;
    if (std::holds_alternative<basic::Date>(literal))
        return Kind::date;
    if (std::holds_alternative<std::string>(literal))
        return Kind::text;
    return Kind::number;
}

void require(bool fits) {
    if (!fits)
        throw basic::RunTimeError(3464);
}

bool comparable(Kind a, Kind b) {
    if (a == Kind::null || b == Kind::null)
        return true;
    return is_numeric(a) ? is_numeric(b) : a == Kind::text && b == Kind::text;
}

/// A number that is not zero is true.
bool has_truth(Kind kind) {
    return is_numeric(kind) || kind == Kind::null;
}

/// A day and a number make a day, two days make a number.
Kind kind_of_sum(Operator op, Kind left, Kind right) {
    if (op == Operator::add && left == Kind::text && right == Kind::text)
        return Kind::text;
    const bool one_date = (left == Kind::date) != (right == Kind::date);
    return one_date && (op == Operator::add || op == Operator::subtract) ? Kind::date : Kind::number;
}

} // namespace

Condition Checker::bind(const Expression& expression) {
    if (expression.op == Operator::column && is_absent(expression))
        return {}; // the literal null
    if (expression.op == Operator::column)
        return bind_column(expression.qualifier, expression.name);
    Condition condition;
    condition.op = expression.op;
    condition.literal = expression.literal;
    for (const Expression& operand : expression.operands)
        condition.operands.push_back(bind(operand));
    return condition;
}

Condition Checker::bind_column(const std::string& qualifier, const std::string& name) {
    Condition condition;
    condition.op = Operator::column;
    const bool own_table = qualifier.empty() || basic::equal_names(qualifier, table_.schema().name);
    const auto column = own_table ? table_.find_column(name) : std::nullopt;
    if (column) {
        condition.column = *column;
        condition.slot = values_.add_column(*column);
    } else {
        note_unknown(qualifier.empty() ? name : qualifier + "." + name);
    }
    return condition;
}

bool Checker::is_absent(const Expression& column) const {
    const auto is_it = [&](const std::string& name) { return basic::equal_names(name, column.name); };
    return column.qualifier.empty() && std::any_of(optional_.begin(), optional_.end(), is_it) &&
           !table_.find_column(column.name);
}

void Checker::note_unknown(const std::string& name) {
    const bool noted = std::any_of(unknown_.begin(), unknown_.end(), [&name](const std::string& other) {
        return basic::equal_names(name, other);
    });
    if (!noted)
        unknown_.push_back(name);
}

void Checker::require_names() const {
    if (!unknown_.empty())
        throw basic::RunTimeError(3061, std::to_string(unknown_.size()));
}

void Checker::check(Condition& condition) const {
    give_kind(condition);
    require(has_truth(condition.kind));
}

void Checker::give_kind(Condition& condition) const {
    for (Condition& operand : condition.operands)
        give_kind(operand);
    const auto kind = [&condition](std::size_t operand) { return condition.operands[operand].kind; };

    switch (condition.op) {
    case Operator::literal:
        condition.kind = kind_of(condition.literal);
        return;
    case Operator::column:
        condition.kind = kind_of(table_.schema().columns[condition.column].type);
        return;
    case Operator::logical_and:
    case Operator::logical_or:
    case Operator::logical_not:
        for (const Condition& operand : condition.operands)
            require(has_truth(operand.kind));
        break;
    case Operator::is_null:
        break;
    case Operator::like:
        require(kind(0) != Kind::bytes && kind(1) != Kind::bytes);
        if (const Condition& pattern = condition.operands[1]; pattern.op == Operator::literal) {
            if (const auto* text = std::get_if<std::string>(&pattern.literal))
                condition.pattern.emplace(*text);
        }
        break;
    case Operator::negate:
        require(kind(0) != Kind::bytes);
        condition.kind = Kind::number;
        return;
    case Operator::add:
    case Operator::subtract:
    case Operator::multiply:
    case Operator::divide:
        require(kind(0) != Kind::bytes && kind(1) != Kind::bytes);
        condition.kind = kind_of_sum(condition.op, kind(0), kind(1));
        return;
    case Operator::concatenate:
        require(kind(0) != Kind::bytes && kind(1) != Kind::bytes);
        condition.kind = Kind::text;
        return;
    default: // the comparisons, between and in: the first operand meets each of the others
        for (std::size_t i = 1; i < condition.operands.size(); ++i)
            require(comparable(kind(0), kind(i)));
        break;
    }
    condition.kind = Kind::yes_no;
}

} // namespace tolva::sql
