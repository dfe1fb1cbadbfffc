#include <gtest/gtest.h>

#include <map>
#include <random>

#include "dao/database.h"
#include "sql/like_pattern.h"
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

/// The keys of an index tell ahead of the rows which can't meet a "like": what they say must never lose one.
TEST_P(QueriesOfText, FindBehindAnIndexJustWhatAPatternMatches) {
    const std::vector<std::string> pieces = {"s", "M", "i", "smi",    "SMI",    "th",     "2",      "-",
                                             "'", " ", "",  "\u00e4", "\u00df", "\u00c6", "\u00b2", "Z"};
    const std::vector<std::string> patterns = {"*smi*",  "smi*", "*smi", "*s?i*",     "*S[ai-n]i*", "*2*",
                                               "*i th*", "*i *", "##*",  "*[!s]mi*2", "*\u00dfs*",  "smi"};
    std::mt19937 chance(11);
    const auto made_up = [&](std::size_t most) {
        std::string text;
        for (std::size_t count = chance() % most; count > 0; --count)
            text += pieces[chance() % pieces.size()];
        return text;
    };
    jet::TableSchema table;
    table.name = "table";
    table.columns = {support::column("id", jet::ColumnType::long_integer),
                     support::column("last", jet::ColumnType::text, 200),
                     support::column("first", jet::ColumnType::text, 200)};
    for (jet::ColumnSchema& column : table.columns)
        column.zero_length = column.type == jet::ColumnType::text;
    table.indexes = {support::index("name", {"last", "first"})};
    jet::Database::create(*disk, "names.mdb", {table}, GetParam());
    const auto file = engine.Workspaces(0).OpenDatabase("names.mdb");

    std::map<int, std::pair<std::string, std::string>> rows;
    const auto set = file->OpenRecordset("table");
    for (int id = 0; id < 1500; ++id) {
        set->AddNew();
        set->write("id", std::int64_t{id});
        // Some of the keys are too long to be whole.
        const std::size_t most = id % 10 == 0 ? 60 : 6;
        rows[id] = {made_up(most), made_up(most)};
        if (id % 7 != 0)
            set->write("last", rows[id].first);
        if (id % 5 != 0)
            set->write("first", rows[id].second);
        set->Update();
    }
    long found = 0;
    for (const std::string& pattern : patterns) {
        const sql::LikePattern like(pattern);
        for (const bool both : {false, true}) {
            std::vector<int> expected, got;
            for (const auto& [id, names] : rows) {
                const bool last = id % 7 != 0 && like.matches(names.first);
                const bool first = id % 5 != 0 && like.matches(names.second);
                if (both ? last && first : last || first)
                    expected.push_back(id);
            }
            const std::string join = both ? " and " : " or ";
            const auto query = file->OpenRecordset("select id from [table] where last like \"" + pattern +
                                                   "\"" + join + "first like \"" + pattern + "\"");
            for (; !query->Eof(); query->MoveNext())
                got.push_back(static_cast<int>(query->field("id").number()));
            EXPECT_EQ(got, expected) << pattern << join;
            found += static_cast<long>(expected.size());
        }
    }
    EXPECT_GT(found, 1000) << "the texts must meet the patterns now and then";
}

} // namespace
} // namespace tolva::dao
