#include <gtest/gtest.h>

#include "dao/database.h"
#include "support/jet_files.h"

namespace tolva::dao {
namespace {

/// Queries on files of either version, each of which sorts in its own way.
class QueriesOfText : public support::EachVersion {
  protected:
    QueriesOfText() {
        jet::TableSchema table;
        table.name = "table";
        table.columns = {support::column("last", jet::ColumnType::text, 50)};
        table.indexes = {support::index("last", {"last"})};
        jet::Database::create(*disk, "a.mdb", {table}, GetParam());
        database = engine.Workspaces(0).OpenDatabase("a.mdb");
        const auto set = database->OpenRecordset("table");
        for (const char* last : {"OBriens", "O'Brien", "obrien", "M\u00fcller", "Muller"}) {
            set->AddNew();
            set->write("last", std::string(last));
            set->Update();
        }
    }
    std::vector<std::string> names(const std::string& query) {
        std::vector<std::string> found;
        for (const auto set = database->OpenRecordset(query); !set->Eof(); set->MoveNext())
            found.push_back(set->field("last").text());
        return found;
    }

    std::unique_ptr<files::FileSystem> disk = files::make_memory_disk();
    DBEngine engine{*disk, [] { return 2026; }};
    std::unique_ptr<Database> database;
};
INSTANTIATE_TEST_SUITE_P(Versions, QueriesOfText, support::each_version, support::version_name);

TEST_P(QueriesOfText, SortByTheOrderOfTheFilesVersion) {
    using Names = std::vector<std::string>;
    const Names expected = GetParam() == jet::Format::Version::jet3
                               ? Names{"Muller", "M\u00fcller", "O'Brien", "obrien", "OBriens"}
                               : Names{"Muller", "M\u00fcller", "obrien", "O'Brien", "OBriens"};
    EXPECT_EQ(names("select * from [table] order by last"), expected);
    EXPECT_EQ(names("select * from [table] order by last desc"), Names(expected.rbegin(), expected.rend()));
}

TEST_P(QueriesOfText, FindTextsWhateverTheirLetterCaseButNotTheirAccents) {
    EXPECT_EQ(names("select * from [table] where last = \"o'brien\""), std::vector<std::string>{"O'Brien"});
    EXPECT_EQ(names("select * from [table] where last = 'OBRIEN '"), std::vector<std::string>{"obrien"});
    EXPECT_EQ(names("select * from [table] where last = 'muller'"), std::vector<std::string>{"Muller"});
}

} // namespace
} // namespace tolva::dao
