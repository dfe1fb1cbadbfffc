#include "sql/select.h"

#include <gtest/gtest.h>

#include "support/errors.h"
#include "support/memory_table.h"

namespace tolva::sql {
namespace {

using jet::ColumnType;
using support::MemoryTable;

constexpr jet::Value null = std::monostate();

jet::TableSchema people_schema() {
    jet::TableSchema schema;
    schema.name = "table";
    schema.columns = {{"id", ColumnType::long_integer}, {"Last", ColumnType::text, 50},
                      {"first", ColumnType::text, 50},  {"city", ColumnType::text, 50},
                      {"born", ColumnType::date},       {"price", ColumnType::double_real},
                      {"done", ColumnType::boolean},    {"squarefeet", ColumnType::text, 10},
                      {"notes", ColumnType::memo},      {"paid", ColumnType::currency},
                      {"photo", ColumnType::ole}};
    schema.indexes = {{"by_id", {{"id", false}}, false, false, false, false}};
    return schema;
}

jet::Row person(int id, jet::Value last, jet::Value first, jet::Value city, jet::Value born = null,
                jet::Value price = null, bool done = false) {
    return {std::int64_t{id},
            std::move(last),
            std::move(first),
            std::move(city),
            std::move(born),
            std::move(price),
            done,
            std::string("1500"),
            null,
            jet::Currency{15000},
            null};
}

jet::Value text(const char* content) {
    return std::string(content);
}

class Query : public ::testing::Test {
  protected:
    Query() : table(people_schema(), 2) {
        table.insert(
            person(1, text("Smith"), text("Zoe"), text("Boise"), basic::make_date(1970, 3, 7), 100.0, true));
        table.insert(
            person(2, text("smith"), text("Adam"), text("Nampa"), basic::make_date(1850, 1, 1), 250.5));
        table.insert(person(3, text("Goldsmith"), text("Bea"), null, null, null));
        table.insert(
            person(4, text("M\u00fcller"), text(""), text("BOISE "), basic::make_date(1999, 12, 31), -5.0));
        table.insert(person(5, null, text("Nobody"), text("Boise City"), null, 250.5));
        table.insert(person(6, text("Muller"), text("Eve"), text("boise"),
                            basic::make_moment({2026, 3, 7, 8, 30, 0}), 0.0));
    }

    std::vector<std::int64_t> ids(const std::string& rest) {
        std::vector<std::int64_t> result;
        for (const jet::RowId id : run(parse("select * from [table] " + rest, 2026), table))
            result.push_back(std::get<std::int64_t>(table.read(id)[0]));
        return result;
    }
    std::vector<std::int64_t> where(const std::string& condition) { return ids("where " + condition); }

    std::string failure(const std::string& rest) {
        return support::error_text([&] { ids(rest); });
    }
    int failure_number(const std::string& rest) {
        return support::error_number([&] { ids(rest); });
    }

    MemoryTable table;
};

using Ids = std::vector<std::int64_t>;

TEST_F(Query, WithoutAnOrderRowsComeByPageAndSlot) {
    EXPECT_EQ(ids(""), (Ids{1, 2, 3, 4, 5, 6}));
}

TEST_F(Query, ComparesNumbers) {
    EXPECT_EQ(where("id = 2"), (Ids{2}));
    EXPECT_EQ(where("id <> 2"), (Ids{1, 3, 4, 5, 6}));
    EXPECT_EQ(where("price >= 100"), (Ids{1, 2, 5}));
    EXPECT_EQ(where("price = 250.5"), (Ids{2, 5}));
    EXPECT_EQ(where("price<0"), (Ids{4}));
    EXPECT_EQ(where("price > -6 and price <= 0"), (Ids{4, 6}));
    EXPECT_EQ(where("paid = 1.5"), (Ids{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(where("7 > id and 4 < id"), (Ids{5, 6}));
}

TEST_F(Query, ComparesTextWithoutCaseAndTrailingBlanksButWithAccents) {
    EXPECT_EQ(where("last = 'SMITH'"), (Ids{1, 2}));
    EXPECT_EQ(where("city = 'boise'"), (Ids{1, 4, 6}));
    EXPECT_EQ(where("last = 'muller'"), (Ids{6}));
    EXPECT_EQ(where("last = 'm\u00dcller'"), (Ids{4}));
    EXPECT_EQ(where("last < 'muller'"), (Ids{3}));
    EXPECT_EQ(where("last >= 'smith'"), (Ids{1, 2}));
    EXPECT_EQ(where("last < first"), (Ids{1}));
}

TEST_F(Query, ComparesDatesAsRawNumbers) {
    EXPECT_EQ(where("born > #1/1/1800#"), (Ids{1, 2, 4, 6}));
    EXPECT_EQ(where("born = #3/7/2026#"), (Ids{})) << "the time of day counts";
    EXPECT_EQ(where("born >= #3/7/2026# and born < #3/8/2026#"), (Ids{6}));
    EXPECT_EQ(where("born - #3/7/2026# < 1 and born > #1/1/2026#"), (Ids{6}));
    EXPECT_EQ(where("born = #3/7/2026 8:30:00 AM#"), (Ids{6}));
    EXPECT_EQ(where("born < 0"), (Ids{2})) << "a date is a number of days";
}

TEST_F(Query, NoComparisonWithNullIsTrueNorIsItsOpposite) {
    EXPECT_EQ(where("last = null"), (Ids{}));
    EXPECT_EQ(where("last <> null"), (Ids{}));
    EXPECT_EQ(where("not last = null"), (Ids{}));
    EXPECT_EQ(where("last like null"), (Ids{}));
    EXPECT_EQ(where("last = 'smith' or last <> 'smith'"), (Ids{1, 2, 3, 4, 6}));
    EXPECT_EQ(where("not (last like '*smi*')"), (Ids{4, 6}));
    EXPECT_EQ(where("price = price"), (Ids{1, 2, 4, 5, 6}));
}

TEST_F(Query, NullIsDecidedByTheOtherSideOfAndAndOr) {
    EXPECT_EQ(where("last = null or id = 1"), (Ids{1}));
    EXPECT_EQ(where("not (last = null and id = 1)"), (Ids{2, 3, 4, 5, 6}));
    EXPECT_EQ(where("not (last = null or id = 1)"), (Ids{}));
    EXPECT_EQ(where("not (id = 1 and last = null)"), (Ids{2, 3, 4, 5, 6}));
    EXPECT_EQ(where("(id = 1 or last = null) is null"), (Ids{2, 3, 4, 5, 6}));
}

TEST_F(Query, IsNullAndIsNotNull) {
    EXPECT_EQ(where("city is null"), (Ids{3}));
    EXPECT_EQ(where("city is not null and born is null"), (Ids{5}));
    EXPECT_EQ(where("first = ''"), (Ids{4})) << "an empty text is no null";
}

TEST_F(Query, LikeLooksAtNoNull) {
    EXPECT_EQ(where("last like '*SMI*'"), (Ids{1, 2, 3}));
    EXPECT_EQ(where("city like '**'"), (Ids{1, 2, 4, 5, 6}));
    EXPECT_EQ(where("last not like '*smi*'"), (Ids{4, 6}));
    EXPECT_EQ(where("last like '*' & first & '*'"), (Ids{4})) << "a pattern from the row";
    EXPECT_EQ(where("first like '[!a-y]?e'"), (Ids{1}));
}

TEST_F(Query, LikeReadsNumbersAndDatesAsText) {
    EXPECT_EQ(where("price like '2##.5'"), (Ids{2, 5}));
    EXPECT_EQ(where("born like '3/7/*'"), (Ids{1, 6}));
    EXPECT_EQ(where("id like 4"), (Ids{4}));
}

TEST_F(Query, YesIsMinusOne) {
    EXPECT_EQ(where("done = true"), (Ids{1}));
    EXPECT_EQ(where("done = false and id < 4"), (Ids{2, 3}));
    EXPECT_EQ(where("done = -1"), (Ids{1}));
    EXPECT_EQ(where("done"), (Ids{1}));
    EXPECT_EQ(where("not done and id > 4"), (Ids{5, 6}));
    EXPECT_EQ(where("(id = 3) = -1"), (Ids{3}));
    EXPECT_EQ(where("done & '' = '-1'"), (Ids{1}));
}

TEST_F(Query, BetweenHoldsBothBounds) {
    EXPECT_EQ(where("id between 2 and 4"), (Ids{2, 3, 4}));
    EXPECT_EQ(where("id not between 2 and 4"), (Ids{1, 5, 6}));
    EXPECT_EQ(where("id between 4 and 2"), (Ids{}));
    EXPECT_EQ(where("born between #1/1/1900# and #12/31/1999#"), (Ids{1, 4}));
    EXPECT_EQ(where("not (id between 4 and null)"), (Ids{1, 2, 3})) << "below a bound is decided already";
    EXPECT_EQ(where("last between 'g' and 'mz'"), (Ids{3, 4, 6}));
}

TEST_F(Query, InLooksThroughAList) {
    EXPECT_EQ(where("id in (5, 1, 9)"), (Ids{1, 5}));
    EXPECT_EQ(where("last in ('SMITH')"), (Ids{1, 2}));
    EXPECT_EQ(where("id not in (1, 2, 3)"), (Ids{4, 5, 6}));
    EXPECT_EQ(where("id not in (1, null)"), (Ids{}));
    EXPECT_EQ(where("id in (1, null)"), (Ids{1}));
}

TEST_F(Query, ArithmeticHandsNullOn) {
    EXPECT_EQ(where("price + 1 = 101"), (Ids{1}));
    EXPECT_EQ(where("price * 2 - 1 = 500"), (Ids{2, 5}));
    EXPECT_EQ(where("(price + null) is null"), (Ids{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(where("-price = 5"), (Ids{4}));
    EXPECT_EQ(where("2 + 3 * 4 - 6 / 2 = id + 5"), (Ids{6}));
    EXPECT_EQ(where("first + last = 'ZoeSmith'"), (Ids{1}));
    EXPECT_EQ(where("(first + last) is null"), (Ids{5}));
    EXPECT_EQ(where("squarefeet * 1 > 1499"), (Ids{1, 2, 3, 4, 5, 6})) << "text that is a number reckons";
    EXPECT_EQ(failure_number("where id / (id - 1) > 0"), 11);
    EXPECT_EQ(failure_number("where 1e308 * 10 * id > 0"), 6);
    EXPECT_EQ(failure_number("where last * 1 > 0"), 3464);
}

TEST_F(Query, TheAmpersandTakesNullForNothing) {
    EXPECT_EQ(where("last & first = 'Nobody'"), (Ids{5}));
    EXPECT_EQ(where("(last & born) is null"), (Ids{5}));
    EXPECT_EQ(where("id & '' = '3'"), (Ids{3}));
    EXPECT_EQ(where("born & '' = '3/7/2026 8:30:00 AM'"), (Ids{6}));
}

TEST_F(Query, NamesIgnoreLetterCaseAndMayNameTheTable) {
    EXPECT_EQ(where("LAST = 'smith' and [Id]>1"), (Ids{2}));
    EXPECT_EQ(where("[table].[last] = 'smith'"), (Ids{1, 2}));
    EXPECT_EQ(where("[TABLE]!last = 'smith'"), (Ids{1, 2}));
}

TEST_F(Query, OrdersByColumnsInTheirTurn) {
    EXPECT_EQ(ids("order by last, first"), (Ids{5, 3, 6, 4, 2, 1}));
    EXPECT_EQ(ids("order by last desc, first"), (Ids{2, 1, 4, 6, 3, 5}));
    EXPECT_EQ(ids("where price is not null order by price, id desc"), (Ids{4, 6, 1, 5, 2}));
    EXPECT_EQ(ids("order by born"), (Ids{3, 5, 2, 1, 4, 6}));
    EXPECT_EQ(ids("order by done, id desc"), (Ids{1, 6, 5, 4, 3, 2})) << "yes is -1 and comes first";
}

TEST_F(Query, EqualRowsKeepTheirOrder) {
    EXPECT_EQ(ids("order by squarefeet"), (Ids{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(ids("order by squarefeet desc"), (Ids{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(ids("order by city"), (Ids{3, 1, 4, 6, 5, 2}))
        << "letter case and trailing blanks do not count";
}

TEST_F(Query, NullComesFirstAscendingAndLastDescending) {
    EXPECT_EQ(ids("order by price"), (Ids{3, 4, 6, 1, 2, 5}));
    EXPECT_EQ(ids("order by price desc"), (Ids{2, 5, 1, 6, 4, 3}));
}

TEST_F(Query, UnknownNamesAreParametersAndAreCountedOnce) {
    EXPECT_EQ(failure("where co_homephone like '*5*'"), "Too few parameters. Expected 1.");
    EXPECT_EQ(failure("where x = 1 or X = 2 or y = 3 order by z"), "Too few parameters. Expected 3.");
    EXPECT_EQ(failure("order by datesold, last"), "Too few parameters. Expected 1.");
    EXPECT_EQ(failure("where other.last = 'x'"), "Too few parameters. Expected 1.");
    EXPECT_EQ(failure("where x = 1 and last = 5"), "Too few parameters. Expected 1.")
        << "ahead of a mismatch";
    EXPECT_EQ(support::error_number([&] { run(parse("select nobody from [table]", 2026), table); }), 3061);
}

TEST_F(Query, AnOptionalColumnThatIsAbsentIsNullInConditionsAndNowhereElse) {
    const std::vector<std::string> optional = {"c_city", "c_price", "c_done", "price"};
    const auto found = [&](const std::string& rest) {
        return run(parse("select * from [table] " + rest, 2026), table, optional).size();
    };
    EXPECT_EQ(found("where (city like '*boise*') or (C_City like '*boise*')"), 4u);
    EXPECT_EQ(found("where (price >= 100 and price <= 200) or (c_price >= 100 and c_price <= 200)"), 1u);
    EXPECT_EQ(found("where (done = true) or (c_done = true)"), 1u);
    EXPECT_EQ(found("where c_city like '**'"), 0u);
    EXPECT_EQ(found("where c_city is null"), 6u);
    EXPECT_EQ(found("where price > 0"), 3u) << "a column that is there is no less there for being optional";
    for (const char* rest : {"where c_acres > 0", "where c_city = 'x' and c_acres > 0", "order by c_city"})
        EXPECT_EQ(support::error_text([&] { found(rest); }), "Too few parameters. Expected 1.") << rest;
}

TEST_F(Query, KindsThatDoNotMeetAreAMismatch) {
    for (const char* condition :
         {"squarefeet >= 1500", "last = 5", "id = '5'", "born = '1/1/2000'", "last = true",
          "last > #1/1/2000#", "id in (1, '2')", "id between '1' and 2", "last", "not last",
          "id = 1 and last", "photo = 'x'", "photo like 'x'"})
        EXPECT_EQ(failure_number(std::string("where ") + condition), 3464) << condition;
    EXPECT_EQ(where("photo is null and id = 1"), (Ids{1}));
}

TEST_F(Query, AFaultyPatternFails) {
    EXPECT_EQ(failure("where last like '*[*'"), "Invalid pattern string");
}

TEST_F(Query, DecodesOnlyTheColumnsItAsksForAndEachOnce) {
    EXPECT_EQ(where("last like 'm*' or last like 'g*' or last like 'm*'"), (Ids{3, 4, 6}));
    EXPECT_EQ(table.decoded[1], 6);
    table.decoded.assign(table.decoded.size(), 0);
    ids("where last like '*smi*' and city like '**' order by last, first");
    EXPECT_EQ(table.decoded[1], 6);
    EXPECT_EQ(table.decoded[3], 3) << "city only where last matched";
    EXPECT_EQ(table.decoded[2], 2) << "first only of the selected rows";
    for (const std::size_t column : {4, 5, 6, 7, 8, 9, 10})
        EXPECT_EQ(table.decoded[column], 0) << column;
}

TEST_F(Query, UsesAnIndexForAnEqualNumber) {
    EXPECT_EQ(where("id=4"), (Ids{4}));
    EXPECT_EQ(where("4 = id and last like 'm*'"), (Ids{4}));
    EXPECT_EQ(where("id = 4 and last like 's*'"), (Ids{}));
    EXPECT_EQ(table.scans, 0);
    EXPECT_EQ(table.finds, 3);
}

TEST_F(Query, AnIndexChangesNoResult) {
    EXPECT_EQ(where("id = 4.5"), (Ids{}));
    EXPECT_EQ(where("id = 1e12"), (Ids{}));
    EXPECT_EQ(where("id = 1 or id = 2"), (Ids{1, 2}));
    EXPECT_EQ(table.finds, 0);
    table.insert(person(1, text("Again"), text("A"), null));
    EXPECT_EQ(where("id = 1"), (Ids{1, 1}));
    EXPECT_EQ(ids("where id = 1 order by last")[0], 1);
}

// --- Keys that tell ahead of the rows ---

/// People with an index over their names.
class QueryBehindAnIndex : public Query {
  protected:
    static constexpr std::size_t last = 1, first = 2;

    /// How many rows were looked at, told by who had a name decoded.
    int looked_at(const std::string& where) {
        jet::TableSchema schema = people_schema();
        schema.indexes.push_back({"name", {{"Last", false}, {"first", false}}, false, false, false, false});
        schema.indexes.push_back({"place", {{"city", true}}, false, false, false, false});
        MemoryTable indexed(schema, 2);
        for (const auto cursor = table.scan(); cursor->next();)
            indexed.insert(table.read(cursor->id()));
        const auto expected = run(parse("select * from [table] where " + where, 2026), table);
        EXPECT_EQ(run(parse("select * from [table] where " + where, 2026), indexed).size(), expected.size())
            << where;
        walks = indexed.key_walks;
        return indexed.decoded[last];
    }
    int walks = 0;
};

TEST_F(QueryBehindAnIndex, LooksAtTheRowsAloneWhoseKeysHoldThePatternsLetters) {
    EXPECT_EQ(looked_at("last like '*SMI*'"), 3);
    EXPECT_EQ(walks, 1);
    EXPECT_EQ(looked_at("last like '*smi*' or first like 'eve'"), 4);
    EXPECT_EQ(looked_at("last like '*smi*' and first like '*be*'"), 1);
    EXPECT_EQ(looked_at("last like '*smi*' and price > 200"), 3);
    EXPECT_EQ(looked_at("(last like '[gs]*smi?*' or last like 'x*') and done = false"), 3);
}

TEST_F(QueryBehindAnIndex, LooksAtEveryRowWhereTheKeysTellNothing) {
    const int everybody = static_cast<int>(table.row_count());
    for (const char* where :
         {"last like '*'", "last like '?*'", "not last like '*smi*'", "last like '*smi*' or price > 200",
          "last like '*smi*' or city like '*ise*'", "last like first", "last & '' like '*smi*'"}) {
        EXPECT_GE(looked_at(where), everybody) << where;
        EXPECT_EQ(walks, 0) << where;
    }
    static_cast<void>(looked_at("city like '*ise*'"));
    EXPECT_EQ(walks, 0) << "descending keys are read by nobody";
    static_cast<void>(looked_at("notes like '*a*'"));
    EXPECT_EQ(walks, 0);
}

} // namespace
} // namespace tolva::sql
