#include <algorithm>
#include <gtest/gtest.h>

#include "support/jet_files.h"
#include "support/mdb_json.h"
#include "support/sample_files.h"
#include "support/samples.h"

namespace tolva::jet {
namespace {

using support::all_rows;
using support::error_of;
using support::findings;

/// Files that other programs wrote.
class Sample : public testing::TestWithParam<const char*> {
  protected:
    void SetUp() override {
        TOLVA_NEEDS_SAMPLE(GetParam());
        path = support::copy_sample(GetParam(), folder);
        disk = files::make_disk();
        database = Database::open(*disk, path);
    }

    /// Holds a table against what mdb-json reads of it, column by column where both have a plain form.
    void compare(Table& table) {
        const std::string& name = table.schema().name;
        auto theirs = support::mdb_json(path, name, folder);
        auto ours = all_rows(table);
        ASSERT_EQ(theirs.size(), ours.size()) << name;
        // That reader gives a row that has moved where it went, not where its place is kept.
        const auto our_sign = [](const Row& row) {
            std::string sign;
            for (const Value& value : row) {
                if (const auto* text = std::get_if<std::string>(&value))
                    sign += *text;
                if (const auto* number = std::get_if<std::int64_t>(&value))
                    sign += std::to_string(*number);
                sign += '\x01';
            }
            return sign;
        };
        const auto their_sign = [&](const support::JsonRow& row) {
            std::string sign;
            for (const ColumnSchema& column : table.schema().columns) {
                const auto shown = row.find(column.name);
                const bool counts = column.type == ColumnType::text || column.type == ColumnType::memo ||
                                    column.type == ColumnType::byte || column.type == ColumnType::integer ||
                                    column.type == ColumnType::long_integer;
                if (counts && shown != row.end())
                    sign += shown->second;
                sign += '\x01';
            }
            return sign;
        };
        std::stable_sort(ours.begin(), ours.end(),
                         [&](const Row& a, const Row& b) { return our_sign(a) < our_sign(b); });
        std::stable_sort(theirs.begin(), theirs.end(),
                         [&](const auto& a, const auto& b) { return their_sign(a) < their_sign(b); });
        for (std::size_t i = 0; i < ours.size(); ++i) {
            for (std::size_t k = 0; k < ours[i].size(); ++k) {
                const std::string& column = table.schema().columns[k].name;
                const auto shown = theirs[i].find(column);
                const std::string text = shown == theirs[i].end() ? "" : shown->second;
                if (const auto* mine = std::get_if<std::string>(&ours[i][k])) {
                    EXPECT_EQ(as_shown(*mine), text) << name << "." << column << " of row " << i;
                } else if (const auto* number = std::get_if<std::int64_t>(&ours[i][k])) {
                    EXPECT_EQ(std::to_string(*number), text) << name << "." << column << " of row " << i;
                } else if (const auto* yes = std::get_if<bool>(&ours[i][k])) {
                    EXPECT_EQ(*yes ? "1" : "0", text) << name << "." << column << " of row " << i;
                } else if (const auto* real = std::get_if<double>(&ours[i][k])) {
                    EXPECT_NEAR(*real, std::stod(text), std::abs(*real) * 1e-5) << name << "." << column;
                } else if (is_null(ours[i][k])) {
                    EXPECT_EQ(text, "") << name << "." << column << " of row " << i;
                }
            }
        }
    }

    /// A text as that reader shows it: in Jet 3 files it has a question mark for the bytes to which code page
    /// 1252 gives no character.
    std::string as_shown(std::string text) const {
        if (path.find("V1997") == std::string::npos)
            return text;
        for (const char* control : {"\xc2\x81", "\xc2\x8d", "\xc2\x8f", "\xc2\x90", "\xc2\x9d"})
            for (std::size_t at = text.find(control); at != std::string::npos; at = text.find(control))
                text.replace(at, 2, "?");
        return text;
    }

    support::TemporaryFolder folder;
    std::string path;
    std::unique_ptr<files::FileSystem> disk;
    std::unique_ptr<Database> database;
};

INSTANTIATE_TEST_SUITE_P(Files, Sample, support::sample_files, support::sample_name);

TEST_P(Sample, IsCleanByTheStructureCheck) {
    EXPECT_EQ(findings(*database), "");
}

TEST_P(Sample, IsLeftAsItWasByReadingAndChecking) {
    const std::string before = support::file_content(path);
    for (const std::string& name : database->table_names())
        all_rows(database->table(name));
    findings(*database);
    database->commit();
    database.reset();
    EXPECT_TRUE(support::file_content(path) == before);
    EXPECT_FALSE(std::filesystem::exists(path + "-journal"));
}

TEST_P(Sample, ReadsAsAnotherProgramReadsIt) {
    TOLVA_NEEDS_MDB_JSON();
    for (const std::string& name : database->table_names())
        compare(database->table(name));
}

TEST_P(Sample, IsFoundByEveryIndexRowByRow) {
    for (const std::string& name : database->table_names()) {
        Table& table = database->table(name);
        for (std::size_t i = 0; i < table.schema().indexes.size(); ++i) {
            const auto& parts = table.schema().indexes[i].parts;
            std::size_t tried = 0;
            for (const auto row = table.scan(); row->next() && tried < 300; ++tried) {
                std::vector<Value> key;
                for (const auto& part : parts)
                    key.push_back(row->value(*table.find_column(part.column)));
                const auto found = table.find(i, key);
                ASSERT_TRUE(std::binary_search(found.begin(), found.end(), row->id()))
                    << name << "." << table.schema().indexes[i].name << " row " << tried;
            }
        }
    }
}

TEST_P(Sample, TakesChangesThatAnotherProgramReads) {
    for (const std::string& name : database->table_names()) {
        Table& table = database->table(name);
        std::vector<RowId> ids;
        for (const auto row = table.scan(); row->next() && ids.size() < 400;)
            ids.push_back(row->id());
        // Copies grow by their texts' doubling; those that a unique index refuses leave no trace.
        std::size_t turn = 0;
        for (const RowId& id : ids) {
            Row row = table.read(id);
            for (std::size_t k = 0; k < row.size(); ++k) {
                auto* text = std::get_if<std::string>(&row[k]);
                if (text && table.schema().columns[k].type == ColumnType::memo)
                    *text = turn % 3 == 0 ? "" : *text + *text;
            }
            const int error = error_of([&] {
                switch (turn++ % 4) {
                case 0:
                    table.insert(row);
                    break;
                case 1:
                    table.update(id, row);
                    break;
                case 2:
                    table.erase(id);
                    break;
                default:
                    table.insert(row);
                    table.update(id, row);
                    break;
                }
            });
            EXPECT_TRUE(error == 0 || error == 3022) << name << ": " << error;
        }
        EXPECT_EQ(all_rows(table).size(), table.row_count());
    }
    EXPECT_EQ(findings(*database), "");
    database->commit();
    if (support::has_mdb_json())
        for (const std::string& name : database->table_names())
            compare(database->table(name));
    database.reset();
    database = Database::open(*disk, path);
    EXPECT_EQ(findings(*database), "");
}

} // namespace
} // namespace tolva::jet
