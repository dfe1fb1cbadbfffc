#include <cmath>
#include <limits>
#include <memory>
#include <optional>

#include "sql/checker.h"
#include "sql/key_filter.h"
#include "sql/row_order.h"
#include "sql/select.h"

namespace tolva::sql {

namespace {

/// The number as a column of this type stores it, when it can hold exactly this value. None for a real zero:
/// a negative one equals it and has another key.
std::optional<jet::Value> stored_number(jet::ColumnType type, const jet::Value& literal) {
    if (const auto* date = std::get_if<basic::Date>(&literal)) {
        if (type == jet::ColumnType::date && date->days != 0)
            return *date;
        return std::nullopt;
    }
    const auto* number = std::get_if<double>(&literal);
    if (number == nullptr)
        return std::nullopt;
    const auto whole_within = [number](double lowest, double highest) -> std::optional<jet::Value> {
        if (*number != std::floor(*number) || *number < lowest || *number > highest)
            return std::nullopt;
        return static_cast<std::int64_t>(*number);
    };
    switch (type) {
    case jet::ColumnType::byte:
        return whole_within(0, 255);
    case jet::ColumnType::integer:
        return whole_within(std::numeric_limits<std::int16_t>::min(),
                            std::numeric_limits<std::int16_t>::max());
    case jet::ColumnType::long_integer:
        return whole_within(std::numeric_limits<std::int32_t>::min(),
                            std::numeric_limits<std::int32_t>::max());
    case jet::ColumnType::double_real:
        if (*number != 0)
            return *number;
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

/// The position of an index that starts with this column.
std::optional<std::size_t> find_index(const jet::Table& table, std::size_t column) {
    const auto& indexes = table.schema().indexes;
    for (std::size_t i = 0; i < indexes.size(); ++i)
        if (!indexes[i].parts.empty() && table.find_column(indexes[i].parts[0].column) == column)
            return i;
    return std::nullopt;
}

/// The only rows that can meet the condition, when it demands "column = value" of a column with an index.
std::optional<std::vector<jet::RowId>> find_equal(const Condition& condition, const jet::Table& table) {
    if (condition.op == Operator::logical_and) {
        for (const Condition& operand : condition.operands)
            if (auto rows = find_equal(operand, table))
                return rows;
        return std::nullopt;
    }
    if (condition.op != Operator::equal)
        return std::nullopt;
    const Condition* column = &condition.operands[0];
    const Condition* literal = &condition.operands[1];
    if (column->op != Operator::column)
        std::swap(column, literal);
    if (column->op != Operator::column || literal->op != Operator::literal)
        return std::nullopt;

    const auto index = find_index(table, column->column);
    if (!index)
        return std::nullopt;
    const auto value = stored_number(table.schema().columns[column->column].type, literal->literal);
    if (!value)
        return std::nullopt;
    return table.find(*index, std::span<const jet::Value>(&*value, 1));
}

/// The only rows that can meet the condition, when the keys of an index tell which can't.
std::optional<std::vector<jet::RowId>> find_possible(const Condition& condition, const jet::Table& table) {
    for (std::size_t index = 0; index < table.schema().indexes.size(); ++index)
        if (const auto filter = KeyFilter::make(condition, table, index))
            return table.find_by_key(index, *filter);
    return std::nullopt;
}

/// Shows each row that may be selected to `visit`, in page and slot order.
template <typename Visit>
void visit_rows(const std::optional<Condition>& where, const jet::Table& table, Visit visit) {
    if (where) {
        auto rows = find_equal(*where, table);
        if (!rows)
            rows = find_possible(*where, table);
        if (rows) {
            std::unique_ptr<jet::RowSeeker> reader;
            for (std::size_t place = 0; place < rows->size(); ++place) {
                const jet::RowId id = (*rows)[place];
                table.expect(std::span(*rows).subspan(place + 1));
                if (reader)
                    reader->go_to(id);
                else
                    reader = table.reader(id);
                visit(*reader, id);
            }
            return;
        }
    }
    const auto cursor = table.scan();
    while (cursor->next())
        visit(*cursor, cursor->id());
}

} // namespace

std::vector<jet::RowId> run(const Select& select, const jet::Table& table,
                            std::span<const std::string> optional) {
    RowValues row;
    Checker checker(table, row, optional);
    std::optional<Condition> where;
    if (select.where)
        where = checker.bind(*select.where);
    for (const std::string& column : select.columns)
        checker.bind_column({}, column);
    std::vector<RowOrder::Part> parts;
    for (const Select::OrderPart& part : select.order)
        parts.push_back({checker.bind_column({}, part.column).slot, part.descending});
    checker.require_names();
    if (where)
        checker.check(*where);

    Evaluator evaluator(row, table.schema().text_order);
    RowOrder order(parts, row, table.schema().text_order);
    std::vector<jet::RowId> rows;
    visit_rows(where, table, [&](const jet::RowReader& reader, jet::RowId id) {
        row.go_to(reader);
        if (where && !evaluator.selects(*where))
            return;
        if (parts.empty())
            rows.push_back(id);
        else
            order.add(id);
    });
    return parts.empty() ? rows : order.sorted();
}

} // namespace tolva::sql
