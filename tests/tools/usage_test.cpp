#include "tools/tolva_data.h"

namespace tolva::tools {
namespace {

using Usage = TolvaData;

TEST_F(Usage, HelpNamesEveryCommand) {
    const std::string help = output({"--help"});
    for (const char* command :
         {"tables FILE", "schema FILE", "dump FILE TABLE", "query FILE QUERY", "load FILE TABLE",
          "set FILE QUERY COLUMN=VALUE...", "delete FILE QUERY", "make FILE SCHEMA [97]", "compact FILE NEW",
          "backup FOLDER TARGET", "check FILE..."}) {
        EXPECT_NE(help.find(std::string("  ") + command + "\n"), std::string::npos) << command;
    }
}

TEST_F(Usage, EachCommandHasAHelpOfItsOwn) {
    EXPECT_NE(output({"make", "--help"}).find("table [table]"), std::string::npos);
    EXPECT_NE(output({"load", "--help"}).find("null is \\N"), std::string::npos);
    EXPECT_EQ(output({"check", "--help"}).substr(0, 32), "usage: tolva-data check FILE...\n");
}

TEST_F(Usage, AWrongCallEndsWithTwoAndTheUsage) {
    EXPECT_EQ(run({}).code, 2);
    const auto unknown = run({"mend", "x.mdb"});
    EXPECT_EQ(unknown.code, 2);
    EXPECT_EQ(unknown.err, "tolva-data: no command \"mend\"; tolva-data --help lists them\n");
    for (const std::vector<std::string>& words : {std::vector<std::string>{"tables"},
                                                  {"dump", "x.mdb"},
                                                  {"dump", "x.mdb", "a", "b"},
                                                  {"set", "x.mdb", "select * from a"},
                                                  {"check"}}) {
        const auto result = run(words);
        EXPECT_EQ(result.code, 2) << words[0];
        EXPECT_EQ(result.err.substr(0, 19 + words[0].size()), "usage: tolva-data " + words[0] + " ");
        EXPECT_EQ(result.out, "");
    }
}

TEST_F(Usage, AFailureEndsWithOneAndSaysWhatFailed) {
    const std::string absent = folder.file("absent.mdb");
    for (const std::vector<std::string>& words : {std::vector<std::string>{"tables", absent},
                                                  {"schema", absent},
                                                  {"dump", absent, "table"},
                                                  {"query", absent, "select * from [table]"},
                                                  {"load", absent, "table"},
                                                  {"set", absent, "select * from [table]", "a=1"},
                                                  {"delete", absent, "select * from [table]"},
                                                  {"compact", absent, folder.file("new.mdb")}}) {
        const auto result = run(words);
        EXPECT_EQ(result.code, 1) << words[0];
        EXPECT_EQ(result.err, "tolva-data: Could not find file '" + absent + "'.\n") << words[0];
    }
    const auto no_schema = run({"make", folder.file("new.mdb"), folder.file("absent.schema")});
    EXPECT_EQ(no_schema.code, 1);
    EXPECT_NE(no_schema.err.find("absent.schema"), std::string::npos) << no_schema.err;
    EXPECT_FALSE(std::filesystem::exists(folder.file("new.mdb")));
}

TEST_F(Usage, AFileOfAnotherKindIsRefused) {
    const auto result = run({"tables", write("text.mdb", std::string(8192, 'x'))});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.err, "tolva-data: Unrecognized database format '" + folder.file("text.mdb") + "'.\n");
}

TEST_F(Usage, AFullOutputIsAFailure) {
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "this system has no device that is always full";
    const auto result =
        support::run_program({"sh", "-c", "\"$1\" --help >/dev/full", "sh", TOLVA_BUILD_DIR "/tolva-data"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.err, "tolva-data: the output could not be written\n");
}

} // namespace
} // namespace tolva::tools
