#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "jet/database.h"
#include "jet/table.h"

namespace tolva::sql {

struct Expression;

/// A query text, taken apart: "select * from [table] where ... order by a, b desc". Key words, names and
/// text comparisons ignore letter case; a column list in place of the asterisk is allowed.
struct Select {
    struct OrderPart {
        std::string column;
        bool descending = false;
    };

    std::string text;
    /// Empty for the asterisk.
    std::vector<std::string> columns;
    std::string table;
    std::shared_ptr<const Expression> where;
    std::vector<OrderPart> order;
};

/// Error 3075, naming the condition that cannot be read, or another of the engine's syntax errors: 3067,
/// 3085, 3126, 3129, 3131, 3138, 3141, 3142, 3360.
Select parse(std::string_view text, int current_year);

/// The rows that the query selects, in its order; without an order by page and slot. Rows that the order
/// leaves equal stay in page and slot order. Null sorts first. Error 3061 when a name is no column of the
/// table, 3464 when a comparison mixes kinds that the engine does not, 93 for a faulty pattern, 6 and 11 of
/// arithmetic. `table` is the one that the query names. A condition may name the `optional` columns of a
/// table that lacks them: there they are null in every row.
std::vector<jet::RowId> run(const Select& select, const jet::Table& table,
                            std::span<const std::string> optional = {});

} // namespace tolva::sql
