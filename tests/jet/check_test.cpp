#include "jet/check.h"

#include <gtest/gtest.h>

#include "jet/bytes.h"
#include "jet/open_database.h"
#include "support/jet_files.h"

// What the structure check must not overlook: each claim spoils one thing in a sound file.

namespace tolva::jet {
namespace {

using support::column;
using support::findings;
using support::index;
using support::JetFile;

TableSchema people(const std::string& name) {
    TableSchema table;
    table.name = name;
    table.columns = {column("id", ColumnType::long_integer), column("last", ColumnType::text, 50),
                     column("notes", ColumnType::memo)};
    table.indexes = {index("id", {"id"}), index("last", {"last"})};
    table.indexes[1].ignore_nulls = true;
    return table;
}

class Check : public support::EachVersion {
  protected:
    Check() {
        for (int i = 0; i < 40; ++i)
            rows.push_back(table().insert(
                {std::int64_t{i}, "name " + std::to_string(i), std::string(i == 0 ? 9000 : 0, 'n')}));
        other().insert({std::int64_t{1}, std::string("other"), {}});
        EXPECT_EQ(findings(file.database()), "");
    }

    StoredTable& table() { return open().stored_table("People"); }
    StoredTable& other() { return open().stored_table("Others"); }
    OpenDatabase& open() { return dynamic_cast<OpenDatabase&>(file.database()); }
    FilePager& pager() { return open().pager(); }
    const TableDefinition& definition() { return table().definition(); }
    std::uint8_t* page(PageNumber number) { return pager().modify(number).data(); }

    void set(RecordPlace map, UsageMap::Kind kind, PageNumber number, bool member) {
        UsageMap bits(pager(), map, 0, kind);
        open().space().set(bits, number, member);
    }
    /// The key of a row in an index, and the index's tree for the time of one change.
    Key key_of(std::size_t place, RowId id) {
        return *table().indexes().keys_as_stored(table().read(id))[place];
    }
    void change_tree(std::size_t place, const std::function<void(IndexTree)>& change) {
        MappedIndexPages pages = table().indexes().pages(place);
        change(table().indexes().tree(place, pages));
    }
    /// The page of the first piece of a row's long value.
    PageNumber page_of_notes() {
        const UsageMap owned(pager(), definition().columns[2].owned_map, 0, UsageMap::Kind::owned);
        return owned.pages().front();
    }

    void expect_finding(const std::string& words) {
        const std::string found = findings(file.database());
        EXPECT_NE(found.find(words), std::string::npos) << "\"" << words << "\" is not among:\n" << found;
    }

    JetFile file{{people("People"), people("Others")}, GetParam()};
    std::vector<RowId> rows;
};
INSTANTIATE_TEST_SUITE_P(Versions, Check, support::each_version, support::version_name);

TEST_P(Check, TellsAWrongCountOfRows) {
    put32(page(definition().page) + format().definition.row_count, 41);
    expect_finding("table 'People' counts 41 rows and has 40");
}

TEST_P(Check, TellsAWrongCountOfFreeBytes) {
    std::uint8_t* at = page(rows[0].page) + format().data.free_space;
    put16(at, get16(at) + 1u);
    expect_finding("page " + std::to_string(rows[0].page) + ": claims ");
}

TEST_P(Check, TellsAPageThatNamesAnotherTable) {
    put32(page(rows[0].page) + format().data.owner, other().definition().page);
    expect_finding("names page " + std::to_string(other().definition().page) + " as its table's, not");
}

TEST_P(Check, TellsAPageThatTwoTablesOwn) {
    set(other().definition().owned_map, UsageMap::Kind::owned, rows[0].page, true);
    expect_finding("belongs to table 'People' and to table 'Others'");
}

TEST_P(Check, TellsAPageThatNobodyOwns) {
    set(definition().owned_map, UsageMap::Kind::owned, rows[0].page, false);
    expect_finding("page " + std::to_string(rows[0].page) + ": belongs to nothing and is not marked free");
}

TEST_P(Check, TellsAPageInUseThatIsMarkedFree) {
    set({OpenDatabase::global_map_page, 0}, UsageMap::Kind::global, rows[0].page, true);
    expect_finding("is marked free, but belongs to table 'People'");
}

TEST_P(Check, TellsRoomOnAPageOfSomeoneElse) {
    set(definition().free_map, UsageMap::Kind::free, definition().page, true);
    expect_finding("is said to have room for table 'People', which does not own it");
}

TEST_P(Check, TellsALongValueThatNoRowHas) {
    DataPageEditor(format(), file.path, rows[0].page, pager().modify(rows[0].page)).bury(rows[0].slot);
    expect_finding("is a long value that no row has");
}

TEST_P(Check, TellsALongValueOnAPageThatItsColumnDoesNotOwn) {
    set(definition().columns[2].owned_map, UsageMap::Kind::owned, page_of_notes(), false);
    expect_finding("has a long value of column 'notes' of table 'People', which does not own it");
}

TEST_P(Check, TellsAStampThatDoesNotAgree) {
    if (format().data.long_value_stamp == 0)
        GTEST_SKIP() << "long values of this version bear no stamp";
    const UsageMap owned(pager(), definition().columns[2].owned_map, 0, UsageMap::Kind::owned);
    for (const PageNumber number : owned.pages()) {
        std::uint8_t* at = page(number) + format().data.long_value_stamp;
        put32(at, get32(at) + 1);
    }
    expect_finding("has another stamp than a long value");
}

TEST_P(Check, TellsAnEntryThatAnIndexLacks) {
    const Key key = key_of(0, rows[7]);
    change_tree(0, [&](IndexTree tree) { ASSERT_TRUE(tree.erase(key, rows[7])); });
    expect_finding("index 0 of table 'People' lacks the entry of record 7");
}

TEST_P(Check, TellsAnEntryWithoutARow) {
    const Key key = key_of(0, rows[7]);
    change_tree(0, [&](IndexTree tree) { tree.insert(key, {rows[7].page, 99}); });
    expect_finding("index 0 of table 'People' has an entry or a key that no row has, for record 99");
}

TEST_P(Check, TellsAKeyThatIsNotTheRows) {
    const Key right = key_of(0, rows[7]), wrong = key_of(0, rows[8]);
    change_tree(0, [&](IndexTree tree) {
        ASSERT_TRUE(tree.erase(right, rows[7]));
        tree.insert(wrong, rows[7]);
    });
    expect_finding("has an entry or a key that no row has, for record 7");
    expect_finding("lacks the entry of record 7");
}

TEST_P(Check, TellsAPageThatAnIndexOwnsAndDoesNotReach) {
    const PageNumber added = open().space().allocate();
    set(definition().real_indexes[0].owned_map, UsageMap::Kind::owned, added, true);
    expect_finding("belongs to index 0 of table 'People', whose tree does not reach it");
}

TEST_P(Check, FindsNothingInAnIndexOfUnknownOrderThatLeavesNullsOut) {
    table().insert({std::int64_t{50}, {}, {}});
    const PageNumber where = definition().page;
    file.database().commit();
    file.close();
    files::Bytes content = file.content();
    // The second column's text order, behind the head and the counters of two indexes.
    const std::size_t at = where * format().page_size + format().definition.end +
                           2 * format().index_counter.size + format().column.size +
                           format().column.text_order;
    ASSERT_EQ(get16(content.data() + at), 1033);
    put16(content.data() + at, 1041);
    file.put(content);
    file.open();
    EXPECT_EQ(findings(file.database()), "");
}

} // namespace
} // namespace tolva::jet
