#include "files/file_system.h"
#include "jet/database.h"
#include "tools/tolva_data.h"

namespace tolva::tools {
namespace {

/// `tolva-data` while a program has the files, which is this one.
class Beside : public TolvaData {
  protected:
    Beside() {
        const std::filesystem::path delivered = TOLVA_BUILD_DIR "/delivered/data";
        std::filesystem::copy(delivered, data, std::filesystem::copy_options::recursive);
    }

    /// A running program's view of one of its stores.
    std::unique_ptr<jet::Database> open(const std::string& name) {
        return jet::Database::open(*disk, file(name));
    }
    static void add(jet::Database& database, std::int64_t id) {
        jet::Table& table = database.table("table");
        jet::Row row(table.schema().columns.size());
        for (std::size_t i = 0; i < row.size(); ++i)
            if (table.schema().columns[i].type == jet::ColumnType::boolean)
                row[i] = false;
        row[*table.find_column("id")] = id;
        table.insert(row);
    }

    std::string file(const std::string& name) const { return data.generic_string() + "/" + name; }
    std::string ids(const std::string& store) const {
        return output({"query", store, "select id from [table]"});
    }

    std::filesystem::path data = folder.path() / "data";
    std::unique_ptr<files::FileSystem> disk = files::make_disk();
};

TEST_F(Beside, ReadersSeeWhatIsCommittedAndNothingElse) {
    const auto listings = open("listings.mdb");
    add(*listings, 1);
    EXPECT_EQ(ids(file("listings.mdb")), "id\n");
    listings->commit();
    add(*listings, 2);
    EXPECT_EQ(ids(file("listings.mdb")), "id\n1\n");
    EXPECT_EQ(output({"check", file("listings.mdb")}), "");
    listings->commit();
    EXPECT_EQ(ids(file("listings.mdb")), "id\n1\n2\n");
}

TEST_F(Beside, WritersAreRefusedAndNothingChanges) {
    const auto listings = open("listings.mdb");
    add(*listings, 1);
    listings->commit();
    const std::string store = file("listings.mdb"), before = support::file_content(store);
    const std::string refusal = "tolva-data: Could not use '" + store + "'; file already in use.\n";
    EXPECT_EQ(run({"load", store, "table"}, "id\n7\n").err, refusal);
    EXPECT_EQ(run({"set", store, "select * from [table]", "id=7"}).err, refusal);
    EXPECT_EQ(run({"delete", store, "select * from [table]"}).err, refusal);
    EXPECT_EQ(support::file_content(store), before);
    add(*listings, 2);
    listings->commit();
    EXPECT_EQ(ids(store), "id\n1\n2\n");
}

TEST_F(Beside, CompactTakesTheFileOfARunningProgram) {
    const auto listings = open("listings.mdb");
    add(*listings, 1);
    listings->commit();
    add(*listings, 2);
    output({"compact", file("listings.mdb"), file("new.mdb")});
    EXPECT_EQ(ids(file("new.mdb")), "id\n1\n");
}

TEST_F(Beside, AFileThatAnotherEngineHasLockedIsNotWrittenTo) {
    TOLVA_NEEDS_COMMAND("flock");
    const std::string store = file("listings.mdb"), before = support::file_content(store);
    write("rows", "id\n7\n");
    const auto beside_lock = [&](const std::string& locked) {
        return support::run_program({"sh", "-c",
                                     "exec 9>>\"$1\"; flock -x 9; \"$2\" load \"$3\" table <\"$4\"", "sh",
                                     locked, TOLVA_BUILD_DIR "/tolva-data", store, folder.file("rows")});
    };
    for (const std::string& locked : {store, file("listings.ldb")}) {
        const auto result = beside_lock(locked);
        EXPECT_EQ(result.code, 1) << locked;
        EXPECT_EQ(result.err, "tolva-data: Could not use '" + store + "'; file already in use.\n");
    }
    EXPECT_EQ(support::file_content(store), before);
    // What is left beside the file is nobody's any more.
    ASSERT_TRUE(std::filesystem::exists(file("listings.ldb")));
    EXPECT_EQ(output({"load", store, "table"}, "id\n7\n"), "1 row loaded\n");
}

TEST_F(Beside, AFileThatAnotherProgramHasOpenToWriteIsNotWrittenTo) {
#ifndef _WIN32
    GTEST_SKIP() << "this system tells nobody who has a file open";
#endif
    const std::string store = file("listings.mdb"), before = support::file_content(store);
    std::fstream other(store, std::ios::binary | std::ios::in | std::ios::out);
    ASSERT_TRUE(other);
    EXPECT_EQ(run({"tables", store}).code, 0);
    const auto result = run({"load", store, "table"}, "id\n7\n");
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.err, "tolva-data: Could not use '" + store + "'; file already in use.\n");
    EXPECT_EQ(support::file_content(store), before);
    other.close();
    EXPECT_EQ(output({"load", store, "table"}, "id\n7\n"), "1 row loaded\n");
}

TEST_F(Beside, ABackupHoldsEveryFileAsItWasCommitted) {
    std::filesystem::create_directory(folder.path() / "letters");
    write("letters/Dear.rtf", "{\\rtf1 Dear}");
    write("data/P2026.FIL", std::string(15300, ' '));
    write("data/listings.ldb", "");
    const auto listings = open("listings.mdb");
    add(*listings, 1);
    listings->commit();
    add(*listings, 2);
    const std::string target = folder.file("copy");
    EXPECT_EQ(output({"backup", folder.path().generic_string(), target}), "16 files copied\n");
    EXPECT_EQ(ids(target + "/data/listings.mdb"), "id\n1\n");
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(target)) {
        if (!entry.is_regular_file())
            continue;
        ++files;
        const auto source = folder.path() / std::filesystem::relative(entry.path(), target);
        EXPECT_EQ(support::file_content(entry.path()), support::file_content(source)) << source;
    }
    EXPECT_EQ(files, 16u);
    EXPECT_FALSE(std::filesystem::exists(target + "/data/listings.ldb"));

    EXPECT_EQ(output({"backup", data.generic_string(), folder.file("data only")}), "15 files copied\n");
    EXPECT_TRUE(std::filesystem::exists(folder.file("data only/listings.mdb")));
}

TEST_F(Beside, AReaderTakesNoFileIntoMemoryThatIsLongerThanItsKindMayBe) {
    const std::string store = file("listings.mdb");
    std::filesystem::resize_file(store, std::uintmax_t{3} << 30); // with a hole
    const auto result = run({"tables", store});
    EXPECT_EQ(result.code, 1);
    EXPECT_NE(result.err.find("'" + store + "'"), std::string::npos) << result.err;
    EXPECT_NE(result.err.find("the file is longer than 2 GB"), std::string::npos) << result.err;
}

TEST_F(Beside, ABackupRefusesATargetThatIsNotEmpty) {
    const std::string target = folder.file("full");
    std::filesystem::create_directory(target);
    write("full/mine.txt", "mine");
    const auto result = run({"backup", data.generic_string(), target});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.err, "tolva-data: Path/File access error: '" + target + "' (is not empty)\n");
    std::filesystem::remove(target + "/mine.txt");
    EXPECT_EQ(output({"backup", data.generic_string(), target}), "14 files copied\n");
}

TEST_F(Beside, ABackupOfADeskThatLacksAStoreIsRefused) {
    std::filesystem::remove(file("sold.mdb"));
    const auto result = run({"backup", folder.path().generic_string(), folder.file("copy")});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.err, "tolva-data: Could not find file '" + file("sold.mdb") + "'.\n");
    EXPECT_FALSE(std::filesystem::exists(folder.file("copy")));
}

} // namespace
} // namespace tolva::tools
