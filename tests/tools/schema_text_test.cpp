#include "tools/tolva_data.h"

namespace tolva::tools {
namespace {

using SchemaText = TolvaData;

const std::string every_type = "table [Every Type]\n"
                               "yes        boolean\n"
                               "tiny       byte\n"
                               "small      integer\n"
                               "[index]    long counter\n"
                               "money      currency required\n"
                               "half       single\n"
                               "whole      double\n"
                               "day        date\n"
                               "raw        binary 12\n"
                               "name       text 50 required nozerolength\n"
                               "code       text 8 fixed default [=\"new one\"]\n"
                               "[my note]  memo nozerolength\n"
                               "picture    ole\n"
                               "key        guid\n"
                               "exact      numeric 18 4\n"
                               "\n"
                               "index first ([index]) primary\n"
                               "index names (name, day desc) unique ignorenulls\n"
                               "index [by day] (day desc)\n"
                               "\n"
                               "table [other]\n"
                               "id  long\n";

TEST_F(SchemaText, AFileGivesBackTheSchemaItWasMadeFrom) {
    const std::string file = make("every.mdb", every_type);
    EXPECT_EQ(output({"schema", file}), every_type);
    EXPECT_EQ(output({"check", file}), "");
    EXPECT_EQ(output({"tables", file}),
              "table\trows\tcolumns\tindexes\nEvery Type\t0\t15\t3\nother\t0\t1\t0\n");
}

TEST_F(SchemaText, CommentsBlanksAndLetterCaseDoNotMatter) {
    const std::string file =
        make("loose.mdb", "# heading\r\n\r\n  TABLE [t#1]   # the table\r\n\ta\tText 5\tRequired\r\n"
                          "b Long\nINDEX i(a,b DESC)Unique\n");
    EXPECT_EQ(output({"schema", file}),
              "table [t#1]\na  text 5 required\nb  long\n\nindex i (a, b desc) unique\n");
}

TEST_F(SchemaText, AFaultIsNamedWithItsLineAndNothingIsMade) {
    struct Fault {
        const char* text;
        const char* message;
    };
    for (const Fault& fault : {
             Fault{"", "line 0: no table"},
             {"# nothing\n", "line 1: no table"},
             {"a text 5\n", "line 1: a schema starts with a table"},
             {"table t\n", "line 1: the table t has no column"},
             {"table t\ntable u\na long\n", "line 2: the table t has no column"},
             {"table t\na long\ntable T\na long\n", "line 3: the table T is there already"},
             {"table t x\na long\n", "line 1: nothing may follow a table's name"},
             {"table [t\na long\n", "line 1: a name's closing bracket is missing"},
             {"table []\na long\n", "line 1: a name is empty"},
             {"table\na long\n", "line 1: the name of a table expected, but the line ends"},
             {"table t\na\n", "line 2: the column a has no type"},
             {"table t\na string\n", "line 2: the column a has an unknown type, \"string\""},
             {"table t\na long\nA long\n", "line 3: the column A is there already"},
             {"table t\na text\n", "line 2: the width in characters expected, 1 to 255, but the line ends"},
             {"table t\na text 256\n",
              "line 2: the width in characters expected, 1 to 255, but found \"256\""},
             {"table t\na binary 5x\n", "line 2: the width in bytes expected, 1 to 510, but found \"5x\""},
             {"table t\na numeric 5 6\n",
              "line 2: the number of digits behind the point expected, 0 to 5, but found \"6\""},
             {"table t\na long unique\n", "line 2: \"unique\" is no option of a column"},
             {"table t\na text 5 counter\n", "line 2: only a long can be a counter"},
             {"table t\na memo fixed\n", "line 2: only a text can be fixed"},
             {"table t\na long\nindex i a\n", "line 3: \"(\" expected, but found \"a\""},
             {"table t\na long\nindex i (b)\n", "line 3: there is no column b"},
             {"table t\na long\nindex i (a\n", "line 3: \")\" expected, but the line ends"},
             {"table t\na long\nindex i (a) fast\n", "line 3: \"fast\" is no option of an index"},
             {"table t\na long\nindex i (a)\nindex I (a)\n", "line 4: the index I is there already"},
             {"table t\na long\nindex i (a) primary\nindex j (a) primary\n",
              "line 4: the table has a primary index already"},
         }) {
        const std::string schema = write("faulty.schema", fault.text);
        const auto result = run({"make", folder.file("faulty.mdb"), schema});
        EXPECT_EQ(result.code, 1) << fault.text;
        EXPECT_EQ(result.err, "tolva-data: " + schema + ", " + fault.message + "\n");
        EXPECT_FALSE(std::filesystem::exists(folder.file("faulty.mdb"))) << fault.text;
    }
}

TEST_F(SchemaText, AFileThatExistsIsLeftAlone) {
    const std::string path = write("mine.mdb", "precious");
    const auto result = run({"make", path, write("new.schema", "table t\na long\n")});
    EXPECT_EQ(result.code, 1);
    EXPECT_NE(result.err, "");
    EXPECT_EQ(support::file_content(path), "precious");
}

} // namespace
} // namespace tolva::tools
