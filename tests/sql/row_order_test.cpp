#include "sql/row_order.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/memory_table.h"

namespace tolva::sql {
namespace {

using jet::Value;

/// The values of one column as an order sorts them.
std::vector<Value> sorted(jet::ColumnType type, const std::vector<Value>& values, bool descending = false) {
    jet::TableSchema schema;
    schema.columns = {{"column", type, 255}};
    support::MemoryTable table(schema, 3);
    for (const Value& value : values)
        table.insert({value});

    RowValues row;
    RowOrder order({{row.add_column(0), descending}}, row, jet::TextOrder::general_jet4);
    const auto cursor = table.scan();
    while (cursor->next()) {
        row.go_to(*cursor);
        order.add(cursor->id());
    }
    std::vector<Value> result;
    for (const jet::RowId id : order.sorted())
        result.push_back(table.read(id)[0]);
    return result;
}

/// Sorts the values from their reverse and expects them back, then the same downwards.
void expect_ascending(jet::ColumnType type, const std::vector<Value>& values) {
    const std::vector<Value> reversed(values.rbegin(), values.rend());
    EXPECT_EQ(sorted(type, reversed), values);
    EXPECT_EQ(sorted(type, values, true), reversed);
}

Value text(const char* content) {
    return std::string(content);
}

TEST(RowOrder, SortsNumbersBySizeWithNullFirst) {
    expect_ascending(jet::ColumnType::long_integer,
                     {Value(), std::int64_t{-2147483648}, std::int64_t{-1}, std::int64_t{0},
                      std::int64_t{255}, std::int64_t{256}, std::int64_t{2147483647}});
    expect_ascending(jet::ColumnType::double_real,
                     {Value(), -std::numeric_limits<double>::infinity(), -1e300, -1.5, -1e-300, 0.0, 1e-300,
                      0.1, 2.0, 1e300, std::numeric_limits<double>::infinity()});
    expect_ascending(jet::ColumnType::currency, {Value(), jet::Currency{-10001}, jet::Currency{-1},
                                                 jet::Currency{0}, jet::Currency{99999}});
    expect_ascending(jet::ColumnType::numeric,
                     {jet::Decimal{true, {15, 0, 0}, 1}, jet::Decimal{false, {14, 0, 0}, 1},
                      jet::Decimal{false, {2, 0, 0}, 0}});
}

TEST(RowOrder, SortsDatesAsRawNumbers) {
    expect_ascending(jet::ColumnType::date, {Value(), basic::Date{-2.0}, basic::Date{-1.75},
                                             basic::Date{-1.25}, basic::Date{0.25}, basic::Date{46347.0}});
}

TEST(RowOrder, SortsYesAheadOfNo) {
    expect_ascending(jet::ColumnType::boolean, {true, false});
}

TEST(RowOrder, SortsTextsByTheTextOrder) {
    expect_ascending(jet::ColumnType::text, {Value(), text(""), text("Adam"), text("adams"), text("Muller"),
                                             text("M\u00fcller"), text("mullers"), text("zoe")});
    const std::vector<Value> equal = {text("b"), text("B "), text("b  ")};
    EXPECT_EQ(sorted(jet::ColumnType::text, equal), equal) << "equal ones keep their order";
    EXPECT_EQ(sorted(jet::ColumnType::text, equal, true), equal);
}

TEST(RowOrder, ALongTextCountsWithItsStart) {
    const std::string start(255, 'x');
    const std::vector<Value> equal = {start + "b", start + "a"};
    EXPECT_EQ(sorted(jet::ColumnType::memo, equal), equal);
}

TEST(RowOrder, SortsBytesByTheirStart) {
    expect_ascending(jet::ColumnType::binary, {Value(), jet::Bytes{}, jet::Bytes{0}, jet::Bytes{0, 0},
                                               jet::Bytes{1}, jet::Bytes{1, 0}, jet::Bytes{255}});
}

TEST(RowOrder, ANegativeZeroIsAZero) {
    const std::vector<Value> result = sorted(jet::ColumnType::double_real, {0.0, -0.0, 0.0});
    EXPECT_FALSE(std::signbit(std::get<double>(result[0])));
    EXPECT_TRUE(std::signbit(std::get<double>(result[1]))) << "equal ones keep their order";
}

} // namespace
} // namespace tolva::sql
