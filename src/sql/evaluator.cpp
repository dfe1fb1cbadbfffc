#include <algorithm>
#include <cmath>
#include <utility>

#include "basic/number.h"
#include "basic/run_time_error.h"
#include "jet/text_order.h"
#include "sql/condition.h"
#include "sql/conversion.h"

namespace tolva::sql {

namespace {

struct ScalarOf {
    Scalar operator()(std::monostate) const { return {}; }
    Scalar operator()(bool value) const { return {Kind::yes_no, value ? -1.0 : 0.0, {}}; }
    Scalar operator()(std::int64_t value) const { return {Kind::number, static_cast<double>(value), {}}; }
    Scalar operator()(double value) const { return {Kind::number, value, {}}; }
    Scalar operator()(jet::Currency value) const { return {Kind::number, to_double(value), {}}; }
    Scalar operator()(const jet::Decimal& value) const { return {Kind::number, to_double(value), {}}; }
    Scalar operator()(basic::Date value) const { return {Kind::date, value.days, {}}; }
    Scalar operator()(const std::string& value) const { return {Kind::text, 0, value}; }
    Scalar operator()(const jet::Bytes&) const { return {Kind::bytes, 0, {}}; }
};

double number_of(const Scalar& scalar) {
    if (scalar.kind != Kind::text)
        return scalar.number;
    const auto number = basic::strict_number(scalar.text);
    if (!number)
        throw basic::RunTimeError(3464);
    return *number;
}

bool holds(Operator op, int order) {
    switch (op) {
    case Operator::equal:
        return order == 0;
    case Operator::not_equal:
        return order != 0;
    case Operator::less:
        return order < 0;
    case Operator::less_equal:
        return order <= 0;
    case Operator::greater:
        return order > 0;
    default:
        return order >= 0;
    }
}

} // namespace

bool Evaluator::selects(const Condition& condition) {
    made_.clear();
    return is_true(condition);
}

/// Where only the truth counts, null is as good as false, so a part that is null ends an "and" early.
bool Evaluator::is_true(const Condition& condition) {
    const auto part_is_true = [this](const Condition& part) { return is_true(part); };
    const auto& parts = condition.operands;
    if (condition.op == Operator::logical_and)
        return std::all_of(parts.begin(), parts.end(), part_is_true);
    if (condition.op == Operator::logical_or)
        return std::any_of(parts.begin(), parts.end(), part_is_true);
    return truth(condition) == Truth::yes;
}

Evaluator::Truth Evaluator::truth(const Condition& condition) {
    switch (condition.op) {
    case Operator::logical_and:
    case Operator::logical_or: {
        const Truth deciding = condition.op == Operator::logical_and ? Truth::no : Truth::yes;
        Truth result = deciding == Truth::no ? Truth::yes : Truth::no;
        for (const Condition& operand : condition.operands) {
            const Truth part = truth(operand);
            if (part == deciding)
                return deciding;
            if (part == Truth::unknown)
                result = Truth::unknown;
        }
        return result;
    }
    case Operator::logical_not: {
        const Truth inner = truth(condition.operands[0]);
        if (inner == Truth::unknown)
            return inner;
        return inner == Truth::yes ? Truth::no : Truth::yes;
    }
    case Operator::equal:
    case Operator::not_equal:
    case Operator::less:
    case Operator::less_equal:
    case Operator::greater:
    case Operator::greater_equal: {
        const Scalar left = value(condition.operands[0]);
        if (left.kind == Kind::null)
            return Truth::unknown;
        return compare(condition.op, left, value(condition.operands[1]));
    }
    case Operator::like:
        return like(condition);
    case Operator::between:
        return between(condition);
    case Operator::in:
        return in(condition);
    case Operator::is_null:
        return value(condition.operands[0]).kind == Kind::null ? Truth::yes : Truth::no;
    default: {
        const Scalar scalar = value(condition);
        if (scalar.kind == Kind::null)
            return Truth::unknown;
        return scalar.number != 0 ? Truth::yes : Truth::no;
    }
    }
}

int Evaluator::order_of(const Scalar& left, const Scalar& right) const {
    if (left.kind == Kind::text) {
        const auto order = jet::compare_text(left.text, right.text, text_order_);
        return order < 0 ? -1 : order > 0 ? 1 : 0;
    }
    return left.number < right.number ? -1 : left.number > right.number ? 1 : 0;
}

Evaluator::Truth Evaluator::compare(Operator op, const Scalar& left, const Scalar& right) {
    if (left.kind == Kind::null || right.kind == Kind::null)
        return Truth::unknown;
    return holds(op, order_of(left, right)) ? Truth::yes : Truth::no;
}

Evaluator::Truth Evaluator::like(const Condition& condition) {
    const Scalar text = value(condition.operands[0]);
    if (text.kind == Kind::null)
        return Truth::unknown;
    bool matches = false;
    if (condition.pattern) {
        matches = condition.pattern->matches(text_of(text));
    } else {
        const Scalar pattern = value(condition.operands[1]);
        if (pattern.kind == Kind::null)
            return Truth::unknown;
        matches = LikePattern(text_of(pattern)).matches(text_of(text));
    }
    return matches ? Truth::yes : Truth::no;
}

Evaluator::Truth Evaluator::between(const Condition& condition) {
    const Scalar middle = value(condition.operands[0]);
    const Truth above = compare(Operator::greater_equal, middle, value(condition.operands[1]));
    const Truth below = compare(Operator::less_equal, middle, value(condition.operands[2]));
    if (above == Truth::no || below == Truth::no)
        return Truth::no;
    return above == Truth::yes && below == Truth::yes ? Truth::yes : Truth::unknown;
}

Evaluator::Truth Evaluator::in(const Condition& condition) {
    const Scalar wanted = value(condition.operands[0]);
    Truth result = Truth::no;
    for (std::size_t i = 1; i < condition.operands.size(); ++i) {
        const Truth same = compare(Operator::equal, wanted, value(condition.operands[i]));
        if (same == Truth::yes)
            return same;
        if (same == Truth::unknown)
            result = same;
    }
    return result;
}

Scalar Evaluator::value(const Condition& condition) {
    switch (condition.op) {
    case Operator::literal:
        return std::visit(ScalarOf{}, condition.literal);
    case Operator::column:
        return std::visit(ScalarOf{}, row_.at(condition.slot));
    case Operator::negate:
    case Operator::add:
    case Operator::subtract:
    case Operator::multiply:
    case Operator::divide:
        return arithmetic(condition);
    case Operator::concatenate:
        return concatenation(condition);
    default: {
        const Truth result = truth(condition);
        if (result == Truth::unknown)
            return {};
        return {Kind::yes_no, result == Truth::yes ? -1.0 : 0.0, {}};
    }
    }
}

Scalar Evaluator::arithmetic(const Condition& condition) {
    const Scalar left = value(condition.operands[0]);
    if (left.kind == Kind::null)
        return {};
    if (condition.op == Operator::negate)
        return {condition.kind, -number_of(left), {}};
    const Scalar right = value(condition.operands[1]);
    if (right.kind == Kind::null)
        return {};
    if (condition.op == Operator::add && condition.kind == Kind::text)
        return {Kind::text, 0, keep(std::string(left.text) + std::string(right.text))};

    const double a = number_of(left), b = number_of(right);
    double result = 0;
    switch (condition.op) {
    case Operator::add:
        result = a + b;
        break;
    case Operator::subtract:
        result = a - b;
        break;
    case Operator::multiply:
        result = a * b;
        break;
    default:
        if (b == 0)
            throw basic::RunTimeError(11);
        result = a / b;
        break;
    }
    if (!std::isfinite(result))
        throw basic::RunTimeError(6);
    return {condition.kind, result, {}};
}

Scalar Evaluator::concatenation(const Condition& condition) {
    const Scalar left = value(condition.operands[0]);
    const Scalar right = value(condition.operands[1]);
    if (left.kind == Kind::null && right.kind == Kind::null)
        return {};
    return {Kind::text, 0, keep(std::string(text_of(left)) + std::string(text_of(right)))};
}

std::string_view Evaluator::text_of(const Scalar& scalar) {
    switch (scalar.kind) {
    case Kind::text:
        return scalar.text;
    case Kind::yes_no:
    case Kind::number:
        return keep(basic::number_to_text(scalar.number));
    case Kind::date:
        return keep(basic::date_to_text({scalar.number}));
    default:
        return {};
    }
}

std::string_view Evaluator::keep(std::string text) {
    return made_.emplace_back(std::move(text));
}

} // namespace tolva::sql
