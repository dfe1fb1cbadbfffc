#include <gtest/gtest.h>

#include "jet/bytes.h"
#include "jet/open_database.h"
#include "support/jet_files.h"
#include "support/samples.h"

namespace tolva::jet {
namespace {

using support::all_rows;
using support::column;
using support::error_of;
using support::findings;
using support::index;
using support::JetFile;

TableSchema people() {
    TableSchema table;
    table.name = "People";
    table.columns = {column("id", ColumnType::long_integer), column("last", ColumnType::text, 50),
                     column("first", ColumnType::text, 50), column("born", ColumnType::date),
                     column("notes", ColumnType::memo)};
    table.indexes = {index("PrimaryKey", {"id"}), index("names", {"last", "first"}), index("born", {"born"})};
    table.indexes[0].primary = true;
    return table;
}

Row person(int id, const std::string& last, Value first = {}, Value born = {}, Value notes = {}) {
    return {std::int64_t{id}, last, std::move(first), std::move(born), std::move(notes)};
}

/// The count of keys that a table keeps of one of its indexes.
std::uint32_t unique_entries(Database& database, const std::string& table, std::size_t place) {
    auto& open = dynamic_cast<OpenDatabase&>(database);
    const TableDefinition& definition = open.stored_table(table).definition();
    return get32(open.pager().read(definition.page)->data() + definition.real_indexes[place].counter_offset);
}

class TableIndex : public support::EachVersion {};
INSTANTIATE_TEST_SUITE_P(Versions, TableIndex, support::each_version, support::version_name);

TEST_P(TableIndex, FindsByTheWholeKeyAndByItsFirstColumns) {
    JetFile file({people()}, GetParam());
    Table& table = file.table("People");
    const RowId a = table.insert(person(1, "Smith", std::string("Anna")));
    const RowId b = table.insert(person(2, "SMITH  ", std::string("Bert")));
    const RowId c = table.insert(person(3, "Smithers", std::string("Anna")));
    const RowId d = table.insert(person(4, "Smith"));
    const auto find = [&](std::size_t place, std::vector<Value> values) { return table.find(place, values); };
    EXPECT_EQ(find(0, {std::int64_t{3}}), std::vector<RowId>{c});
    EXPECT_EQ(find(0, {std::int64_t{9}}), std::vector<RowId>{});
    EXPECT_EQ(find(1, {std::string("smith")}), (std::vector<RowId>{a, b, d}));
    EXPECT_EQ(find(1, {std::string("smith"), std::string("ANNA")}), std::vector<RowId>{a});
    EXPECT_EQ(find(1, {std::string("smith"), Value{}}), std::vector<RowId>{d});
    EXPECT_EQ(find(2, {Value{}}), (std::vector<RowId>{a, b, c, d}));
    EXPECT_EQ(find(1, {std::string(300, 'x')}), std::vector<RowId>{});
}

TEST_P(TableIndex, AccentsTellTextsApartLetterCaseDoesNot) {
    JetFile file({people()}, GetParam());
    Table& table = file.table("People");
    const RowId plain = table.insert(person(1, "Muller"));
    const RowId accent = table.insert(person(2, "M\xc3\xbcller"));
    const RowId upper = table.insert(person(3, "M\xc3\x9cLLER"));
    const auto find = [&](const std::string& last) { return table.find(1, std::vector<Value>{last}); };
    EXPECT_EQ(find("MULLER"), std::vector<RowId>{plain});
    EXPECT_EQ(find("m\xc3\xbcller"), (std::vector<RowId>{accent, upper}));
}

TEST_P(TableIndex, FindsFollowUpdatesAndDeletes) {
    JetFile file({people()}, GetParam());
    Table& table = file.table("People");
    const RowId a = table.insert(person(1, "Smith"));
    const RowId b = table.insert(person(2, "Smith"));
    table.update(a, person(1, "Jones"));
    const auto find = [&](const std::string& last) { return table.find(1, std::vector<Value>{last}); };
    EXPECT_EQ(find("Smith"), std::vector<RowId>{b});
    EXPECT_EQ(find("jones"), std::vector<RowId>{a});
    table.erase(b);
    EXPECT_EQ(find("Smith"), std::vector<RowId>{});
    file.database().rollback();
    EXPECT_EQ(find("jones"), std::vector<RowId>{});
}

TEST_P(TableIndex, ARowInAReusedSlotIsFoundUnderItsOwnId) {
    JetFile file({people()}, GetParam());
    Table& table = file.table("People");
    const RowId gone = table.insert(person(1, "Smith"));
    table.erase(gone);
    const RowId now = table.insert(person(2, "Smith"));
    ASSERT_EQ(now.slot, gone.slot);
    const auto found = table.find(1, std::vector<Value>{std::string("Smith")});
    ASSERT_EQ(found.size(), 1u);
    EXPECT_TRUE(found[0] == now);
    EXPECT_FALSE(found[0] == gone);
    table.update(found[0], person(2, "Jones"));
    table.erase(found[0]);
    EXPECT_EQ(findings(file.database()), "");
}

TEST_P(TableIndex, ADuplicateIsRefusedAndLeavesNothingBehind) {
    JetFile file({people()}, GetParam());
    Table& table = file.table("People");
    table.insert(person(1, "Smith", {}, {}, std::string(5000, 'm')));
    const RowId second = table.insert(person(2, "Jones"));
    file.database().commit();
    const files::Bytes before = file.content();
    EXPECT_EQ(error_of([&] { table.insert(person(1, "Brown", {}, {}, std::string(9000, 'n'))); }), 3022);
    EXPECT_EQ(error_of([&] { table.update(second, person(1, "Jones")); }), 3022);
    EXPECT_FALSE(file.database().has_pending_changes());
    file.database().commit();
    EXPECT_EQ(file.content(), before);
    EXPECT_EQ(table.row_count(), 2u);
    EXPECT_EQ(table.read(second), person(2, "Jones"));
    EXPECT_EQ(error_of([&] { table.update(second, person(2, "Brown")); }), 0)
        << "its own key is no duplicate";
    EXPECT_EQ(findings(file.database()), "");
}

TEST_P(TableIndex, AMissingKeyIsRefusedWhereItIsRequired) {
    JetFile file({people()}, GetParam());
    Table& table = file.table("People");
    const RowId row = table.insert(person(1, "Smith"));
    EXPECT_EQ(error_of([&] { table.insert({{}, std::string("x"), {}, {}, {}}); }), 3058);
    EXPECT_EQ(error_of([&] { table.update(row, {{}, std::string("x"), {}, {}, {}}); }), 3058);
    EXPECT_EQ(table.row_count(), 1u);
    EXPECT_EQ(findings(file.database()), "");
}

TEST_P(TableIndex, NullsAreNoDuplicatesAndMayBeLeftOut) {
    TableSchema schema = people();
    schema.indexes[1].unique = true;
    schema.indexes[2].unique = true;
    schema.indexes[2].ignore_nulls = true;
    JetFile file({schema}, GetParam());
    Table& table = file.table("People");
    const RowId a = table.insert(person(1, "Smith"));
    const RowId b = table.insert(person(2, "Smith"));
    table.insert(person(3, "Smith", std::string("Anna"), basic::Date{100}));
    EXPECT_EQ(error_of([&] { table.insert(person(4, "smith", std::string("ANNA"))); }), 3022);
    EXPECT_EQ(error_of([&] { table.insert(person(4, "x", {}, basic::Date{100})); }), 3022);
    EXPECT_EQ(table.find(2, std::vector<Value>{Value{}}), (std::vector<RowId>{a, b}))
        << "rows that an index leaves out are found all the same";
    EXPECT_EQ(findings(file.database()), "");
    EXPECT_EQ(unique_entries(file.database(), "People", 2), 1u);
}

TEST_P(TableIndex, TheCountOfKeysOnlyGrows) {
    JetFile file({people()}, GetParam());
    Table& table = file.table("People");
    const RowId a = table.insert(person(1, "Smith"));
    table.insert(person(2, "smith"));
    EXPECT_EQ(unique_entries(file.database(), "People", 0), 2u);
    EXPECT_EQ(unique_entries(file.database(), "People", 1), 1u);
    table.update(a, person(1, "Jones"));
    EXPECT_EQ(unique_entries(file.database(), "People", 1), 2u);
    table.erase(a);
    EXPECT_EQ(unique_entries(file.database(), "People", 1), 2u);
    EXPECT_EQ(unique_entries(file.database(), "People", 0), 2u);
}

TEST_P(TableIndex, ManyRowsInAnyOrderKeepEveryIndex) {
    JetFile file({people()}, GetParam());
    Table& table = file.table("People");
    std::vector<RowId> ids;
    for (int i = 0; i < 4000; ++i) {
        const int n = i * 1237 % 4000;
        ids.push_back(
            table.insert(person(n, "name " + std::to_string(n % 700), std::string("f") + std::to_string(n),
                                basic::Date{double(n % 50)})));
    }
    file.reopen();
    Table& again = file.table("People");
    EXPECT_EQ(findings(file.database()), "");
    for (int i = 0; i < 4000; i += 3)
        again.erase(ids[static_cast<std::size_t>(i)]);
    EXPECT_EQ(findings(file.database()), "");
    EXPECT_EQ(again.find(2, std::vector<Value>{basic::Date{7}}).size(),
              static_cast<std::size_t>(std::count_if(ids.begin(), ids.end(), [&](const RowId& id) {
                  return again.exists(id) && std::get<basic::Date>(again.read(id)[3]).days == 7;
              })));
    for (int i = 0; i < 4000; ++i)
        if (i % 3 != 0)
            again.erase(ids[static_cast<std::size_t>(i)]);
    EXPECT_EQ(again.row_count(), 0u);
    EXPECT_EQ(findings(file.database()), "");
}

TEST_P(TableIndex, AnUnknownTextOrderIsReadButNotWritten) {
    JetFile file({people()}, GetParam());
    file.table("People").insert(person(1, "Smith", std::string("Anna")));
    file.database().commit();
    auto& open = dynamic_cast<OpenDatabase&>(file.database());
    const PageNumber page = open.stored_table("People").definition().page;
    file.close();
    files::Bytes content = file.content();
    // The second column's text order, behind the head and the counters of three indexes.
    const std::size_t at = page * format().page_size + format().definition.end +
                           3 * format().index_counter.size + format().column.size +
                           format().column.text_order;
    ASSERT_EQ(get16(content.data() + at), 1033);
    put16(content.data() + at, 1041);
    file.put(content);
    file.open();
    Table& table = file.table("People");
    const auto rows = all_rows(table);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0], person(1, "Smith", std::string("Anna")));
    const RowId id = table.find(0, std::vector<Value>{std::int64_t{1}}).at(0);
    EXPECT_EQ(table.find(1, std::vector<Value>{std::string("smith")}), std::vector<RowId>{id});
    try {
        table.insert(person(2, "x"));
        FAIL() << "written";
    } catch (const basic::RunTimeError& error) {
        EXPECT_EQ(error.number(), 3027);
        EXPECT_NE(error.text().find("'last'"), std::string::npos) << error.text();
    }
    EXPECT_EQ(error_of([&] { table.update(id, person(1, "x")); }), 3027);
    EXPECT_EQ(error_of([&] { table.erase(id); }), 3027);
    EXPECT_EQ(findings(file.database()), "");
}

TEST_P(TableIndex, LongTextsAreFoundAndToldApart) {
    TableSchema schema;
    schema.name = "Long";
    schema.columns = {column("text", ColumnType::text, 255), column("other", ColumnType::text, 255)};
    schema.indexes = {index("both", {"text", "other"})};
    schema.indexes[0].unique = true;
    JetFile file({schema}, GetParam());
    Table& table = file.table("Long");
    // In Jet 4 Greek takes two bytes of key for each letter, so that these keys are cut.
    const bool jet4 = GetParam() == Format::Version::jet4;
    const std::string alpha = jet4 ? "\xce\xb1" : "a", beta = jet4 ? "\xce\xb2" : "b",
                      gamma = jet4 ? "\xce\xb3" : "c";
    std::string start;
    for (int i = 0; i < 250; ++i)
        start += alpha;
    std::vector<RowId> ids;
    for (int i = 0; i < 40; ++i)
        ids.push_back(table.insert({start + beta, start + std::to_string(i)}));
    const auto find = [&](std::vector<Value> values) { return table.find(0, values); };
    EXPECT_EQ(find({start + beta}), ids);
    EXPECT_EQ(find({start + gamma}), std::vector<RowId>{});
    EXPECT_EQ(find({start + beta, start + "7"}), std::vector<RowId>{ids[7]});
    EXPECT_EQ(error_of([&] { table.insert({start + beta, start + "7"}); }), 3022);
    for (const RowId& id : ids)
        table.erase(id);
    EXPECT_EQ(findings(file.database()), "");
}

TEST_P(TableIndex, BytesOfNoLengthAreFoundAloneAndNotAsTheStartOfOthers) {
    TableSchema schema;
    schema.name = "Bytes";
    schema.columns = {column("bytes", ColumnType::binary, 20)};
    schema.indexes = {index("bytes", {"bytes"})};
    JetFile file({schema}, GetParam());
    Table& table = file.table("Bytes");
    const RowId empty = table.insert({Bytes{}});
    const RowId some = table.insert({Bytes{1, 2}});
    table.insert({Value{}});
    EXPECT_EQ(table.find(0, std::vector<Value>{Bytes{}}), std::vector<RowId>{empty});
    EXPECT_EQ(table.find(0, std::vector<Value>{Bytes{1, 2}}), std::vector<RowId>{some});
    EXPECT_EQ(table.find(0, std::vector<Value>{Bytes{1}}), std::vector<RowId>{});
}

TEST_P(TableIndex, AMemoCanBeIndexed) {
    TableSchema schema = people();
    schema.indexes.push_back(index("notes", {"notes"}));
    JetFile file({schema}, GetParam());
    Table& table = file.table("People");
    const RowId a = table.insert(person(1, "a", {}, {}, std::string("short")));
    const RowId b = table.insert(person(2, "b", {}, {}, std::string(5000, 'x')));
    EXPECT_EQ(table.find(3, std::vector<Value>{std::string("SHORT")}), std::vector<RowId>{a});
    table.update(a, person(1, "a", {}, {}, std::string(300, 'y')));
    EXPECT_EQ(table.find(3, std::vector<Value>{std::string("short")}), std::vector<RowId>{});
    EXPECT_EQ(findings(file.database()), "");
    table.erase(b);
    table.erase(a);
    EXPECT_EQ(findings(file.database()), "");
}

TEST_P(TableIndex, SeveralLogicalIndexesMayShareOneTree) {
    const std::string sample =
        GetParam() == Format::Version::jet4 ? "mdb/indexTestV2000.mdb" : "mdb/indexTestV1997.mdb";
    TOLVA_NEEDS_SAMPLE(sample);
    const support::TemporaryFolder folder;
    const auto disk = files::make_disk();
    const auto database = Database::open(*disk, support::copy_sample(sample, folder));
    Table& table = database->table("Table2");
    const auto& definition = dynamic_cast<OpenDatabase&>(*database).stored_table("Table2").definition();
    ASSERT_GT(definition.logical_indexes.size(), definition.real_indexes.size());
    const RowId added = table.insert({std::int64_t{77}, std::string("added")});
    for (std::size_t i = 0; i < definition.logical_indexes.size(); ++i)
        EXPECT_EQ(table.find(i, std::vector<Value>{std::int64_t{77}}), std::vector<RowId>{added}) << i;
    EXPECT_EQ(error_of([&] { table.insert({std::int64_t{77}, std::string("again")}); }), 3022);
    table.update(added, {std::int64_t{78}, std::string("changed")});
    EXPECT_EQ(findings(*database), "");
    table.erase(added);
    database->commit();
    EXPECT_EQ(findings(*database), "");
}

TEST_P(TableIndex, ADamagedIndexLeavesTheRowsAsTheyWere) {
    JetFile file({people()}, GetParam());
    for (int i = 0; i < 300; ++i)
        file.table("People").insert(person(i, "name " + std::to_string(i)));
    file.database().commit();
    auto& open = dynamic_cast<OpenDatabase&>(file.database());
    const PageNumber root = open.stored_table("People").definition().real_indexes[1].root;
    file.close();
    files::Bytes content = file.content();
    std::fill_n(content.begin() + static_cast<std::ptrdiff_t>(root * format().page_size), format().page_size,
                std::uint8_t{0xee});
    file.put(content);
    file.open();
    Table& table = file.table("People");
    EXPECT_EQ(error_of([&] { table.insert(person(1000, "x")); }), 3049);
    EXPECT_EQ(table.row_count(), 300u);
    EXPECT_EQ(table.find(0, std::vector<Value>{std::int64_t{1000}}).size(), 0u)
        << "the first index had its entry already; the statement took it back";
    EXPECT_NE(findings(file.database()), "");
    EXPECT_EQ(table.find(1, std::vector<Value>{std::string("name 7")}).size(), 1u)
        << "by the rows themselves";
    EXPECT_FALSE(table.find_by_key(1, [](const auto&) { return true; }));
}

TEST_P(TableIndex, AnIndexThatLacksARowIsNotReliedOn) {
    JetFile file({people()}, GetParam());
    Table& table = file.table("People");
    std::vector<RowId> rows;
    for (int i = 0; i < 20; ++i)
        rows.push_back(table.insert(person(i, "Smith")));
    const auto any_key = [](const auto&) { return true; };
    EXPECT_EQ(table.find_by_key(1, any_key), rows);

    const TableIndexes& indexes = dynamic_cast<StoredTable&>(table).indexes();
    MappedIndexPages pages = indexes.pages(1);
    std::vector<Key> keys;
    indexes.tree(1, pages).walk([&](std::span<const std::uint8_t> key, RowId) {
        keys.emplace_back(key.begin(), key.end());
        return true;
    });
    ASSERT_TRUE(indexes.tree(1, pages).erase(keys[7], rows[7]));
    EXPECT_FALSE(table.find_by_key(1, any_key));
}

TEST_P(TableIndex, AnIndexThatNamesARowWhichIsNotThereIsNotReliedOn) {
    JetFile file({people()}, GetParam());
    Table& table = file.table("People");
    const RowId gone = table.insert(person(1, "Smith"));
    const RowId there = table.insert(person(2, "Smith"));
    const TableIndexes& indexes = dynamic_cast<StoredTable&>(table).indexes();
    MappedIndexPages pages = indexes.pages(1);
    const Key key = indexes.prefix(1, std::vector<Value>{std::string("Smith"), Value{}});
    table.erase(gone);
    indexes.tree(1, pages).insert(key, gone);
    EXPECT_EQ(table.find(1, std::vector<Value>{std::string("smith")}), std::vector<RowId>{there});
    // The count of entries is that of the rows again.
    ASSERT_TRUE(indexes.tree(1, pages).erase(key, there));
    EXPECT_FALSE(table.find_by_key(1, [](const auto&) { return true; }));
}

} // namespace
} // namespace tolva::jet
