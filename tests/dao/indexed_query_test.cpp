#include <gtest/gtest.h>

#include "dao/database.h"
#include "support/jet_files.h"

namespace tolva::dao {
namespace {

/// Queries that an index of the file answers must give what a look at every row gives.
class IndexedQuery : public support::EachVersion {};
INSTANTIATE_TEST_SUITE_P(Versions, IndexedQuery, support::each_version, support::version_name);

TEST_P(IndexedQuery, FindsAZeroWhateverItsSign) {
    jet::TableSchema table;
    table.name = "table";
    table.columns = {support::column("real", jet::ColumnType::double_real),
                     support::column("day", jet::ColumnType::date)};
    table.indexes = {support::index("real", {"real"}), support::index("day", {"day"})};
    const auto disk = files::make_memory_disk();
    jet::Database::create(*disk, "a.mdb", {table}, GetParam());
    DBEngine engine(*disk, [] { return 2026; });
    const auto database = engine.Workspaces(0).OpenDatabase("a.mdb");
    const auto set = database->OpenRecordset("table");
    for (const double number : {0.0, -0.0, 1.0}) {
        set->AddNew();
        set->write("real", number);
        set->write("day", basic::Date{number});
        set->Update();
    }
    const auto count = [&](const std::string& where) {
        const auto found = database->OpenRecordset("select * from [table] where " + where);
        if (!found->Eof())
            found->MoveLast();
        return found->RecordCount();
    };
    EXPECT_EQ(count("real = 0"), 2);
    EXPECT_EQ(count("day = #12/30/1899#"), 2);
    EXPECT_EQ(count("real = 1"), 1);
    EXPECT_EQ(count("day = #12/31/1899#"), 1);
}

} // namespace
} // namespace tolva::dao
