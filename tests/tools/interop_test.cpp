#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "tools/table_rows.h"
#include "tools/tolva_data.h"

namespace tolva::tools {
namespace {

/// Our files in front of readers that others wrote, and theirs in front of ours.
class Interop : public TolvaData {
  protected:
    /// Everything that the independent readers know of, with long, odd and missing values.
    std::string file_of_odd_values() const {
        const std::string file =
            make("odd.mdb", "table [odd rows]\n"
                            "id long\nyes boolean\ntiny byte\nsmall integer\nmoney currency\n"
                            "half single\nwhole double\nday date\nname text 60\nnote memo\n"
                            "exact numeric 18 4\n"
                            "index id (id)\nindex names (name, day desc)\n");
        std::string rows =
            "id\tyes\ttiny\tsmall\tmoney\thalf\twhole\tday\tname\tnote\texact\n"
            "1\t1\t200\t-7\t-12.5\t0.1\t0.30000000000000004\t2026-11-20 08:30:00\tO'Keefe-Núñez\t" +
            std::string(70, 'n') + "\t-123.4567\n" +
            "2\t0\t\\N\t\\N\t\\N\t\\N\t\\N\t\\N\t\\N\t\\N\t\\N\n"
            "3\t0\t0\t0\t0\t0\t0\t1899-12-30 00:05:00\t\t\t0.0000\n"
            "4\t1\t255\t32767\t1\t-1.5\t1e-09\t1901-02-03 00:00:00\t日本 – ﬁ "
            "ß\tone\\r\\ntwo\\ttabbed\t1.0000\n"
            "5\t0\t1\t1\t0.0001\t2.5\t125000\t1950-01-01 00:00:00\tlong\t";
        for (int i = 0; i < 1500; ++i)
            rows += "Zoë’s line " + std::to_string(i) + "\\r\\n";
        rows += "\t2.5000\n";
        output({"load", file, "odd rows"}, rows);
        EXPECT_EQ(output({"dump", file, "odd rows"}), rows);
        return file;
    }
};

TEST_F(Interop, TheIndependentReaderSeesWhatWeWroteNullsAndEmptyTextsApart) {
    TOLVA_NEEDS_INTEROP();
    const std::string file = file_of_odd_values();
    const auto theirs = interop_dump(file, "odd rows");
    ASSERT_EQ(theirs.code, 0) << theirs.err;
    // It leaves the zeros behind a decimal's digits to the column's scale, as we do.
    EXPECT_EQ(theirs.out, output({"dump", file, "odd rows"}));
}

TEST_F(Interop, MdbToolsSeeWhatWeWrote) {
    TOLVA_NEEDS_COMMAND("mdb-export");
    const std::string file = file_of_odd_values();
    const auto theirs = support::run_program({"mdb-export", "-Q", "-e", "-d", "\t", "-D", "%Y-%m-%d %H:%M:%S",
                                              "-T", "%Y-%m-%d %H:%M:%S", "-0", "\\N", file, "odd rows"});
    ASSERT_EQ(theirs.code, 0) << theirs.err;
    const TableRows expected(output({"dump", file, "odd rows"}));
    const TableRows seen(theirs.out);
    ASSERT_EQ(seen.columns, expected.columns);
    ASSERT_EQ(seen.rows.size(), expected.rows.size());
    for (std::size_t row = 0; row < seen.rows.size(); ++row) {
        for (std::size_t i = 0; i < seen.columns.size(); ++i) {
            // An empty text looks like null there, and numbers end in zeros or are cut.
            const std::string ours = expected.rows[row][i].empty() ? "\\N" : expected.rows[row][i];
            const std::string other = seen.rows[row][i];
            if (ours == other)
                continue;
            char* end = nullptr;
            const double number = std::strtod(other.c_str(), &end);
            EXPECT_TRUE(end != other.c_str() && *end == '\0')
                << seen.columns[i] << ": " << ours << " / " << other;
            EXPECT_NEAR(number, std::strtod(ours.c_str(), nullptr), 1e-6 * std::fabs(number))
                << seen.columns[i];
        }
    }
}

TEST_F(Interop, WeReadTheSampleDeskAsTheIndependentReaderDoes) {
    TOLVA_NEEDS_INTEROP();
    TOLVA_NEEDS_SAMPLE("desk/data/listings.mdb");
    for (const char* name : {"address", "listings", "prospect", "sold", "zipcodes", "messagedata"}) {
        const std::string file = support::copy_sample("desk/data/" + std::string(name) + ".mdb", folder);
        EXPECT_TRUE(output({"dump", file, "table"}) == interop_dump(file, "table").out) << name;
    }
    const std::string settings = support::copy_sample("desk/data/database.mdb", folder);
    EXPECT_EQ(output({"dump", settings, "preference_table"}), interop_dump(settings, "preference_table").out);
}

TEST_F(Interop, ACopyThroughTextIsTheSameToTheIndependentReader) {
    TOLVA_NEEDS_INTEROP();
    TOLVA_NEEDS_SAMPLE("desk/data/prospect.mdb");
    for (const char* name : {"prospect", "sold", "messagedata"}) {
        const std::string original = support::copy_sample("desk/data/" + std::string(name) + ".mdb", folder);
        const std::string copy = make(std::string(name) + "-copy.mdb", output({"schema", original}));
        output({"load", copy, "table"}, output({"dump", original, "table"}));
        const auto theirs = interop_dump(copy, "table");
        ASSERT_EQ(theirs.code, 0) << theirs.err;
        EXPECT_TRUE(theirs.out == interop_dump(original, "table").out) << name;
        EXPECT_EQ(output({"check", copy}), "");
    }
}

/// Files of the older version, whose text is of one byte a character.
class OlderInterop : public Interop {
  protected:
    std::string file_of_odd_values() const {
        const std::string file = folder.file("odd.mdb");
        const std::string schema = write(
            "odd.schema", "table [odd rows]\n"
                          "id long\nyes boolean\ntiny byte\nsmall integer\nmoney currency\n"
                          "half single\nwhole double\nday date\nname text 60\nnote memo\nlong text 255\n"
                          "other text 255\nindex id (id)\nindex names (name, day desc)\n");
        output({"make", file, schema, "97"});
        std::string rows =
            "id\tyes\ttiny\tsmall\tmoney\thalf\twhole\tday\tname\tnote\tlong\tother\n"
            "1\t1\t200\t-7\t-12.5\t0.1\t0.30000000000000004\t2026-11-20 "
            "08:30:00\tO'Keefe-Núñez\t" +
            std::string(70, 'n') + "\t" + std::string(250, 'l') + "\tx\n" +
            "2\t0\t\\N\t\\N\t\\N\t\\N\t\\N\t\\N\t\\N\t\\N\t\\N\t\\N\n"
            "3\t0\t0\t0\t0\t0\t0\t1899-12-30 00:05:00\t\t\t\t\n"
            "4\t1\t255\t32767\t1\t-1.5\t1e-09\t1901-02-03 00:00:00\tß – €\tone\\r\\ntwo\\ttabbed\t" +
            std::string(255, 'l') + "\t" + std::string(255, 'o') + "\n" +
            "5\t0\t1\t1\t0.0001\t2.5\t125000\t1950-01-01 00:00:00\tlong\t";
        for (int i = 0; i < 1500; ++i)
            rows += "Zoë’s line " + std::to_string(i) + "\\r\\n";
        rows += "\t\\N\t" + std::string(200, 'o') + "\n";
        output({"load", file, "odd rows"}, rows);
        EXPECT_EQ(output({"dump", file, "odd rows"}), rows);
        EXPECT_EQ(output({"check", file}), "");
        return file;
    }
};

TEST_F(OlderInterop, TheIndependentReaderSeesWhatWeWroteNullsAndEmptyTextsApart) {
    TOLVA_NEEDS_INTEROP();
    const std::string file = file_of_odd_values();
    const auto theirs = interop_dump(file, "odd rows");
    ASSERT_EQ(theirs.code, 0) << theirs.err;
    EXPECT_EQ(theirs.out, output({"dump", file, "odd rows"}));
}

TEST_F(OlderInterop, MdbToolsSeeWhatWeWrote) {
    TOLVA_NEEDS_COMMAND("mdb-export");
    const std::string file = file_of_odd_values();
    const auto version = support::run_program({"mdb-ver", file});
    EXPECT_EQ(version.out, "JET3\n");
    const auto theirs =
        support::run_program({"mdb-export", "-Q", "-e", "-d", "\t", "-0", "\\N", file, "odd rows"});
    ASSERT_EQ(theirs.code, 0) << theirs.err;
    const TableRows expected(output({"dump", file, "odd rows"}));
    const TableRows seen(theirs.out);
    ASSERT_EQ(seen.rows.size(), expected.rows.size());
    for (std::size_t row = 0; row < seen.rows.size(); ++row) {
        for (std::size_t i = 0; i < seen.columns.size(); ++i) {
            if (i != 0 && i < 8)
                continue; // numbers and dates have other forms there
            const std::string ours = expected.rows[row][i].empty() ? "\\N" : expected.rows[row][i];
            EXPECT_EQ(seen.rows[row][i], ours) << seen.columns[i] << " of row " << row;
        }
    }
}

TEST_F(OlderInterop, EveryCommandWorksOnAFileThatTheOriginalEngineWrote) {
    TOLVA_NEEDS_SAMPLE("mdb/testV1997.mdb");
    const std::string file = support::copy_sample("mdb/testV1997.mdb", folder);
    EXPECT_EQ(output({"check", file}), "");
    EXPECT_EQ(output({"query", file, "select * from [Table1] where A = 'A'"}),
              "A\tB\tC\tD\tE\tF\tG\tH\tI\na\tb\t0\t0\t0\t0\t1981-12-12 00:00:00\t0\t0\n");
    output({"set", file, "select * from Table1 where A = 'abcdefg'", "B=changed – yes", "C=\\N"});
    output({"load", file, "Table1"}, "A\tB\tE\nnew\tÜber\t-5\n");
    output({"delete", file, "select * from Table1 where A = 'a'"});
    EXPECT_EQ(output({"dump", file, "Table1"}),
              "A\tB\tC\tD\tE\tF\tG\tH\tI\n"
              "abcdefg\tchanged – yes\t\\N\t222\t333333333\t444.555\t1974-09-21 00:00:00\t3.5\t1\n"
              "new\tÜber\t\\N\t\\N\t-5\t\\N\t\\N\t\\N\t0\n");
    EXPECT_EQ(output({"check", file}), "");
}

} // namespace
} // namespace tolva::tools
