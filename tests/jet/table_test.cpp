#include <gtest/gtest.h>

#include <algorithm>

#include "jet/bytes.h"
#include "jet/open_database.h"
#include "support/jet_files.h"
#include "support/read_only_disk.h"
#include "support/samples.h"

namespace tolva::jet {
namespace {

using support::all_rows;
using support::column;
using support::error_of;
using support::findings;
using support::JetFile;

/// Numbers, texts and a memo, without indexes.
TableSchema plain_table() {
    TableSchema table;
    table.name = "Plain";
    table.columns = {column("id", ColumnType::long_integer), column("name", ColumnType::text, 50),
                     column("text", ColumnType::text, 255), column("notes", ColumnType::memo)};
    return table;
}

Row plain_row(int id, const std::string& name, Value text = {}, Value notes = {}) {
    return {std::int64_t{id}, name, std::move(text), std::move(notes)};
}

std::vector<std::string> names(Table& table) {
    std::vector<std::string> out;
    for (const Row& row : all_rows(table))
        out.push_back(std::get<std::string>(row[1]));
    return out;
}

class EachTable : public support::EachVersion {};
INSTANTIATE_TEST_SUITE_P(Versions, EachTable, support::each_version, support::version_name);

TEST_P(EachTable, RowsComeBackAsTheyWentIn) {
    JetFile file({plain_table()}, GetParam());
    Table& table = file.table("plain");
    const Row first = plain_row(1, "one", std::string("x"), std::string("a memo"));
    const Row second = plain_row(2, "two");
    const RowId a = table.insert(first), b = table.insert(second);
    EXPECT_EQ(table.read(a), first);
    EXPECT_EQ(table.read(b), second);
    EXPECT_EQ(table.row_count(), 2u);
    file.reopen();
    EXPECT_EQ(all_rows(file.table("Plain")), (std::vector<Row>{first, second}));
    EXPECT_EQ(findings(file.database()), "");
}

TEST_P(EachTable, NothingIsWrittenBeforeACommit) {
    JetFile file({plain_table()}, GetParam());
    const files::Bytes before = file.content();
    file.table("Plain").insert(plain_row(1, "one"));
    EXPECT_TRUE(file.database().has_pending_changes());
    EXPECT_EQ(file.content(), before);
    file.close();
    file.open();
    EXPECT_EQ(file.table("Plain").row_count(), 0u);
}

TEST_P(EachTable, RollbackPutsBackRowsAndCounters) {
    JetFile file({plain_table()}, GetParam());
    Table& table = file.table("Plain");
    const RowId kept = table.insert(plain_row(1, "kept"));
    file.database().commit();
    table.update(kept, plain_row(1, "changed", std::string(250, 'x')));
    const RowId lost = table.insert(plain_row(2, "lost"));
    table.erase(kept);
    file.database().rollback();
    EXPECT_FALSE(file.database().has_pending_changes());
    EXPECT_EQ(table.read(kept), plain_row(1, "kept"));
    EXPECT_FALSE(table.exists(lost));
    EXPECT_EQ(table.row_count(), 1u);
    EXPECT_EQ(findings(file.database()), "");
}

TEST_P(EachTable, RowCountFallsOnDelete) {
    JetFile file({plain_table()}, GetParam());
    Table& table = file.table("Plain");
    const RowId row = table.insert(plain_row(1, "one"));
    table.insert(plain_row(2, "two"));
    table.erase(row);
    EXPECT_EQ(table.row_count(), 1u);
    EXPECT_FALSE(table.exists(row));
    EXPECT_EQ(error_of([&] { table.read(row); }), 3167);
    EXPECT_EQ(error_of([&] { table.erase(row); }), 3167);
    EXPECT_EQ(error_of([&] { table.update(row, plain_row(1, "x")); }), 3167);
    EXPECT_EQ(error_of([&] { table.reader(row); }), 3167);
}

TEST_P(EachTable, AnIdThatIsNowhereIsADeletedRow) {
    JetFile file({plain_table()}, GetParam());
    Table& table = file.table("Plain");
    const RowId row = table.insert(plain_row(1, "one"));
    for (const RowId& wrong : {RowId{0, 0}, RowId{1, 0}, RowId{2, 0}, RowId{999999, 0}, RowId{row.page, 200}})
        EXPECT_EQ(error_of([&] { table.read(wrong); }), 3167) << wrong.page;
}

TEST_P(EachTable, ADeletedRowsIdNeverNamesTheRowThatTookItsSlot) {
    JetFile file({plain_table()}, GetParam());
    Table& table = file.table("Plain");
    table.insert(plain_row(1, "one"));
    const RowId gone = table.insert(plain_row(2, "two"));
    table.erase(gone);
    const RowId next = table.insert(plain_row(3, "three"));
    ASSERT_EQ(next.page, gone.page);
    ASSERT_EQ(next.slot, gone.slot) << "the slot was to be used again";
    EXPECT_FALSE(next == gone);
    EXPECT_FALSE(table.exists(gone));
    EXPECT_EQ(table.read(next), plain_row(3, "three"));
    const auto scan = table.scan();
    ASSERT_TRUE(scan->next());
    ASSERT_TRUE(scan->next());
    EXPECT_TRUE(scan->id() == next);
    file.database().commit();
    EXPECT_FALSE(table.exists(gone));
}

TEST_P(EachTable, ARolledBackSlotNamesItsOldRowAgain) {
    JetFile file({plain_table()}, GetParam());
    Table& table = file.table("Plain");
    const RowId old = table.insert(plain_row(1, "old"));
    file.database().commit();
    table.erase(old);
    const RowId other = table.insert(plain_row(2, "other"));
    file.database().rollback();
    EXPECT_EQ(table.read(old), plain_row(1, "old"));
    EXPECT_FALSE(table.exists(other));
}

TEST_P(EachTable, TwoHundredRoundsOfInsertAndDeleteDoNotGrowThePage) {
    JetFile file({plain_table()}, GetParam());
    Table& table = file.table("Plain");
    for (int i = 0; i < 20; ++i)
        table.insert(plain_row(i, "row", std::string(150, 'x')));
    file.database().commit();
    const std::size_t pages = file.page_count();
    for (int round = 0; round < 200; ++round)
        table.erase(table.insert(plain_row(100 + round, "passing", std::string(150, 'y'))));
    file.database().commit();
    EXPECT_EQ(file.page_count(), pages);
    EXPECT_EQ(findings(file.database()), "");
    EXPECT_EQ(table.row_count(), 20u);
}

TEST_P(EachTable, TheOldestOutAndANewOneInDoNotGrowTheFile) {
    JetFile file({plain_table()}, GetParam());
    Table& table = file.table("Plain");
    std::vector<RowId> queue;
    for (int i = 0; i < 24; ++i)
        queue.push_back(table.insert(plain_row(i, "row", std::string(150, 'x'))));
    file.database().commit();
    const std::size_t pages = file.page_count();
    for (int round = 0; round < 600; ++round) {
        table.erase(queue.front());
        queue.erase(queue.begin());
        queue.push_back(table.insert(plain_row(round, "row", std::string(150, 'x'))));
    }
    file.database().commit();
    EXPECT_EQ(file.page_count(), pages);
    EXPECT_EQ(findings(file.database()), "");
}

TEST_P(EachTable, NewRowsComeLastWhileTheirPageHasRoom) {
    JetFile file({plain_table()}, GetParam());
    Table& table = file.table("Plain");
    table.insert(plain_row(1, "a"));
    const RowId middle = table.insert(plain_row(2, "b"));
    table.insert(plain_row(3, "c"));
    table.erase(middle);
    table.insert(plain_row(4, "d"));
    EXPECT_EQ(names(table), (std::vector<std::string>{"a", "c", "d"}));
}

TEST_P(EachTable, APageHoldsAtMost255Rows) {
    TableSchema narrow;
    narrow.name = "Narrow";
    narrow.columns = {column("yes", ColumnType::boolean)};
    JetFile file({narrow}, GetParam());
    Table& table = file.table("Narrow");
    std::map<std::uint32_t, int> rows_of_page;
    for (int i = 0; i < 600; ++i)
        ++rows_of_page[table.insert({i % 3 == 0}).page];
    EXPECT_EQ(rows_of_page.size(), 3u);
    for (const auto& [page, rows] : rows_of_page)
        EXPECT_LE(rows, 255) << page;
    file.reopen();
    EXPECT_EQ(file.table("Narrow").row_count(), 600u);
    EXPECT_EQ(all_rows(file.table("Narrow")).size(), 600u);
    EXPECT_EQ(findings(file.database()), "");
}

TEST_P(EachTable, ARecordThatIsTooLargeIsRefusedAndLeavesNothing) {
    TableSchema wide;
    wide.name = "Wide";
    for (int i = 0; i < 30; ++i)
        wide.columns.push_back(column("c" + std::to_string(i), ColumnType::text, 255));
    JetFile file({wide}, GetParam());
    Table& table = file.table("Wide");
    Row row(30);
    // In Jet 4 two bytes a character: the euro sign cannot be compressed.
    std::string euros;
    for (int i = 0; i < 240; ++i)
        euros += "\xe2\x82\xac";
    for (int i = 0; i < 8; ++i)
        row[static_cast<std::size_t>(i)] = euros;
    // Eight such columns fill most of the row; the ninth decides.
    const auto insert_with = [&](std::size_t characters) {
        row[8] = std::string(characters, 'x');
        return error_of([&] { table.insert(row); });
    };
    std::size_t largest = 0;
    for (std::size_t n = 0; n <= 255; ++n)
        if (insert_with(n) == 0)
            largest = n;
    EXPECT_GT(largest, 0u);
    EXPECT_LT(largest, 255u);
    EXPECT_EQ(insert_with(largest + 4), 3047);
    EXPECT_EQ(all_rows(table).size(), table.row_count());
    file.database().commit();
    EXPECT_EQ(findings(file.database()), "");
}

TEST_P(EachTable, AnUpdateMayNotMakeARecordTooLargeEither) {
    TableSchema wide;
    wide.name = "Wide";
    for (int i = 0; i < 30; ++i)
        wide.columns.push_back(column("c" + std::to_string(i), ColumnType::text, 255));
    JetFile file({wide}, GetParam());
    Table& table = file.table("Wide");
    Row row(30);
    row[0] = std::string("small");
    const RowId id = table.insert(row);
    for (std::size_t i = 1; i < 20; ++i)
        row[i] = std::string(255, 'x');
    EXPECT_EQ(error_of([&] { table.update(id, row); }), 3047);
    EXPECT_EQ(std::get<std::string>(table.read(id)[0]), "small");
    EXPECT_TRUE(is_null(table.read(id)[1]));
}

TEST_P(EachTable, ManyMemosInOneRowMoveOutWhenTheRowIsFull) {
    TableSchema wide;
    wide.name = "Wide";
    for (int i = 0; i < 80; ++i)
        wide.columns.push_back(column("m" + std::to_string(i), ColumnType::memo));
    JetFile file({wide}, GetParam());
    Table& table = file.table("Wide");
    Row row(80);
    for (std::size_t i = 0; i < row.size(); ++i)
        row[i] = std::string(55, static_cast<char>('a' + i % 26));
    const RowId id = table.insert(row);
    EXPECT_EQ(table.read(id), row);
    EXPECT_EQ(findings(file.database()), "");
}

TEST_P(EachTable, TextWiderThanItsColumnIsRefusedAndNeverCut) {
    JetFile file({plain_table()}, GetParam());
    Table& table = file.table("Plain");
    EXPECT_EQ(error_of([&] { table.insert(plain_row(1, std::string(51, 'x'))); }), 3163);
    EXPECT_EQ(error_of([&] { table.insert(plain_row(1, std::string(50, 'x'))); }), 0);
    // In Jet 4 width counts two bytes a character, however the text is stored.
    std::string accents;
    for (int i = 0; i < 50; ++i)
        accents += "\xc3\xa9";
    const RowId id = table.insert(plain_row(2, accents));
    EXPECT_EQ(std::get<std::string>(table.read(id)[1]), accents);
    EXPECT_EQ(error_of([&] { table.update(id, plain_row(2, accents + "e")); }), 3163);
    EXPECT_EQ(std::get<std::string>(table.read(id)[1]), accents);
    EXPECT_EQ(table.row_count(), 2u);
}

TEST_P(EachTable, RequiredAndZeroLengthAreObeyed) {
    TableSchema schema = plain_table();
    schema.columns[0].required = true;
    schema.columns[1].required = true;
    schema.columns[1].zero_length = false;
    schema.columns[3].zero_length = false;
    JetFile file({schema}, GetParam());
    Table& table = file.table("Plain");
    EXPECT_TRUE(table.schema().columns[1].required);
    EXPECT_FALSE(table.schema().columns[1].zero_length);
    EXPECT_TRUE(table.schema().columns[2].zero_length);
    const auto error = [&](const Row& row) { return error_of([&] { table.insert(row); }); };
    EXPECT_EQ(error({{}, std::string("a"), {}, {}}), 3314);
    EXPECT_EQ(error({std::int64_t{1}, {}, {}, {}}), 3314);
    EXPECT_EQ(error({std::int64_t{1}, std::string(), {}, {}}), 3315);
    EXPECT_EQ(error({std::int64_t{1}, std::string("a"), {}, std::string()}), 3315);
    EXPECT_EQ(table.row_count(), 0u);
    EXPECT_EQ(error({std::int64_t{1}, std::string("a"), std::string(), {}}), 0);
    try {
        table.insert({std::int64_t{1}, {}, {}, {}});
        FAIL();
    } catch (const basic::RunTimeError& failure) {
        EXPECT_NE(failure.text().find("'name'"), std::string::npos) << failure.text();
    }
}

/// Which of the columns of `plain_table` a change writes.
std::vector<bool> only(std::size_t column) {
    std::vector<bool> written(4);
    written[column] = true;
    return written;
}

TEST_P(EachTable, AChangeStoresTheWrittenColumnsAndNoOthers) {
    JetFile file({plain_table()}, GetParam());
    Table& table = file.table("Plain");
    const RowId id = table.insert(plain_row(1, "one", std::string("x"), std::string(5000, 'n')));
    const Row values = plain_row(2, "a longer name", std::string("y"), std::string("z"));
    table.change(id, values, only(1));
    EXPECT_EQ(table.read(id), plain_row(1, "a longer name", std::string("x"), std::string(5000, 'n')));
    table.change(id, values, only(3));
    EXPECT_EQ(table.read(id), plain_row(1, "a longer name", std::string("x"), std::string("z")));
    table.change(id, Row(4), only(2));
    EXPECT_EQ(table.read(id), plain_row(1, "a longer name", {}, std::string("z")));
    EXPECT_EQ(findings(file.database()), "");
}

TEST_P(EachTable, AChangeToWhatIsThereLeavesNothingToCommit) {
    JetFile file({plain_table()}, GetParam());
    Table& table = file.table("Plain");
    const RowId id = table.insert(plain_row(1, "one"));
    file.database().commit();
    table.change(id, plain_row(1, "one"), only(1));
    EXPECT_FALSE(file.database().has_pending_changes());
    table.change(id, plain_row(1, "two"), only(1));
    EXPECT_TRUE(file.database().has_pending_changes());
}

TEST_P(EachTable, AChangeMovesMemosOutWhenItFillsTheRow) {
    // Twenty memos that fit into the row, and texts that do not fit beside them.
    const int memos = 20, texts = GetParam() == Format::Version::jet3 ? 6 : 12;
    TableSchema wide;
    wide.name = "Wide";
    for (int i = 0; i < memos; ++i)
        wide.columns.push_back(column("memo" + std::to_string(i), ColumnType::memo));
    for (int i = 0; i < texts; ++i)
        wide.columns.push_back(column("text" + std::to_string(i), ColumnType::text, 255));
    JetFile file({wide}, GetParam());
    Table& table = file.table("Wide");
    Row row(wide.columns.size());
    std::fill_n(row.begin(), memos, Value(std::string(50, 'm')));
    const RowId id = table.insert(row);
    for (std::size_t i = static_cast<std::size_t>(memos); i < row.size(); ++i) {
        row[i] = std::string(250, 't');
        std::vector<bool> written(row.size());
        written[i] = true;
        table.change(id, row, written);
        ASSERT_EQ(table.read(id), row) << i;
    }
    EXPECT_EQ(findings(file.database()), "");
}

TEST_P(EachTable, AChangeObeysTheRulesOfAllColumns) {
    TableSchema schema = plain_table();
    schema.columns[1].required = true;
    schema.columns[2].zero_length = false;
    JetFile file({schema}, GetParam());
    Table& table = file.table("Plain");
    const RowId id = table.insert(plain_row(1, "one"));
    const auto error = [&](const Row& row, std::size_t written) {
        return error_of([&] { table.change(id, row, only(written)); });
    };
    EXPECT_EQ(error(Row(4), 1), 3314);
    EXPECT_EQ(error(plain_row(1, "one", std::string()), 2), 3315);
    EXPECT_EQ(error(plain_row(1, std::string(51, 'x')), 1), 3163);
    EXPECT_EQ(error(Row(4), 0), 0);
    EXPECT_EQ(table.read(id), (Row{{}, std::string("one"), {}, {}}));
}

TEST_P(EachTable, EmptyTextIsNotNull) {
    JetFile file({plain_table()}, GetParam());
    Table& table = file.table("Plain");
    const RowId id = table.insert(plain_row(1, "", std::string(), std::string()));
    file.database().commit();
    const Row row = table.read(id);
    EXPECT_EQ(row[1], Value(std::string()));
    EXPECT_EQ(row[2], Value(std::string()));
    EXPECT_EQ(row[3], Value(std::string()));
}

TEST_P(EachTable, AutoNumbersGoUpAndAFailedInsertBurnsOne) {
    TableSchema schema = plain_table();
    schema.columns[0].auto_number = true;
    schema.columns[1].required = true;
    JetFile file({schema}, GetParam());
    Table& table = file.table("Plain");
    const auto number = [&](RowId id) { return std::get<std::int64_t>(table.read(id)[0]); };
    EXPECT_EQ(number(table.insert({{}, std::string("a"), {}, {}})), 1);
    EXPECT_EQ(number(table.insert({{}, std::string("b"), {}, {}})), 2);
    EXPECT_EQ(error_of([&] { table.insert({{}, {}, {}, {}}); }), 3314);
    EXPECT_EQ(number(table.insert({{}, std::string("c"), {}, {}})), 4);
    EXPECT_EQ(number(table.insert({std::int64_t{10}, std::string("d"), {}, {}})), 10);
    table.erase(table.insert({{}, std::string("e"), {}, {}}));
    file.reopen();
    Table& again = file.table("Plain");
    EXPECT_EQ(std::get<std::int64_t>(again.read(again.insert({{}, std::string("f"), {}, {}}))[0]), 12);
}

TEST_P(EachTable, AutoNumbersGoByTheStepOfTheirTable) {
    if (format().definition.auto_step == 0)
        GTEST_SKIP() << "this version knows no other step than one";
    TableSchema schema = plain_table();
    schema.columns[0].auto_number = true;
    JetFile file({schema}, GetParam());
    auto& open = dynamic_cast<OpenDatabase&>(file.database());
    Table& table = open.stored_table("Plain");
    const auto next = [&] {
        return std::get<std::int64_t>(table.read(table.insert({{}, std::string("a"), {}, {}}))[0]);
    };
    const auto set_step = [&](std::int32_t step) {
        std::uint8_t* page = open.pager().modify(open.stored_table("Plain").definition().page).data();
        put32(page + format().definition.auto_step, static_cast<std::uint32_t>(step));
    };
    EXPECT_EQ(next(), 1);
    set_step(5);
    EXPECT_EQ(next(), 6);
    EXPECT_EQ(next(), 11);
    set_step(-10);
    EXPECT_EQ(next(), 1);
    EXPECT_EQ(next(), -9);
}

TEST_P(EachTable, DatesBeforeTheFirstDayAndFullPrecisionAreKept) {
    TableSchema schema;
    schema.name = "Values";
    schema.columns = {column("d", ColumnType::date),    column("x", ColumnType::double_real),
                      column("b", ColumnType::byte),    column("c", ColumnType::currency),
                      column("n", ColumnType::numeric), column("s", ColumnType::single_real),
                      column("i", ColumnType::integer), column("g", ColumnType::guid),
                      column("o", ColumnType::ole),     column("v", ColumnType::binary, 30)};
    schema.columns[4].precision = 28;
    schema.columns[4].scale = 2;
    JetFile file({schema}, GetParam());
    const Row row = {
        basic::Date{-1.25},          0.1 + 0.2,
        std::int64_t{255},           Currency{-922337203685477LL},
        Decimal{true, {1, 2, 3}, 2}, 1.5,
        std::int64_t{-32768},        Bytes{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16},
        Bytes(5000, 0xab),           Bytes{0, 0, 255}};
    file.table("Values").insert(row);
    file.reopen();
    EXPECT_EQ(all_rows(file.table("Values")), std::vector<Row>{row});
    const Column& numeric =
        dynamic_cast<OpenDatabase&>(file.database()).stored_table("Values").definition().columns[4];
    EXPECT_EQ(numeric.precision, 28);
    EXPECT_EQ(numeric.scale, 2);
}

TEST_P(EachTable, ColumnsAreFoundInAnyLetterCase) {
    JetFile file({plain_table()}, GetParam());
    const Table& table = file.table("PLAIN");
    EXPECT_EQ(table.find_column("NaMe"), 1u);
    EXPECT_EQ(table.find_column("nothing"), std::nullopt);
}

TEST_P(EachTable, AnUnknownTableIs3078) {
    JetFile file({plain_table()}, GetParam());
    EXPECT_EQ(error_of([&] { file.table("nothing"); }), 3078);
    EXPECT_EQ(file.database().table_names(), std::vector<std::string>{"Plain"});
}

TEST_P(EachTable, AScanSeesTheTableAsItThenStands) {
    JetFile file({plain_table()}, GetParam());
    Table& table = file.table("Plain");
    std::vector<RowId> ids;
    for (int i = 0; i < 60; ++i)
        ids.push_back(table.insert(plain_row(i, "row " + std::to_string(i), std::string(200, 'x'))));
    const auto scan = table.scan();
    int seen = 0;
    std::vector<std::string> read;
    while (scan->next()) {
        const int id = static_cast<int>(std::get<std::int64_t>(scan->value(0)));
        read.push_back(std::get<std::string>(scan->value(1)));
        if (seen == 0)
            table.erase(ids[1]); // ahead, on the same page
        if (seen == 1)
            table.update(ids[40], plain_row(40, "changed")); // on a later page
        if (seen == 2)
            table.insert(plain_row(60, "added", std::string(200, 'x'))); // behind the end
        if (seen == 3)
            table.erase(ids[static_cast<std::size_t>(id)]); // the row itself
        ++seen;
    }
    EXPECT_EQ(seen, 60);
    EXPECT_EQ(std::count(read.begin(), read.end(), "row 1"), 0);
    EXPECT_EQ(std::count(read.begin(), read.end(), "row 40"), 0);
    EXPECT_EQ(std::count(read.begin(), read.end(), "changed"), 1);
    EXPECT_EQ(read.back(), "added");
}

TEST_P(EachTable, ARowThatGrowsMovesAndKeepsItsId) {
    JetFile file({plain_table()}, GetParam());
    Table& table = file.table("Plain");
    std::vector<RowId> ids;
    for (int i = 0; i < 18; ++i)
        ids.push_back(table.insert(plain_row(i, "row " + std::to_string(i), std::string(180, 'x'))));
    const std::string grown(255, 'y');
    for (int i = 0; i < 18; ++i)
        table.update(ids[static_cast<std::size_t>(i)], plain_row(i, "row " + std::to_string(i), grown));
    EXPECT_EQ(findings(file.database()), "");
    file.reopen();
    Table& again = file.table("Plain");
    EXPECT_EQ(again.row_count(), 18u);
    const auto rows = all_rows(again);
    ASSERT_EQ(rows.size(), 18u);
    for (int i = 0; i < 18; ++i) {
        const auto place = static_cast<std::size_t>(i);
        EXPECT_EQ(rows[place], plain_row(i, "row " + std::to_string(i), grown))
            << "in its old place in the order";
        EXPECT_EQ(again.read(ids[place]), rows[place]);
    }
    // And back: what shrinks comes home, what goes leaves nothing.
    for (int i = 0; i < 18; ++i)
        again.update(ids[static_cast<std::size_t>(i)], plain_row(i, "small"));
    EXPECT_EQ(findings(file.database()), "");
    for (const RowId& id : ids)
        again.erase(id);
    EXPECT_EQ(again.row_count(), 0u);
    EXPECT_EQ(all_rows(again).size(), 0u);
    EXPECT_EQ(findings(file.database()), "");
}

TEST_P(EachTable, ARowThatHasMovedMovesOn) {
    JetFile file({plain_table()}, GetParam());
    Table& table = file.table("Plain");
    std::vector<RowId> ids;
    for (int i = 0; i < 200; ++i)
        ids.push_back(table.insert(plain_row(i, "r", std::string(20, 'x'))));
    // Grow every row step by step, so that first moves fill pages that later growth overflows.
    for (const std::size_t size : {60, 120, 180, 240, 10, 255}) {
        for (int i = 0; i < 200; ++i)
            table.update(ids[static_cast<std::size_t>(i)], plain_row(i, "r", std::string(size, 'y')));
        ASSERT_EQ(findings(file.database()), "") << size;
    }
    file.reopen();
    for (int i = 0; i < 200; ++i)
        EXPECT_EQ(file.table("Plain").read(ids[static_cast<std::size_t>(i)]),
                  plain_row(i, "r", std::string(255, 'y')));
}

/// A table whose one row has moved: from `home` to `target`.
class MovedRow : public support::EachVersion {
  protected:
    MovedRow() {
        // The first page is full when a row goes to the next.
        std::vector<RowId> ids = {table().insert(plain_row(0, "r", std::string(120, 'x')))};
        while (ids.back().page == ids.front().page)
            ids.push_back(table().insert(plain_row(1, "r", std::string(120, 'x'))));
        rows = ids.size();
        id = ids.front();
        table().update(id, row);
        const Record record = read_record(pager(), home(), 2);
        EXPECT_EQ(record.flags, DataPageView::away_flag);
        target = RecordPlace::from(get32(record.bytes.data()));
    }
    Table& table() { return file.table("Plain"); }
    FilePager& pager() { return dynamic_cast<OpenDatabase&>(file.database()).pager(); }
    RecordPlace home() const { return {id.page, id.slot}; }
    DataPageEditor edit(PageNumber page) { return {format(), pager().path(), page, pager().modify(page)}; }
    void put_place(RecordPlace at, RecordPlace to, std::uint16_t flags) {
        std::uint8_t bytes[4];
        put32(bytes, to.stored());
        ASSERT_TRUE(edit(at.page).put(at.slot, bytes, flags));
    }

    JetFile file{{plain_table()}, GetParam()};
    const Row row = plain_row(0, "grown", std::string(255, 'y'));
    RowId id;
    RecordPlace target;
    std::size_t rows = 0;
};

INSTANTIATE_TEST_SUITE_P(Versions, MovedRow, support::each_version, support::version_name);

TEST_P(MovedRow, MayHaveMovedOnSeveralTimes) {
    // As another program leaves it: the first new place holds a second one.
    const Record record = read_record(pager(), target, 2);
    const std::vector<std::uint8_t> bytes(record.bytes.begin(), record.bytes.end());
    const auto slot = static_cast<std::uint8_t>(edit(target.page).view().slots());
    ASSERT_TRUE(edit(target.page).put(slot, bytes, DataPageView::hidden_flag));
    put_place(target, {target.page, slot}, DataPageView::both_flags);
    EXPECT_EQ(table().read(id), row);
    EXPECT_EQ(all_rows(table()).size(), rows);
    EXPECT_EQ(findings(file.database()), "");
    const Row grown = plain_row(0, "grown again", std::string(255, 'z'), std::string(60, 'n'));
    table().update(id, grown);
    EXPECT_EQ(table().read(id), grown);
    EXPECT_EQ(findings(file.database()), "");
    table().erase(id);
    EXPECT_EQ(findings(file.database()), "");
}

TEST_P(MovedRow, ACircleIsDamage) {
    put_place(target, target, DataPageView::both_flags);
    EXPECT_EQ(error_of([&] { table().read(id); }), 3049);
    EXPECT_EQ(error_of([&] { all_rows(table()); }), 3049);
    EXPECT_EQ(error_of([&] { table().erase(id); }), 3049);
    EXPECT_NE(findings(file.database()), "");
}

TEST_P(MovedRow, APlaceThatHoldsNoMovedRowIsDamage) {
    for (const RecordPlace wrong : {home(), RecordPlace{home().page, 1}, RecordPlace{home().page, 99},
                                    RecordPlace{2, 0}, RecordPlace{888888, 0}}) {
        put_place(home(), wrong, DataPageView::away_flag);
        EXPECT_EQ(error_of([&] { table().read(id); }), 3049) << wrong.page << " " << int{wrong.slot};
    }
}

TEST_P(MovedRow, AMovedRowThatNobodyNamesIsAFinding) {
    put_place(home(), target, DataPageView::away_flag);
    EXPECT_EQ(findings(file.database()), "");
    ASSERT_TRUE(edit(target.page)
                    .put(static_cast<std::uint8_t>(edit(target.page).view().slots()),
                         std::vector<std::uint8_t>(20, 1), DataPageView::hidden_flag));
    EXPECT_NE(findings(file.database()).find("moved row"), std::string::npos);
}

TEST_P(EachTable, TellsTheDefaultsThatAnotherProgramGaveItsColumns) {
    const std::string sample =
        GetParam() == Format::Version::jet3 ? "mdb/delColTestV1997.mdb" : "mdb/delColTestV2000.mdb";
    TOLVA_NEEDS_SAMPLE(sample);
    const support::TemporaryFolder folder;
    const auto disk = files::make_disk();
    const auto database = Database::open(*disk, support::copy_sample(sample, folder));
    int defaults = 0;
    for (const std::string& name : database->table_names())
        for (const ColumnSchema& each : database->table(name).schema().columns)
            defaults += each.default_value == "0";
    EXPECT_GT(defaults, 0);
}

TEST(Jet4Table, TheCatalogsPropertiesStayByteForByte) {
    TOLVA_NEEDS_SAMPLE("desk/data/sold.mdb");
    const support::TemporaryFolder folder;
    const std::string path = support::copy_sample("desk/data/sold.mdb", folder);
    const auto disk = files::make_disk();
    const auto properties = [](Database& database) {
        return dynamic_cast<OpenDatabase&>(database).catalog();
    };
    std::vector<std::uint8_t> before;
    {
        const auto database = Database::open(*disk, path);
        before = properties(*database).back().properties;
        ASSERT_FALSE(before.empty());
        Table& table = database->table("table");
        const auto scan = table.scan();
        ASSERT_TRUE(scan->next());
        table.insert(table.read(scan->id()));
        table.erase(scan->id());
        database->commit();
    }
    const auto database = Database::open(*disk, path);
    EXPECT_EQ(properties(*database).back().properties, before);
    EXPECT_EQ(findings(*database), "");
}

TEST(Jet4Table, FieldsOfADefinitionThatWeDoNotKnowStayAsTheyAre) {
    JetFile file({plain_table()});
    auto& open = dynamic_cast<OpenDatabase&>(file.database());
    const PageNumber page = open.stored_table("Plain").definition().page;
    file.close();
    files::Bytes content = file.content();
    // What other programs keep in the head.
    for (std::size_t at = 0x1c; at < 0x28; ++at)
        content[page * 4096 + at] = static_cast<std::uint8_t>(at);
    const files::Bytes before(content.begin() + page * 4096, content.begin() + (page + 1) * 4096);
    file.put(content);
    file.open();
    for (int i = 0; i < 50; ++i)
        file.table("Plain").insert(plain_row(i, "x", {}, std::string(5000, 'x')));
    file.database().commit();
    files::Bytes after = file.content();
    EXPECT_EQ(get32(after.data() + page * 4096 + 0x10), 50u);
    std::fill_n(after.begin() + page * 4096 + 0x10, 4, std::uint8_t{0});
    EXPECT_EQ(files::Bytes(after.begin() + page * 4096, after.begin() + (page + 1) * 4096), before);
}

TEST_P(EachTable, ADefinitionMaySpanPages) {
    TableSchema wide;
    wide.name = "Wide";
    for (int i = 0; i < 255; ++i)
        wide.columns.push_back(column("a column with quite a long name " + std::to_string(i),
                                      i % 50 == 0 ? ColumnType::memo : ColumnType::integer));
    JetFile file({wide, plain_table()}, GetParam());
    auto& open = dynamic_cast<OpenDatabase&>(file.database());
    EXPECT_GT(open.stored_table("Wide").definition().pages.size(), 3u);
    Row row(255);
    for (std::size_t i = 0; i < 255; ++i) {
        if (i % 50 == 0)
            row[i] = std::string(200, 'm');
        else
            row[i] = static_cast<std::int64_t>(i);
    }
    file.table("Wide").insert(row);
    file.reopen();
    EXPECT_EQ(all_rows(file.table("Wide")), std::vector<Row>{row});
    EXPECT_EQ(findings(file.database()), "");
}

TEST_P(EachTable, AFileOutgrowsTheWindowsOfItsMaps) {
    TableSchema schema;
    schema.name = "Large";
    schema.columns = {column("id", ColumnType::long_integer), column("object", ColumnType::ole)};
    schema.indexes = {support::index("id", {"id"})};
    JetFile file({schema}, GetParam());
    Table& table = file.table("Large");
    std::vector<RowId> ids;
    const Bytes object(3 * format().page_size, 0x5a);
    const std::size_t window = (format().map.inline_size - 5) * 8;
    for (std::size_t i = 0; i < window / 3 + 100; ++i)
        ids.push_back(table.insert({static_cast<std::int64_t>(i), object}));
    file.reopen();
    EXPECT_GT(file.page_count(), window);
    EXPECT_EQ(findings(file.database()), "");
    Table& again = file.table("Large");
    for (std::size_t i = 0; i < ids.size(); i += 2)
        again.erase(ids[i]);
    EXPECT_EQ(std::get<Bytes>(again.read(ids[1])[1]), object);
    EXPECT_EQ(findings(file.database()), "");
    const std::size_t pages = file.page_count();
    for (std::size_t i = 0; i < ids.size(); i += 2)
        again.insert({static_cast<std::int64_t>(i), object});
    file.database().commit();
    EXPECT_LE(file.page_count(), pages + 2) << "what was given back is used again";
    EXPECT_EQ(findings(file.database()), "");
}

TEST_P(EachTable, AReadOnlyFileIsReadAndNotWritten) {
    JetFile file({plain_table()}, GetParam());
    file.table("Plain").insert(plain_row(1, "one"));
    file.database().commit();
    file.close();

    support::ReadOnlyDisk disk(file.disk());
    const auto database = Database::open(disk, JetFile::path);
    EXPECT_TRUE(database->read_only());
    Table& table = database->table("Plain");
    EXPECT_EQ(all_rows(table).size(), 1u);
    const auto scan = table.scan();
    ASSERT_TRUE(scan->next());
    EXPECT_EQ(error_of([&] { table.insert(plain_row(2, "x")); }), 3027);
    EXPECT_EQ(error_of([&] { table.update(scan->id(), plain_row(2, "x")); }), 3027);
    EXPECT_EQ(error_of([&] { table.erase(scan->id()); }), 3027);
    EXPECT_EQ(findings(*database), "");
}

} // namespace
} // namespace tolva::jet
