#include <algorithm>

#include "tools/table_rows.h"
#include "tools/tolva_data.h"

namespace tolva::tools {
namespace {

namespace fs = std::filesystem;

const std::vector<std::string> stores = {"address",  "database", "listings", "messagedata",
                                         "prospect", "sold",     "zipcodes"};

/// `lay_desk` of tools/desk.sh with a stand-in for the desktop program.
class DeskLayout : public TolvaData {
  protected:
    void SetUp() override {
        TOLVA_NEEDS_COMMAND("bash");
        fs::create_directory(build);
        write("build/tolva", "first program");
        for (const char* tool : {"tolva-data", "tolva-sample"})
            fs::create_symlink(fs::path(TOLVA_BUILD_DIR) / tool, build / tool);
    }

    support::ProgramRun lay(const std::string& kind = "own") const {
        return support::run_program(
            {"bash", "-c",
             "set -u -o pipefail; . \"$1/tools/setup.sh\"; . \"$1/tools/desk.sh\"; build=$2; "
             "lay_desk \"$3\" \"$4\"",
             "layout", TOLVA_SOURCE_DIR, build.string(), desk.string(), kind});
    }

    TableRows table(const std::string& store) const {
        return TableRows(output({"dump", (desk / "data" / (store + ".mdb")).string(),
                                 store == "database" ? "preference_table" : "table"}));
    }

    const fs::path build = folder.path() / "build";
    const fs::path desk = folder.path() / "desk";
};

std::vector<std::string> names_in(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

TEST_F(DeskLayout, ANewDeskIsCompleteAndSound) {
    const auto result = lay();
    ASSERT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(names_in(desk), (std::vector<std::string>{"data", "letters", "tolva"}));
    EXPECT_EQ(names_in(desk / "data"),
              (std::vector<std::string>{"TOLVA_Documentation.rtf", "TOLVA_Tutorial.rtf", "address.mdb",
                                        "basement.txt", "construction.txt", "database.mdb", "features.txt",
                                        "garage.txt", "listings.mdb", "listingsource.txt", "messagedata.mdb",
                                        "prospect.mdb", "sold.mdb", "zipcodes.mdb"}));
    std::vector<std::string> check = {"check"};
    for (const std::string& store : stores)
        check.push_back((desk / "data" / (store + ".mdb")).string());
    EXPECT_EQ(output(check), "");
    for (const std::string& store : stores) {
        if (store != "database" && store != "zipcodes") {
            EXPECT_EQ(table(store).rows.size(), 0u) << store;
        }
    }
    EXPECT_EQ(table("database").rows,
              TableRows(support::file_content(TOLVA_SOURCE_DIR "/delivery/rows/database.tsv")).rows);
    EXPECT_TRUE(table("zipcodes").rows ==
                TableRows(support::file_content(TOLVA_SOURCE_DIR "/delivery/rows/zipcodes.tsv")).rows);
    EXPECT_EQ(support::file_content(desk / "data/features.txt"),
              support::file_content(TOLVA_SOURCE_DIR "/delivery/data/features.txt"));
    EXPECT_EQ(names_in(desk / "letters"), names_in(TOLVA_SOURCE_DIR "/delivery/letters"));
    EXPECT_EQ(support::file_content(desk / "tolva"), "first program");
}

TEST_F(DeskLayout, WhatIsThereIsNeverTouched) {
    ASSERT_EQ(lay().code, 0);
    write("desk/data/listings.mdb", "mine");
    write("desk/letters/Thank You.rtf", "my letter");
    fs::remove(desk / "data/garage.txt");
    const auto again = lay();
    EXPECT_EQ(again.code, 0) << again.err;
    EXPECT_EQ(again.out, "");
    EXPECT_EQ(support::file_content(desk / "data/listings.mdb"), "mine");
    EXPECT_EQ(support::file_content(desk / "letters/Thank You.rtf"), "my letter");
    EXPECT_FALSE(fs::exists(desk / "data/garage.txt"));
}

TEST_F(DeskLayout, FoldersInAnotherLetterCaseCountAsThere) {
    fs::create_directories(desk / "DATA");
    fs::create_directories(desk / "Letters");
    EXPECT_EQ(lay().code, 0);
    EXPECT_EQ(names_in(desk), (std::vector<std::string>{"DATA", "Letters", "tolva"}));
    EXPECT_EQ(names_in(desk / "DATA"), std::vector<std::string>{});
}

TEST_F(DeskLayout, AHalfMadeFolderIsMadeAnew) {
    fs::create_directories(desk / "data.unfinished");
    fs::create_directories(desk / "letters.unfinished");
    write("desk/data.unfinished/listings.mdb", "cut short");
    write("desk/letters.unfinished/half.rtf", "{");
    const auto result = lay();
    ASSERT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(names_in(desk), (std::vector<std::string>{"data", "letters", "tolva"}));
    EXPECT_EQ(table("listings").rows.size(), 0u);
    EXPECT_FALSE(fs::exists(desk / "letters/half.rtf"));
}

TEST_F(DeskLayout, AFailureSaysSoAndLeavesNothingThatLooksFinished) {
    fs::remove(build / "tolva-data");
    fs::create_symlink("/bin/false", build / "tolva-data");
    const auto result = lay();
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.err, "layout: address.mdb could not be made\n");
    EXPECT_FALSE(fs::exists(desk / "data"));

    fs::remove(build / "tolva-data");
    fs::create_symlink(fs::path(TOLVA_BUILD_DIR) / "tolva-data", build / "tolva-data");
    EXPECT_EQ(lay().code, 0);
    EXPECT_EQ(table("database").rows.size(), 1u);
}

TEST_F(DeskLayout, ANewerProgramTakesTheOldOnesPlace) {
    fs::create_directories(desk / "data");
    fs::create_directories(desk / "letters");
    ASSERT_EQ(lay().code, 0);
    write("build/tolva", "second program");
    ASSERT_EQ(lay().code, 0);
    EXPECT_EQ(support::file_content(desk / "tolva"), "second program");
    EXPECT_EQ(names_in(desk), (std::vector<std::string>{"data", "letters", "tolva"}));
}

TEST_F(DeskLayout, WithoutADisplayTheCommandSaysSoAndDoesNothing) {
    const auto result =
        support::run_program({"env", "-u", "DISPLAY", "-u", "WAYLAND_DISPLAY", TOLVA_SOURCE_DIR "/tolva"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    EXPECT_EQ(result.err.substr(0, 18), "tolva: no display:");
}

TEST_F(DeskLayout, AnUnknownDeskIsWrongUse) {
    const auto result = support::run_program({TOLVA_SOURCE_DIR "/tolva", "other"});
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.err.substr(0, 6), "usage:");
}

} // namespace
} // namespace tolva::tools
