#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "jet/value.h"

namespace tolva::sql {

enum class Operator {
    literal,
    column,
    logical_or,  ///< two operands or more
    logical_and, ///< two operands or more
    logical_not,
    equal,
    not_equal,
    less,
    less_equal,
    greater,
    greater_equal,
    like,    ///< value, pattern
    between, ///< value, lower bound, upper bound; both belong
    in,      ///< value, then the list
    is_null,
    negate,
    add,
    subtract,
    multiply,
    divide,
    concatenate,
};

/// A condition or a value as the query text writes it, its names not yet looked up.
struct Expression {
    Operator op = Operator::literal;
    /// Of a literal: null, a number (double), a date, a text, or a yes/no.
    jet::Value literal;
    /// Of a column; the table's name ahead of it, if written.
    std::string qualifier, name;
    std::vector<Expression> operands;
};

} // namespace tolva::sql
