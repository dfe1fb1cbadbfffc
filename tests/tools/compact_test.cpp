#include "tools/tolva_data.h"

namespace tolva::tools {
namespace {

class Compact : public TolvaData {
  protected:
    const std::string schema_text = "table [table]\n"
                                    "number long counter\n"
                                    "name text 200 required nozerolength\n"
                                    "price currency\n"
                                    "note memo\n"
                                    "index numbers (number) primary\n"
                                    "index names (name, price desc)\n"
                                    "table other\n"
                                    "day date\n"
                                    "index days (day) unique ignorenulls\n";

    /// Rows of many sizes, a long memo now and then; behind them rows that went and others in their places.
    std::string used_file() const {
        const std::string file = make("used.mdb", schema_text);
        std::string rows = "name\tprice\tnote\n";
        for (int i = 0; i < 300; ++i) {
            rows += "Name " + std::to_string(i * 7919 % 300) + std::string(i % 5 ? 3 : 190, 'x') + "\t" +
                    std::to_string(i) + "\t" +
                    (i % 9 ? std::string("short") : std::string(std::size_t(i) * 60, 'm')) + "\n";
        }
        output({"load", file, "table"}, rows);
        output({"delete", file, "select * from [table] where price > 100 and price < 200"});
        output({"load", file, "table"}, "name\tprice\nLate\t150\n");
        output({"set", file, "select * from [table] where price < 50", // which moves rows
                "name=" + std::string(180, 'y'), "note=" + std::string(2000, 'n')});
        output({"delete", file, "select * from [table] where name = 'Late'"});
        output({"load", file, "other"}, "day\n2026-11-20\n\\N\n\\N\n");
        return file;
    }
};

TEST_F(Compact, KeepsTablesPropertiesIndexesRowsAndTheirOrder) {
    const std::string file = used_file();
    const std::string before = support::file_content(file);
    const std::string compacted = folder.file("new.mdb");
    EXPECT_EQ(output({"compact", file, compacted}), "");
    EXPECT_EQ(output({"schema", compacted}), output({"schema", file}));
    EXPECT_EQ(output({"dump", compacted, "table"}), output({"dump", file, "table"}));
    EXPECT_EQ(output({"dump", compacted, "other"}), output({"dump", file, "other"}));
    const std::string query =
        "select number from [table] where name like 'Name 1*' order by name, price desc";
    EXPECT_EQ(output({"query", compacted, query}), output({"query", file, query}));
    EXPECT_EQ(output({"check", compacted}), "");
    EXPECT_LT(std::filesystem::file_size(compacted), std::filesystem::file_size(file));
    EXPECT_EQ(support::file_content(file), before);
}

TEST_F(Compact, TheCounterGoesOnWhereItStood) {
    // The last number drawn was that of a row which is gone.
    const std::string file = used_file();
    const std::string compacted = folder.file("new.mdb");
    output({"compact", file, compacted});
    for (const std::string& each : {file, compacted})
        output({"load", each, "table"}, "name\nNew\n");
    const std::string query = "select number from [table] where name = 'New'";
    EXPECT_EQ(output({"query", compacted, query}), "number\n302\n");
    EXPECT_EQ(output({"query", file, query}), "number\n302\n");
}

TEST_F(Compact, ANewFileThatExistsIsLeftAlone) {
    const std::string file = used_file();
    const std::string there = write("there.mdb", "mine");
    const auto result = run({"compact", file, there});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.err, "tolva-data: File already exists: '" + there + "'\n");
    EXPECT_EQ(support::file_content(there), "mine");
}

TEST_F(Compact, AFailureLeavesNothingBehind) {
    const std::string damaged = write("damaged.mdb", spoil_long_note(used_file(), 'n'));
    const auto result = run({"compact", damaged, folder.file("new.mdb")});
    EXPECT_EQ(result.code, 1);
    EXPECT_NE(result.err.find(damaged), std::string::npos) << result.err;
    EXPECT_FALSE(std::filesystem::exists(folder.file("new.mdb")));
    EXPECT_FALSE(std::filesystem::exists(folder.file("new.mdb.unfinished")));
}

TEST_F(Compact, AFailureLeavesNothingBehindThoughOnlyTheCatalogIsDamaged) {
    std::string content = support::file_content(used_file());
    const std::string name("D\0a\0t\0a\0b\0a\0s\0e\0s\0", 18); // no table's
    const std::size_t at = content.find(name);
    ASSERT_NE(at, std::string::npos);
    // Behind the name the row tells how long it is.
    content.replace(at + name.size(), 27, 27, '\xff');
    const auto result = run({"compact", write("damaged.mdb", content), folder.file("new.mdb")});
    EXPECT_EQ(result.code, 1);
    EXPECT_FALSE(std::filesystem::exists(folder.file("new.mdb")));
}

TEST_F(Compact, SamplesOfOtherProgramsKeepAllTheirTables) {
    TOLVA_NEEDS_SAMPLE("mdb");
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(support::shared_sample("mdb"))) {
        const std::string file = entry.path().string();
        const std::string compacted = folder.file(entry.path().filename().string());
        const auto result = run({"compact", file, compacted});
        ASSERT_EQ(result.code, 0) << file << ": " << result.err;
        EXPECT_EQ(output({"schema", compacted}), output({"schema", file})) << file;
        const std::string tables = output({"tables", file});
        EXPECT_EQ(output({"tables", compacted}), tables);
        for (std::size_t line = tables.find('\n') + 1; line < tables.size();
             line = tables.find('\n', line) + 1) {
            const std::string table = tables.substr(line, tables.find('\t', line) - line);
            EXPECT_EQ(output({"dump", compacted, table}), output({"dump", file, table})) << file << table;
        }
        EXPECT_EQ(output({"check", compacted}), "");
        ++files;
    }
    EXPECT_GT(files, 0);
}

TEST_F(Compact, WhatIsNoTableIsNamed) {
    TOLVA_NEEDS_SAMPLE("mdb/indexTestV2000.mdb");
    const auto result =
        run({"compact", support::copy_sample("mdb/indexTestV2000.mdb", folder), folder.file("new.mdb")});
    EXPECT_NE(result.err.find("the new file goes without 'Table3Table1', which is no table\n"),
              std::string::npos)
        << result.err;
    EXPECT_EQ(result.err.find("SummaryInfo"), std::string::npos) << result.err;
}

} // namespace
} // namespace tolva::tools
