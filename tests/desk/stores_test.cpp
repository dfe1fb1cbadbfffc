#include <gtest/gtest.h>

#include <set>

#include "support/desk.h"
#include "support/read_only_disk.h"

namespace tolva {
namespace {

using support::Desk;

const char* const store_files[] = {"database.mdb", "listings.mdb", "address.mdb",    "prospect.mdb",
                                   "sold.mdb",     "zipcodes.mdb", "messagedata.mdb"};

std::set<std::string> data_files(const Desk& desk) {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(desk.folder.path() / "data"))
        names.insert(entry.path().filename().string());
    return names;
}

TEST(Stores, EveryMissingFileKeepsTheProgramFromTheMenu) {
    for (const char* name : store_files) {
        Desk desk;
        std::filesystem::remove(desk.data_file(name));
        const std::set<std::string> before = data_files(desk);
        desk.start();
        ASSERT_TRUE(desk.host.error) << name;
        EXPECT_EQ(desk.host.error->number, 3024) << name;
        EXPECT_EQ(desk.host.error->text.find("Could not find file '"), 0u) << desk.host.error->text;
        EXPECT_NE(desk.host.error->text.find(name), std::string::npos) << desk.host.error->text;
        EXPECT_FALSE(desk.module().Form1.loaded());
        EXPECT_EQ(data_files(desk), before) << "no file is created";
    }
}

TEST(Stores, TheFilesOpenInTheirFixedOrderAndTheFeaturesAreReadAfterThem) {
    constexpr std::size_t count = std::size(store_files);
    for (std::size_t first = 0; first <= count; ++first) {
        Desk desk;
        for (std::size_t file = first; file < count; ++file)
            std::filesystem::remove(desk.data_file(store_files[file]));
        std::filesystem::remove(desk.data_file("features.txt"));
        desk.start();
        const std::string missing = first < count ? store_files[first] : "features.txt";
        ASSERT_TRUE(desk.host.error) << missing;
        EXPECT_EQ(desk.host.error->number, first < count ? 3024 : 53) << missing;
        EXPECT_NE(desk.host.error->text.find(missing), std::string::npos) << desk.host.error->text;
    }
}

TEST(Stores, AMissingDataFolderIsReported) {
    Desk desk;
    std::filesystem::remove_all(desk.folder.path() / "data");
    desk.start();
    ASSERT_TRUE(desk.host.error);
    EXPECT_NE(desk.host.error->text.find("database.mdb"), std::string::npos) << desk.host.error->text;
    EXPECT_FALSE(std::filesystem::exists(desk.folder.path() / "data"));
}

TEST(Stores, FilesThatOnlyReadEndTheProgramAtTheFirstChange) {
    const auto disk = files::make_disk();
    Desk desk;
    desk.disk = std::make_unique<support::ReadOnlyDisk>(*disk);
    desk.restart();
    desk.start();
    ASSERT_FALSE(desk.host.error) << desk.host.error->text;
    desk.click(desk.menu().Command9);
    EXPECT_TRUE(desk.listings().visible());
    desk.wait_minutes(1);
    ASSERT_TRUE(desk.host.error) << "the day's stamp cannot be stored";
    EXPECT_EQ(desk.host.error->number, 3027);
}

TEST(Stores, AForeignFileIsReportedAndNotTouched) {
    Desk desk;
    const std::string content = "this is no database, but somebody wrote it" + std::string(9000, '.');
    std::ofstream(desk.data_file("sold.mdb"), std::ios::binary) << content;
    desk.start();
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 3343);
    EXPECT_EQ(desk.host.error->text.find("Unrecognized database format '"), 0u);
    EXPECT_EQ(support::file_content(desk.data_file("sold.mdb")), content);
}

TEST(Stores, ADamagedFileIsReportedWithFilePageAndReason) {
    Desk desk;
    {
        std::fstream file(desk.data_file("listings.mdb"), std::ios::binary | std::ios::in | std::ios::out);
        file.seekp(2 * 4096);
        file << std::string(4096, '\xFF');
    }
    desk.start();
    ASSERT_TRUE(desk.host.error);
    EXPECT_NE(desk.host.error->text.find("listings.mdb"), std::string::npos) << desk.host.error->text;
    EXPECT_NE(desk.host.error->text.find("Page 2: "), std::string::npos) << desk.host.error->text;
}

TEST(Stores, AnEmptySettingsTableKeepsTheProgramFromStarting) {
    Desk desk;
    {
        dao::DBEngine engine(*desk.disk, [] { return 2026; });
        const auto database = engine.Workspaces(0).OpenDatabase(desk.data_file("database.mdb"));
        database->OpenRecordset("preference_table")->Delete();
        engine.commit();
    }
    desk.start();
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 3021);
}

TEST(Stores, ARowUnderAddNewAtTheEndIsDropped) {
    Desk desk;
    desk.start();
    desk.module().listingset = desk.module().listingdb->OpenRecordset("select * from [table]");
    desk.module().listingset->AddNew();
    desk.module().listingset->write("id", std::int64_t{1});
    desk.click(desk.menu().Command8);
    desk.restart();
    desk.start();
    EXPECT_TRUE(desk.stored_listings().empty());
}

TEST(Stores, TheCounterIsStoredAheadOfTheNewRow) {
    Desk desk;
    desk.start();
    desk.click(desk.menu().Command9);
    // What fails after the counter was drawn leaves a gap, never a number given twice.
    desk.listings().first.text = "x";
    desk.module().listingset = desk.module().listingdb->OpenRecordset("select * from [table]");
    desk.choose(desk.listings().m_newlisting);
    EXPECT_EQ(desk.stored_settings()["listing_counter"], "1");
    desk.restart();
    desk.start();
    desk.click(desk.menu().Command9);
    desk.choose(desk.listings().m_newlisting);
    EXPECT_EQ(desk.listings().id.text, "2");
}

TEST(Stores, WhatAnEventStoredSurvivesAKilledProgram) {
    Desk desk;
    desk.start();
    desk.click(desk.menu().Command9);
    desk.choose(desk.listings().m_newlisting);
    desk.type(desk.listings().last, "Stored");
    desk.choose(desk.listings().m_savelisting);
    desk.restart();
    desk.start();
    ASSERT_EQ(desk.stored_listings().size(), 1u);
    EXPECT_EQ(desk.stored_listings()[0]["last"], "Stored");
}

TEST(Stores, DataFilesAreFoundInAnotherLetterCase) {
    Desk desk;
    std::filesystem::rename(desk.data_file("listings.mdb"), desk.data_file("Listings.MDB"));
    std::filesystem::rename(desk.folder.path() / "data", desk.folder.path() / "Data");
    desk.start();
    EXPECT_FALSE(desk.host.error);
}

} // namespace
} // namespace tolva
