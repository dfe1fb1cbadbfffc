#include <algorithm>

#include "tools/tolva_data.h"

namespace tolva::tools {
namespace {

using namespace std::string_literals;

class Rows : public TolvaData {
  protected:
    const std::string customers = "table [table]\n"
                                  "id     long\n"
                                  "name   text 10\n"
                                  "price  double\n"
                                  "sold   boolean\n"
                                  "day    date\n"
                                  "note   memo\n"
                                  "index id (id)\n";
    const std::string three = "id\tname\tprice\tsold\tday\tnote\n"
                              "3\tCarla\t125000.5\t1\t2026-03-07 08:30:00\tcalled\\r\\nleft word\n"
                              "1\tAnna\t\\N\t0\t\\N\t\\N\n"
                              "2\t\t0\t0\t1899-12-30 00:05:00\t\n";

    std::string file_of_three() const {
        const std::string file = make("three.mdb", customers);
        EXPECT_EQ(output({"load", file, "table"}, three), "3 rows loaded\n");
        return file;
    }
};

TEST_F(Rows, ADumpIsWhatWasLoaded) {
    const std::string file = file_of_three();
    EXPECT_EQ(output({"dump", file, "table"}), three);
    EXPECT_EQ(output({"check", file}), "");
}

TEST_F(Rows, EveryKindOfValueComesBackUnchanged) {
    const std::string file =
        make("every.mdb", "table every\n"
                          "yes boolean\ntiny byte\nsmall integer\nbig long\nmoney currency\n"
                          "half single\nwhole double\nday date\nraw binary 20\nname text 255\n"
                          "code text 4 fixed\nnote memo\npicture ole\nkey guid\nexact numeric 28 6\n");
    const std::string long_note = std::string(5000, 'x') + "\\t\\0\\\\N ä€" + std::string(20000, 'y');
    const std::string guid = "0x00112233445566778899aabbccddeeff";
    const std::string rows =
        "yes\ttiny\tsmall\tbig\tmoney\thalf\twhole\tday\traw\tname\tcode\tnote\tpicture\tkey\texact\n"
        "1\t255\t-32768\t-2147483648\t-922337203685477.5808\t0.1\t0.1\t0100-01-01 "
        "00:00:00\t0x00ff\tN\tabcd\t" +
        long_note + "\t0x" + std::string(9000, 'a') + "\t" + guid + "\t-1234567890123456789012.345678\n" +
        "0\t0\t32767\t2147483647\t922337203685477.5807\t3.4028235e+38\t1.7976931348623157e+308\t"
        "9999-12-31 23:59:59\t0x\tZoë – Øystein Þór 日本\t\\\\\\t  \t\t0x\t" +
        guid + "\t0.000001\n" +
        "0\t1\t0\t0\t-0.0001\t-1e-45\t-5e-324\t1899-12-29 "
        "06:00:00\t\\N\t\\N\t\\N\t\\N\t\\N\t\\N\t\\N\n"
        "1\t\\N\t\\N\t\\N\t\\N\t\\N\t300000\t2026-11-20 23:59:59\t0x0a\t\\\\N\t12\\r\\n\ta\t0x00\t" +
        guid + "\t0.000000\n";
    ASSERT_EQ(output({"load", file, "every"}, rows), "4 rows loaded\n");
    EXPECT_EQ(output({"dump", file, "every"}), rows);
    EXPECT_EQ(output({"check", file}), "");
}

TEST_F(Rows, ColumnsThatAreNotNamedStayNull) {
    const std::string file = make("some.mdb", customers);
    output({"load", file, "table"}, "NAME\tid\nAnna\t7\n");
    EXPECT_EQ(output({"dump", file, "table"}),
              "id\tname\tprice\tsold\tday\tnote\n7\tAnna\t\\N\t0\t\\N\t\\N\n");
}

TEST_F(Rows, LoadingTakesCarriageReturnsAndAMissingLastLineEnd) {
    const std::string file = make("dos.mdb", customers);
    EXPECT_EQ(output({"load", file, "table"}, "id\tname\r\n1\tAnna\r\n2\tBen"), "2 rows loaded\n");
    EXPECT_EQ(output({"query", file, "select id, name from [table]"}), "id\tname\n1\tAnna\n2\tBen\n");
}

TEST_F(Rows, LoadingIsWholeOrNothing) {
    struct Fault {
        const char* rows;
        const char* message;
    };
    const std::string file = file_of_three();
    for (const Fault& fault : {
             Fault{"", "there is no line with column names"},
             {"id\tcolour\n", "line 1: the table has no column \"colour\""},
             {"id\tname\tID\n", "line 1: the column \"ID\" is named twice"},
             {"id\tname\n4\tDora\n5\n", "line 3: 2 fields expected, but found 1"},
             {"id\tname\n4\tDora\n5\tEve\tx\n", "line 3: 2 fields expected, but found 3"},
             {"id\n4\nfour\n",
              "line 3: a whole number from -2147483648 to 2147483647 expected, but found \"four\""},
             {"id\n4\n2147483648\n",
              "line 3: a whole number from -2147483648 to 2147483647 expected, but found \"2147483648\""},
             {"id\n4\n\n", "line 3: a whole number from -2147483648 to 2147483647 expected, but found \"\""},
             {"price\n4\n1,5\n", "line 3: a number expected, but found \"1,5\""},
             {"sold\n1\n\\N\n", "line 3: 1 or 0 expected, but found \"\\N\""},
             {"sold\n1\nyes\n", "line 3: 1 or 0 expected, but found \"yes\""},
             {"day\n2026-02-28\n2026-02-29\n",
              "line 3: a date as YYYY-MM-DD or YYYY-MM-DD HH:MM:SS expected, but found \"2026-02-29\""},
             {"day\n2026-02-28\n2/28/2026\n",
              "line 3: a date as YYYY-MM-DD or YYYY-MM-DD HH:MM:SS expected, but found \"2/28/2026\""},
             {"note\nok\nC:\\TOLVA\n",
              "line 3: a backslash is written \\\\, but found it alone in \"C:\\TOLVA\""},
             {"id\tname\n4\tDora\n5\tabcdefghijk\n", "line 3: The field is too small to accept the amount of "
                                                     "data you attempted to add.  Try inserting or "
                                                     "pasting less data."},
         }) {
        const auto result = run({"load", file, "table"}, fault.rows);
        EXPECT_EQ(result.code, 1) << fault.rows;
        EXPECT_EQ(result.err, "tolva-data: "s + fault.message + "\n");
        EXPECT_EQ(output({"dump", file, "table"}), three) << fault.rows;
    }
    EXPECT_EQ(output({"check", file}), "");
}

TEST_F(Rows, ATextOfDaysIsADateBeyondTheCalendar) {
    const std::string file = make("days.mdb", "table t\nday date\n");
    output({"load", file, "t"}, "day\n3000000.25\n2026-11-20\n46346.5\n");
    EXPECT_EQ(output({"dump", file, "t"}), "day\n3000000.25\n2026-11-20 00:00:00\n2026-11-20 12:00:00\n");
}

TEST_F(Rows, ADumpGoesOnPastARowThatCannotBeRead) {
    const std::string file = make("four.mdb", customers);
    output({"load", file, "table"}, "id\tnote\n1\tshort\n2\t" + std::string(6000, 'm') + "\n3\tlast\n");
    const auto result = run({"dump", write("damaged.mdb", spoil_long_note(file, 'm')), "table"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.out, "id\tname\tprice\tsold\tday\tnote\n"
                          "1\t\\N\t\\N\t0\t\\N\tshort\n"
                          "3\t\\N\t\\N\t0\t\\N\tlast\n");
    EXPECT_EQ(result.err.substr(0, 12), "tolva-data: ");
    EXPECT_NE(result.err.find("damaged.mdb'"), std::string::npos) << result.err;
    EXPECT_NE(result.err.find("Page "), std::string::npos) << result.err;
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
}

TEST_F(Rows, ADumpGoesOnPastAPageThatCannotBeRead) {
    const std::string file = make("many.mdb", "table t\nname text 255\n");
    std::string rows = "name\n";
    for (int i = 0; i < 60; ++i)
        rows += "row " + std::to_string(i) + std::string(200, '.') + "\n";
    output({"load", file, "t"}, rows);
    std::string bytes = support::file_content(file);
    bytes[bytes.find("row 25.") / 4096 * 4096 + 4] = 99; // whose page it is
    const auto result = run({"dump", write("damaged.mdb", bytes), "t"});
    EXPECT_EQ(result.code, 1);
    EXPECT_NE(result.out.find("row 0."), std::string::npos);
    EXPECT_EQ(result.out.find("row 25."), std::string::npos);
    EXPECT_NE(result.out.find("row 59."), std::string::npos);
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
}

TEST_F(Rows, AQueryGivesItsColumnsAndItsOrder) {
    const std::string file = file_of_three();
    EXPECT_EQ(output({"query", file, "select name, id from [table] where id > 1 order by id"}),
              "name\tid\n\t2\nCarla\t3\n");
    EXPECT_EQ(output({"query", file, "select * from [table] where id = 9"}),
              "id\tname\tprice\tsold\tday\tnote\n");
}

TEST_F(Rows, AFaultyQueryIsTold) {
    const std::string file = file_of_three();
    EXPECT_EQ(run({"query", file, "select * from [table] where colour = 'red'"}).err,
              "tolva-data: Too few parameters. Expected 1.\n");
    EXPECT_EQ(run({"query", file, "select colour from [table]"}).err,
              "tolva-data: Too few parameters. Expected 1.\n");
    EXPECT_EQ(run({"query", file, "select * from [table] where id ="}).code, 1);
    EXPECT_EQ(run({"dump", file, "nothing"}).code, 1);
}

TEST_F(Rows, SetChangesEveryRowOfTheQuery) {
    const std::string file = file_of_three();
    EXPECT_EQ(output({"set", file, "select * from [table] where id > 1", "name=a=b", "note=one\\r\\ntwo",
                      "price=\\N", "sold=1", "day=2026-11-20"}),
              "2 rows changed\n");
    EXPECT_EQ(output({"dump", file, "table"}), "id\tname\tprice\tsold\tday\tnote\n"
                                               "3\ta=b\t\\N\t1\t2026-11-20 00:00:00\tone\\r\\ntwo\n"
                                               "1\tAnna\t\\N\t0\t\\N\t\\N\n"
                                               "2\ta=b\t\\N\t1\t2026-11-20 00:00:00\tone\\r\\ntwo\n");
    EXPECT_EQ(output({"check", file}), "");
}

TEST_F(Rows, SetLeavesAllRowsAsTheyWereWhenOneCannotBeChanged) {
    const std::string file = file_of_three();
    const std::string before = support::file_content(file);
    EXPECT_EQ(run({"set", file, "select * from [table]", "id=5", "name=abcdefghijk"}).code, 1);
    EXPECT_EQ(run({"set", file, "select * from [table]", "colour=red"}).err,
              "tolva-data: the table has no column \"colour\"\n");
    EXPECT_EQ(run({"set", file, "select * from [table]", "id"}).err,
              "tolva-data: COLUMN=VALUE expected, but found \"id\"\n");
    EXPECT_EQ(run({"set", file, "select * from [table]", "id=one"}).err,
              "tolva-data: id: a whole number from -2147483648 to 2147483647 expected, but found \"one\"\n");
    EXPECT_EQ(output({"dump", file, "table"}), three);
    EXPECT_EQ(support::file_content(file), before);
}

TEST_F(Rows, LoadingRefusesATextOfAnotherEncoding) {
    const std::string file = file_of_three();
    const auto result = run({"load", file, "table"}, "name\nAnna\nRen\xe9\n");
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.err.find("tolva-data: line 3: text in UTF-8 expected"), 0u) << result.err;
    EXPECT_EQ(output({"dump", file, "table"}), three);
    EXPECT_EQ(output({"load", file, "table"}, "name\nRen\u00e9 \ufffd\n"), "1 row loaded\n");
}

TEST_F(Rows, SetTellsAFaultyAssignmentThoughNoRowIsSelected) {
    const std::string file = file_of_three();
    const std::string nobody = "select * from [table] where id = 99";
    EXPECT_EQ(run({"set", file, nobody, "colour=red"}).err,
              "tolva-data: the table has no column \"colour\"\n");
    EXPECT_EQ(run({"set", file, nobody, "id=one"}).code, 1);
    EXPECT_EQ(output({"set", file, nobody, "id=1"}), "0 rows changed\n");
}

TEST_F(Rows, SetMayChangeWhatTheQueryAsksFor) {
    const std::string file = file_of_three();
    EXPECT_EQ(output({"set", file, "select * from [table] where id < 3 order by id", "id=9"}),
              "2 rows changed\n");
    EXPECT_EQ(output({"query", file, "select id from [table] order by id"}), "id\n3\n9\n9\n");
}

TEST_F(Rows, DeleteTakesTheRowsOfTheQueryOnly) {
    const std::string file = file_of_three();
    EXPECT_EQ(output({"delete", file, "select * from [table] where sold = true"}), "1 row deleted\n");
    EXPECT_EQ(output({"query", file, "select id from [table]"}), "id\n1\n2\n");
    EXPECT_EQ(output({"delete", file, "select * from [table]"}), "2 rows deleted\n");
    EXPECT_EQ(output({"tables", file}), "table\trows\tcolumns\tindexes\ntable\t0\t6\t1\n");
    EXPECT_EQ(output({"check", file}), "");
}

TEST_F(Rows, CheckNamesTheFileOfEachFindingAndGoesOnToTheNext) {
    const std::string sound = file_of_three();
    const std::string cut = write("cut.mdb", support::file_content(sound).substr(0, 4096 * 3));
    std::string bytes = support::file_content(sound);
    const std::size_t page = bytes.find("Carla") / 4096 * 4096;
    bytes[page + 2] = static_cast<char>(bytes[page + 2] ^ 1); // how much is free on the page
    const std::string wrong = write("wrong.mdb", bytes);

    const auto result = run({"check", cut, sound, wrong, folder.file("absent.mdb")});
    EXPECT_EQ(result.code, 1);
    EXPECT_NE(result.out.find(cut), std::string::npos) << result.out;
    EXPECT_EQ(result.out.find(sound), std::string::npos) << result.out;
    EXPECT_NE(result.out.find(wrong), std::string::npos) << result.out;
    EXPECT_NE(result.out.find("Could not find file '" + folder.file("absent.mdb")), std::string::npos)
        << result.out;
    EXPECT_EQ(run({"check", sound}).code, 0);
}

} // namespace
} // namespace tolva::tools
