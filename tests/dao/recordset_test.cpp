#include "dao/recordset.h"

#include <gtest/gtest.h>

#include "dao/database.h"
#include "support/errors.h"
#include "support/memory_database.h"

namespace tolva::dao {
namespace {

using jet::ColumnType;
using support::error_number;
using support::MemoryDatabase;

constexpr int this_year = 2026;

jet::TableSchema people_schema() {
    jet::TableSchema schema;
    schema.name = "table";
    schema.columns = {{"id", ColumnType::long_integer},
                      {"last", ColumnType::text, 10},
                      {"born", ColumnType::date},
                      {"done", ColumnType::boolean},
                      {"mail", ColumnType::text, 50, false, false}};
    schema.indexes = {{"by_id", {{"id", false}}, false, true, true, false}};
    return schema;
}

jet::Value text(const char* content) {
    return std::string(content);
}

/// A store with the rows 1 "Cole", 2 "Adams", 3 "Brown".
class RecordsetTest : public ::testing::Test {
  protected:
    RecordsetTest() : engine(disk_less(), [] { return this_year; }) {
        auto made = std::make_unique<MemoryDatabase>("people.mdb", people_schema(), log);
        file = made.get();
        for (const auto& [id, last] : {std::pair{1, "Cole"}, {2, "Adams"}, {3, "Brown"}})
            file->only_table.insert(
                {std::int64_t{id}, text(last), std::monostate(), false, std::monostate()});
        file->rollback();
        database = std::make_unique<Database>(engine, std::move(made));
    }

    static files::FileSystem& disk_less() {
        static const std::unique_ptr<files::FileSystem> disk = files::make_memory_disk();
        return *disk;
    }

    std::unique_ptr<Recordset> open(const std::string& source) { return database->OpenRecordset(source); }
    std::unique_ptr<Recordset> by_name() { return open("select * from [table] order by last"); }
    std::unique_ptr<Recordset> none() { return open("select * from [table] where id = 99"); }

    static double id(const Recordset& set) { return set.field("id").number(); }
    static int read_error(const Recordset& set) {
        return error_number([&] { set.field("id"); });
    }
    static void add(Recordset& set, int new_id, const char* last) {
        set.AddNew();
        set.write("id", std::int64_t{new_id});
        set.write("last", text(last));
        set.Update();
    }
    std::vector<double> ids(Recordset& set) {
        std::vector<double> result;
        for (set.MoveFirst(); !set.Eof(); set.MoveNext())
            result.push_back(id(set));
        return result;
    }

    std::vector<std::string> log;
    DBEngine engine;
    MemoryDatabase* file = nullptr;
    std::unique_ptr<Database> database;
};

using Ids = std::vector<double>;

// Opening and counting.

TEST_F(RecordsetTest, StandsOnTheFirstRowWhenThereIsOne) {
    const auto set = by_name();
    EXPECT_FALSE(set->Bof());
    EXPECT_FALSE(set->Eof());
    EXPECT_EQ(id(*set), 2);
}

TEST_F(RecordsetTest, OfNoRowsIsAtBothEnds) {
    const auto set = none();
    EXPECT_TRUE(set->Bof());
    EXPECT_TRUE(set->Eof());
    EXPECT_EQ(set->RecordCount(), 0);
    EXPECT_EQ(read_error(*set), 3021);
}

TEST_F(RecordsetTest, CountsTheRowsVisitedUntilMoveLast) {
    const auto set = by_name();
    EXPECT_EQ(set->RecordCount(), 1);
    set->MoveNext();
    EXPECT_EQ(set->RecordCount(), 2);
    set->MoveFirst();
    EXPECT_EQ(set->RecordCount(), 2);
    set->MoveLast();
    EXPECT_EQ(set->RecordCount(), 3);
    set->MoveFirst();
    EXPECT_EQ(set->RecordCount(), 3);
}

TEST_F(RecordsetTest, OfABareTableCountsAllRowsAtOnce) {
    EXPECT_EQ(open("table")->RecordCount(), 3);
    EXPECT_EQ(open("[table]")->RecordCount(), 3);
    EXPECT_EQ(open(" TABLE ")->RecordCount(), 3);
    auto set = open("table");
    EXPECT_EQ(ids(*set), (Ids{1, 2, 3})) << "in page and slot order";
}

TEST_F(RecordsetTest, OpeningFailsAsTheQueryDoes) {
    EXPECT_EQ(error_number([&] { open("nothing"); }), 3078);
    EXPECT_EQ(error_number([&] { open("select * from [nothing]"); }), 3078);
    EXPECT_EQ(error_number([&] { open("select * from [table] where last like 'O'Brien'"); }), 3075);
    EXPECT_EQ(error_number([&] { open("select * from [table] where x = 1"); }), 3061);
    EXPECT_EQ(error_number([&] { open("select * from [table] where last = 1"); }), 3464);
}

// Moving.

TEST_F(RecordsetTest, MovesBetweenBothEnds) {
    const auto set = by_name();
    set->MovePrevious();
    EXPECT_TRUE(set->Bof());
    EXPECT_FALSE(set->Eof());
    EXPECT_EQ(read_error(*set), 3021);
    set->MoveNext();
    EXPECT_EQ(id(*set), 2);
    set->MoveLast();
    EXPECT_EQ(id(*set), 1);
    set->MoveNext();
    EXPECT_TRUE(set->Eof());
    EXPECT_FALSE(set->Bof());
    EXPECT_EQ(read_error(*set), 3021);
    set->MovePrevious();
    EXPECT_EQ(id(*set), 1);
}

TEST_F(RecordsetTest, MovingOffAnEndFails) {
    const auto set = by_name();
    set->MovePrevious();
    EXPECT_EQ(error_number([&] { set->MovePrevious(); }), 3021);
    set->MoveLast();
    set->MoveNext();
    EXPECT_EQ(error_number([&] { set->MoveNext(); }), 3021);
}

TEST_F(RecordsetTest, AnyMoveOnAnEmptySetFails) {
    const auto set = none();
    EXPECT_EQ(error_number([&] { set->MoveFirst(); }), 3021);
    EXPECT_EQ(error_number([&] { set->MoveLast(); }), 3021);
    EXPECT_EQ(error_number([&] { set->MoveNext(); }), 3021);
    EXPECT_EQ(error_number([&] { set->MovePrevious(); }), 3021);
}

// Reading.

TEST_F(RecordsetTest, ABookmarkLeadsBackToItsRowInAnySetThatHasIt) {
    const auto set = by_name();
    set->MoveLast();
    const auto last = set->Bookmark();
    ASSERT_TRUE(last);
    set->MoveNext();
    EXPECT_FALSE(set->Bookmark()) << "no row stands behind the last one";
    EXPECT_TRUE(set->go_to(*last));
    EXPECT_EQ(id(*set), 1);
    EXPECT_EQ(set->Bookmark(), last);

    const auto others = open("select * from [table] where id > 1");
    const int before = id(*others);
    EXPECT_FALSE(others->go_to(*last));
    EXPECT_EQ(id(*others), before);
    const auto table = open("table");
    table->MoveLast();
    EXPECT_TRUE(table->go_to(*last));
    table->Delete();
    EXPECT_FALSE(table->go_to(*last));
    EXPECT_FALSE(table->Bookmark()) << "nor on a deleted row";
}

TEST_F(RecordsetTest, NamesIgnoreLetterCaseAndMustExist) {
    const auto set = by_name();
    EXPECT_EQ(set->field("LAST").text(), "Adams");
    EXPECT_EQ(error_number([&] { set->field("first"); }), 3265);
    set->Edit();
    EXPECT_EQ(error_number([&] { set->write("first", text("x")); }), 3265);
}

TEST_F(RecordsetTest, NullIsAnInvalidUseForTheLanguage) {
    const auto set = by_name();
    EXPECT_TRUE(set->field("born").is_null());
    EXPECT_TRUE(set->field("born").is_null_or_empty());
    EXPECT_EQ(error_number([&] { set->field("born").text(); }), 94);
    EXPECT_EQ(error_number([&] { set->field("born").date(); }), 94);
}

TEST_F(RecordsetTest, WhatARowHoldsIsReadAnew) {
    const auto set = by_name();
    const auto other = open("select * from [table] where id = 2");
    EXPECT_EQ(set->field("last").text(), "Adams");
    other->Edit();
    other->write("last", text("Zander"));
    other->Update();
    EXPECT_EQ(set->field("last").text(), "Zander");
}

// Adding.

TEST_F(RecordsetTest, AddNewTouchesNothingUntilUpdate) {
    const auto set = by_name();
    set->AddNew();
    set->write("id", std::int64_t{4});
    EXPECT_EQ(file->only_table.row_count(), 3u);
    EXPECT_EQ(set->field("id").number(), 4) << "what was written so far";
    EXPECT_TRUE(set->field("last").is_null());
    EXPECT_FALSE(set->field("done").yes_no()) << "a yes/no starts as no";
    set->Update();
    EXPECT_EQ(file->only_table.row_count(), 4u);
}

TEST_F(RecordsetTest, AfterAddNewTheEarlierRowIsCurrentAndTheNewOneStandsAtTheEnd) {
    const auto set = by_name();
    set->MoveNext();
    add(*set, 4, "Aaron");
    EXPECT_EQ(id(*set), 3);
    EXPECT_EQ(ids(*set), (Ids{2, 3, 1, 4})) << "whatever the order";
    EXPECT_EQ(ids(*by_name()), (Ids{4, 2, 3, 1})) << "until the query is run anew";
}

TEST_F(RecordsetTest, AddedToAnEmptySetTheNewRowIsNotCurrent) {
    const auto set = none();
    add(*set, 4, "Day");
    EXPECT_FALSE(set->Bof());
    EXPECT_TRUE(set->Eof());
    EXPECT_EQ(read_error(*set), 3021);
    EXPECT_EQ(set->RecordCount(), 1);
    set->MoveLast();
    EXPECT_EQ(id(*set), 4);
}

TEST_F(RecordsetTest, AddedToASetThatWasEmptiedTheNewRowIsNotCurrentEither) {
    for (const bool backward : {false, true}) {
        const auto set = by_name();
        for (; !set->Eof(); set->MoveNext())
            set->Delete();
        if (backward) {
            add(*set, 4, "Day");
            set->MoveLast();
            set->Delete();
            set->MovePrevious();
        }
        ASSERT_TRUE(set->Bof() && set->Eof());
        add(*set, 5, "Early");
        EXPECT_FALSE(set->Bof()) << backward;
        EXPECT_TRUE(set->Eof()) << backward;
        EXPECT_EQ(ids(*set), Ids{5}) << backward;
    }
}

TEST_F(RecordsetTest, AddedBehindTheEndThePositionStaysBehindTheEnd) {
    const auto set = by_name();
    set->MoveLast();
    set->MoveNext();
    add(*set, 4, "Day");
    EXPECT_TRUE(set->Eof());
    set->MovePrevious();
    EXPECT_EQ(id(*set), 4);
}

TEST_F(RecordsetTest, AnAddedRowCountsAtOnce) {
    const auto set = by_name();
    add(*set, 4, "Day");
    EXPECT_EQ(set->RecordCount(), 2) << "the one visited and the one added";
    set->MoveLast();
    EXPECT_EQ(set->RecordCount(), 4);
}

TEST_F(RecordsetTest, AnAddedRowNeedNotMeetTheQuery) {
    const auto set = open("select * from [table] where last like 'a*'");
    add(*set, 4, "Zander");
    EXPECT_EQ(ids(*set), (Ids{2, 4}));
}

// Changing.

TEST_F(RecordsetTest, EditTouchesNothingUntilUpdate) {
    const auto set = by_name();
    set->Edit();
    set->write("last", text("Zander"));
    EXPECT_EQ(set->field("last").text(), "Zander");
    EXPECT_EQ(by_name()->field("last").text(), "Adams");
    set->Update();
    EXPECT_EQ(open("select * from [table] where id = 2")->field("last").text(), "Zander");
}

TEST_F(RecordsetTest, AChangedRowKeepsItsPlaceAndStaysCurrent) {
    const auto set = by_name();
    set->Edit();
    set->write("last", text("Zander"));
    set->Update();
    EXPECT_EQ(id(*set), 2);
    EXPECT_EQ(ids(*set), (Ids{2, 3, 1}));
    EXPECT_EQ(ids(*by_name()), (Ids{3, 1, 2}));
}

TEST_F(RecordsetTest, WritingNeedsEditOrAddNew) {
    const auto set = by_name();
    EXPECT_EQ(error_number([&] { set->write("last", text("x")); }), 3020);
    EXPECT_EQ(error_number([&] { set->Update(); }), 3020);
    set->Edit();
    set->Update();
    EXPECT_EQ(error_number([&] { set->write("last", text("x")); }), 3020) << "Update ends the edit";
}

TEST_F(RecordsetTest, EditNeedsACurrentRow) {
    const auto set = none();
    EXPECT_EQ(error_number([&] { set->Edit(); }), 3021);
    EXPECT_EQ(error_number([&] { set->Delete(); }), 3021);
}

TEST_F(RecordsetTest, AnyMoveDropsWhatWasBegun) {
    const auto set = by_name();
    const auto moves = {&Recordset::MoveFirst, &Recordset::MoveNext, &Recordset::MovePrevious,
                        &Recordset::MoveLast};
    for (const auto move : moves) {
        set->MoveFirst();
        set->MoveNext();
        set->Edit();
        set->write("last", text("dropped"));
        ((*set).*move)();
        EXPECT_EQ(error_number([&] { set->Update(); }), 3020);
        set->MoveFirst();
        set->AddNew();
        set->write("id", std::int64_t{9});
        ((*set).*move)();
        EXPECT_EQ(error_number([&] { set->Update(); }), 3020);
    }
    EXPECT_EQ(file->only_table.changes, 3) << "only the rows of the start";
}

TEST_F(RecordsetTest, EditDropsAnAddNewAndTheOtherWayRound) {
    const auto set = by_name();
    set->AddNew();
    set->write("id", std::int64_t{9});
    set->Edit();
    EXPECT_EQ(set->field("id").number(), 2);
    set->write("last", text("dropped"));
    set->AddNew();
    EXPECT_TRUE(set->field("last").is_null());
    set->write("id", std::int64_t{4});
    set->Update();
    EXPECT_EQ(ids(*by_name()), (Ids{4, 2, 3, 1}));
    EXPECT_EQ(by_name()->RecordCount(), 1);
}

TEST_F(RecordsetTest, UpdateStoresOnlyTheColumnsThatWereWritten) {
    const auto set = by_name();
    set->Edit();
    set->write("done", true);
    const auto other = by_name();
    other->Edit();
    other->write("last", text("Ames"));
    other->Update();
    set->Update();
    EXPECT_EQ(set->field("last").text(), "Ames");
    EXPECT_TRUE(set->field("done").yes_no());
}

TEST_F(RecordsetTest, AnUpdateThatFailsLeavesTheEditOpen) {
    const auto set = by_name();
    set->Edit();
    set->write("id", std::int64_t{3});
    EXPECT_EQ(error_number([&] { set->Update(); }), 3022);
    set->write("id", std::int64_t{7});
    set->Update();
    EXPECT_EQ(id(*set), 7);
}

TEST_F(RecordsetTest, TheTablesRulesHoldAtUpdate) {
    const auto set = by_name();
    set->Edit();
    set->write("mail", text(""));
    EXPECT_EQ(support::error_text([&] { set->Update(); }), "Field 'mail' cannot be a zero-length string.");
    set->AddNew();
    set->write("id", std::int64_t{1});
    EXPECT_EQ(error_number([&] { set->Update(); }), 3022);
    EXPECT_EQ(ids(*set), (Ids{2, 3, 1}));
}

// Deleting.

TEST_F(RecordsetTest, DeleteActsAtOnceAndLeavesThePositionOnNoRow) {
    const auto set = by_name();
    set->MoveNext();
    set->Delete();
    EXPECT_EQ(file->only_table.row_count(), 2u);
    EXPECT_EQ(read_error(*set), 3021);
    EXPECT_FALSE(set->Eof());
    EXPECT_FALSE(set->Bof());
    EXPECT_EQ(error_number([&] { set->Delete(); }), 3021);
    EXPECT_EQ(error_number([&] { set->Edit(); }), 3021);
}

TEST_F(RecordsetTest, MovesGoOnFromTheDeletedRow) {
    const auto set = by_name();
    set->MoveNext();
    set->Delete();
    set->MoveNext();
    EXPECT_EQ(id(*set), 1) << "the row behind it";
    set->MovePrevious();
    EXPECT_EQ(id(*set), 2) << "the deleted one is passed over";
    EXPECT_EQ(ids(*set), (Ids{2, 1}));
}

TEST_F(RecordsetTest, DeletingTheLastRowMovesOnToTheEnd) {
    const auto set = by_name();
    set->MoveLast();
    set->Delete();
    set->MoveNext();
    EXPECT_TRUE(set->Eof());
    EXPECT_EQ(error_number([&] { set->MoveNext(); }), 3021);
}

TEST_F(RecordsetTest, AllRowsMayBeDeletedInOneWalk) {
    const auto set = by_name();
    for (; !set->Eof(); set->MoveNext())
        set->Delete();
    EXPECT_EQ(file->only_table.row_count(), 0u);
    EXPECT_TRUE(set->Bof());
    EXPECT_EQ(set->RecordCount(), 0);
    EXPECT_EQ(error_number([&] { set->MoveFirst(); }), 3021);
    EXPECT_EQ(error_number([&] { set->MovePrevious(); }), 3021);
}

TEST_F(RecordsetTest, DeletedRowsCountNoLonger) {
    const auto set = by_name();
    set->MoveLast();
    set->Delete();
    EXPECT_EQ(set->RecordCount(), 2);
}

TEST_F(RecordsetTest, ARowDeletedThroughAnotherSetIsADeletedRecord) {
    const auto set = by_name();
    const auto other = by_name();
    EXPECT_EQ(id(*set), 2);
    set->Edit();
    set->write("last", text("late"));
    other->Delete();
    EXPECT_EQ(error_number([&] { set->Update(); }), 3167);
    set->MoveFirst();
    EXPECT_EQ(read_error(*set), 3167);
    EXPECT_EQ(error_number([&] { set->Edit(); }), 3167);
    EXPECT_EQ(error_number([&] { set->Delete(); }), 3167);
    set->MoveNext();
    EXPECT_EQ(id(*set), 3);
}

TEST_F(RecordsetTest, AReadOnlyStoreRefusesEveryChange) {
    file->is_read_only = true;
    const auto set = by_name();
    EXPECT_EQ(error_number([&] { set->AddNew(); }), 3027);
    EXPECT_EQ(error_number([&] { set->Edit(); }), 3027);
    EXPECT_EQ(error_number([&] { set->Delete(); }), 3027);
    EXPECT_EQ(id(*set), 2);
}

// Durable in order.

TEST_F(RecordsetTest, AWalkOverOneStoreIsOneCommit) {
    const auto set = by_name();
    for (; !set->Eof(); set->MoveNext()) {
        set->Edit();
        set->write("done", true);
        set->Update();
    }
    EXPECT_TRUE(log.empty());
    engine.commit();
    EXPECT_EQ(log, (std::vector<std::string>{"people.mdb 3"}));
    engine.commit();
    EXPECT_EQ(log.size(), 1u) << "nothing is left to commit";
}

TEST_F(RecordsetTest, AChangeToAnotherStoreCommitsTheFirstOne) {
    Database second(engine, std::make_unique<MemoryDatabase>("second.mdb", people_schema(), log));
    const auto people = by_name();
    const auto others = second.OpenRecordset("table");
    add(*people, 4, "Day");
    add(*others, 1, "East");
    EXPECT_EQ(log, (std::vector<std::string>{"people.mdb 1"}));
    people->Delete();
    EXPECT_EQ(log, (std::vector<std::string>{"people.mdb 1", "second.mdb 1"}));
    engine.commit();
    EXPECT_EQ(log.back(), "people.mdb 1");
}

TEST_F(RecordsetTest, ReadingAndEditingCommitNothing) {
    Database second(engine, std::make_unique<MemoryDatabase>("second.mdb", people_schema(), log));
    const auto people = by_name();
    add(*people, 4, "Day");
    const auto others = second.OpenRecordset("table");
    others->AddNew();
    others->write("id", std::int64_t{1});
    EXPECT_TRUE(log.empty()) << "only Update changes the second store";
}

TEST_F(RecordsetTest, AStoreThatIsGoneIsNotCommitted) {
    {
        Database second(engine, std::make_unique<MemoryDatabase>("second.mdb", people_schema(), log));
        add(*second.OpenRecordset("table"), 1, "East");
    }
    add(*by_name(), 4, "Day");
    engine.commit();
    EXPECT_EQ(log, (std::vector<std::string>{"people.mdb 1"}));
}

TEST_F(RecordsetTest, TheEngineHasOneWorkspace) {
    EXPECT_EQ(&engine.Workspaces(0), &engine.Workspaces(0));
    EXPECT_EQ(error_number([&] { engine.Workspaces(1); }), 3265);
    EXPECT_EQ(error_number([&] { engine.Workspaces(0).OpenDatabase("absent.mdb"); }), 3024);
}

} // namespace
} // namespace tolva::dao
