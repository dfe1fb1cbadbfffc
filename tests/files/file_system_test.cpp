#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <thread>

#include "basic/run_time_error.h"
#include "files/file_system.h"
#include "support/samples.h"

namespace tolva::files {
namespace {

Bytes bytes(const std::string& text) {
    return {text.begin(), text.end()};
}

std::string text_of(FileSystem& disk, const std::string& path) {
    const Bytes content = read_whole(disk, path);
    return {content.begin(), content.end()};
}

int error_of(const std::function<void()>& action) {
    try {
        action();
    } catch (const basic::RunTimeError& error) {
        return error.number();
    }
    return 0;
}

/// The rules hold for the machine's disk and for the one in memory alike.
class Disk : public testing::TestWithParam<bool> {
  protected:
    Disk() : disk(GetParam() ? make_disk() : make_memory_disk()) {
        root = GetParam() ? folder.path().generic_string() : "/root";
        if (!GetParam())
            disk->make_folder(root);
    }
    std::string at(const std::string& name) const { return root + "/" + name; }
    void put(const std::string& name, const std::string& text) {
        disk->open(at(name), OpenMode::create_new)->write(0, bytes(text));
    }

    support::TemporaryFolder folder;
    std::unique_ptr<FileSystem> disk;
    std::string root;
};

INSTANTIATE_TEST_SUITE_P(Both, Disk, testing::Bool(),
                         [](const auto& chosen) { return chosen.param ? "Machine" : "Memory"; });

TEST_P(Disk, ReadsBackWhatWasWritten) {
    const auto file = disk->open(at("a.txt"), OpenMode::create_new);
    file->write(0, bytes("hello"));
    file->write(5, bytes(" there"));
    file->sync();
    EXPECT_EQ(file->size(), 11u);
    EXPECT_EQ(text_of(*disk, at("a.txt")), "hello there");
}

TEST_P(Disk, ReadsNoFurtherThanTheEnd) {
    put("a.txt", "abc");
    const auto file = disk->open(at("a.txt"), OpenMode::read);
    Bytes buffer(10);
    EXPECT_EQ(file->read(1, buffer), 2u);
    EXPECT_EQ(buffer[0], 'b');
    EXPECT_EQ(file->read(3, buffer), 0u);
    EXPECT_EQ(file->read(99, buffer), 0u);
}

TEST_P(Disk, AGapReadsAsZeros) {
    const auto file = disk->open(at("a.txt"), OpenMode::create_new);
    file->write(4, bytes("x"));
    EXPECT_EQ(text_of(*disk, at("a.txt")), std::string("\0\0\0\0x", 5));
}

TEST_P(Disk, TruncateShortensAndLengthens) {
    put("a.txt", "abcdef");
    const auto file = disk->open(at("a.txt"), OpenMode::read_write);
    file->truncate(2);
    EXPECT_EQ(text_of(*disk, at("a.txt")), "ab");
    file->truncate(4);
    EXPECT_EQ(text_of(*disk, at("a.txt")), std::string("ab\0\0", 4));
}

TEST_P(Disk, AMissingFileIs53AndAMissingFolder76) {
    EXPECT_EQ(error_of([&] { disk->open(at("gone.txt"), OpenMode::read); }), 53);
    EXPECT_EQ(error_of([&] { disk->open(at("gone.txt"), OpenMode::read_write); }), 53);
    EXPECT_EQ(error_of([&] { disk->open(at("nowhere/gone.txt"), OpenMode::read); }), 76);
    EXPECT_EQ(error_of([&] { disk->open(at("nowhere/new.txt"), OpenMode::create); }), 76);
    EXPECT_EQ(error_of([&] { disk->remove(at("gone.txt")); }), 53);
    EXPECT_EQ(error_of([&] { disk->list(at("nowhere")); }), 76);
}

TEST_P(Disk, CreateKeepsAndCreateNewRefusesWhatIsThere) {
    put("a.txt", "kept");
    disk->open(at("a.txt"), OpenMode::create);
    EXPECT_EQ(text_of(*disk, at("a.txt")), "kept");
    EXPECT_EQ(error_of([&] { disk->open(at("a.txt"), OpenMode::create_new); }), 58);
}

TEST_P(Disk, AFolderIsNoFile) {
    disk->make_folder(at("sub"));
    EXPECT_EQ(error_of([&] { disk->open(at("sub"), OpenMode::read); }), 75);
    EXPECT_EQ(error_of([&] { disk->make_folder(at("sub")); }), 75);
}

TEST_P(Disk, AFileIsNoFolderEither) {
    put("a.txt", "abc");
    EXPECT_EQ(error_of([&] { disk->list(at("a.txt")); }), 76);
}

TEST_P(Disk, AFileOpenedForReadingIsNotWritten) {
    put("a.txt", "abc");
    const auto file = disk->open(at("a.txt"), OpenMode::read);
    EXPECT_EQ(error_of([&] { file->write(0, bytes("x")); }), 75);
    EXPECT_EQ(text_of(*disk, at("a.txt")), "abc");
}

TEST_P(Disk, FindsANameInAnotherLetterCase) {
    disk->make_folder(at("Data"));
    put("Data/Listings.MDB", "x");
    EXPECT_TRUE(disk->exists(at("data/listings.mdb")));
    EXPECT_FALSE(disk->exists_exactly(at("data/listings.mdb")));
    EXPECT_TRUE(disk->exists_exactly(at("Data/Listings.MDB")));
    EXPECT_EQ(text_of(*disk, at("DATA\\listings.mdb")), "x");
    EXPECT_EQ(disk->resolve(at("data\\LISTINGS.mdb")), at("Data/Listings.MDB"));
}

TEST_P(Disk, FindsANameWithAnAccentInAnotherLetterCase) {
    put("\xc3\x89t\xc3\xa9.txt", "summer"); // E acute, t, e acute
    EXPECT_EQ(text_of(*disk, at("\xc3\xa9T\xc3\x89.TXT")), "summer");
}

TEST_P(Disk, ANameThatIsNowhereStaysAsGiven) {
    put("a.txt", "x");
    EXPECT_EQ(disk->resolve(at("None.txt")), at("None.txt"));
    EXPECT_EQ(disk->resolve(root + "\\Nowhere\\none.txt"), at("Nowhere/none.txt"));
    EXPECT_FALSE(disk->exists(at("None.txt")));
}

TEST_P(Disk, LongPathsAreAsGoodAsShortOnes) {
    std::string deep = root;
    for (int depth = 0; depth < 12; ++depth) {
        deep += "/a folder with a name of thirty characters"; // 12 of them are beyond what Windows' plain
                                                              // calls take
        disk->make_folder(deep);
    }
    const auto file = disk->open(deep + "/a.txt", OpenMode::create);
    file->write(0, bytes("far down"));
    file->sync();
    EXPECT_EQ(text_of(*disk, deep + "/A.TXT"), "far down");
    EXPECT_EQ(disk->list(deep), std::vector<std::string>{"a.txt"});
}

TEST_P(Disk, NamesMayHaveLettersOfAnyLanguage) {
    const std::string name = "Zoë Þór – 日本 😀";
    disk->make_folder(at(name));
    put(name + "/" + name, "found");
    EXPECT_EQ(text_of(*disk, at(name) + "\\" + name), "found");
    EXPECT_EQ(disk->list(at(name)), std::vector<std::string>{name});
    disk->rename(at(name + "/" + name), at(name + "/" + name + "2"));
    EXPECT_TRUE(disk->exists_exactly(at(name + "/" + name + "2")));
    disk->remove(at(name + "/" + name + "2"));
    EXPECT_EQ(disk->list(at(name)), std::vector<std::string>{});
}

TEST(DiskOfThisMachine, AShortNameInALongFolderIsALongPath) {
    const support::TemporaryFolder folder;
    const auto disk = make_disk();
    // No longer than Windows lets the current folder be, so that its file's path is longer than that.
    std::string deep = folder.path().generic_string() + "/";
    deep.append(std::max<std::size_t>(240, deep.size() + 20) - deep.size(), 'd');
    disk->make_folder(deep);
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(deep);
    const std::string name(60, 'n');
    disk->open(name, OpenMode::create)->write(0, bytes("here"));
    disk->rename(name, name + "2");
    const std::string found = text_of(*disk, name + "2");
    std::filesystem::current_path(before);
    EXPECT_EQ(found, "here");
    EXPECT_EQ(disk->list(deep), std::vector<std::string>{name + "2"});
}

/// Links are this test's own affair: a disk knows how to follow them, not how to make them.
TEST(DiskOfThisMachine, ALinkLeadsToItsFileAndStaysWhenThatIsReplaced) {
#ifdef _WIN32
    GTEST_SKIP() << "links to files are not for everybody to make there";
#else
    const support::TemporaryFolder folder;
    const auto disk = make_disk();
    disk->make_folder(folder.file("far"));
    const std::string file = folder.file("far/a.txt"), link = folder.file("link.txt");
    disk->open(file, OpenMode::create)->write(0, bytes("old"));
    std::filesystem::create_symlink("far/a.txt", link);
    const std::string real = std::filesystem::canonical(file).generic_string();
    EXPECT_EQ(disk->behind_links(link), real);
    EXPECT_EQ(disk->behind_links(folder.file("LINK.TXT")), real);
    EXPECT_EQ(disk->behind_links(file), file);
    EXPECT_EQ(disk->behind_links(folder.file("none.txt")), folder.file("none.txt"));

    replace_whole(*disk, link, bytes("new"));
    EXPECT_EQ(text_of(*disk, file), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(disk->list(folder.file("far")), std::vector<std::string>{"a.txt"});
#endif
}

TEST(DiskOfThisMachine, AFileKnowsWhetherItsNameIsStillItsOwn) {
#ifdef _WIN32
    GTEST_SKIP() << "an open file keeps its name there";
#else
    const support::TemporaryFolder folder;
    const auto disk = make_disk();
    const auto file = disk->open(folder.file("a.txt"), OpenMode::create);
    EXPECT_TRUE(file->is_in_place());
    disk->rename(folder.file("a.txt"), folder.file("b.txt"));
    EXPECT_FALSE(file->is_in_place());
    disk->open(folder.file("a.txt"), OpenMode::create);
    EXPECT_FALSE(file->is_in_place());
#endif
}

TEST_P(Disk, RenameReplacesTheTarget) {
    put("new.txt", "new");
    put("old.txt", "old");
    disk->rename(at("new.txt"), at("old.txt"));
    EXPECT_EQ(text_of(*disk, at("old.txt")), "new");
    EXPECT_FALSE(disk->exists(at("new.txt")));
}

TEST_P(Disk, ListsNamesInByteOrder) {
    put("b", "");
    put("a", "");
    disk->make_folder(at("C"));
    EXPECT_EQ(disk->list(root), (std::vector<std::string>{"C", "a", "b"}));
}

TEST_P(Disk, ALockHasOneHolder) {
    put("a.txt", "x");
    auto first = disk->open(at("a.txt"), OpenMode::read_write);
    const auto second = disk->open(at("a.txt"), OpenMode::read_write);
    EXPECT_TRUE(first->lock());
    EXPECT_TRUE(first->lock());
    EXPECT_FALSE(second->lock());
    first->unlock();
    EXPECT_TRUE(second->lock());
    EXPECT_FALSE(first->lock());
}

TEST_P(Disk, ALockEndsWithItsFile) {
    put("a.txt", "x");
    auto first = disk->open(at("a.txt"), OpenMode::read_write);
    const auto second = disk->open(at("a.txt"), OpenMode::read_write);
    EXPECT_TRUE(first->lock());
    EXPECT_FALSE(second->lock());
    first.reset();
    EXPECT_TRUE(second->lock());
}

TEST_P(Disk, ManyMayReadWhileOneHasTheClaim) {
    put("a.txt", "x");
    const auto writer = disk->open(at("a.txt"), OpenMode::sole_write);
    ASSERT_TRUE(writer->lock());
    const auto one = disk->open(at("a.txt"), OpenMode::read);
    const auto other = disk->open(at("a.txt"), OpenMode::read);
    EXPECT_TRUE(one->lock_content(Sharing::shared));
    EXPECT_TRUE(other->lock_content(Sharing::shared));
    EXPECT_EQ(text_of(*disk, at("a.txt")), "x");
    EXPECT_FALSE(one->locked_by_strangers());
    one->unlock_content();
    other->unlock_content();
    EXPECT_TRUE(writer->lock_content(Sharing::exclusive));
    writer->unlock_content();
    EXPECT_TRUE(one->lock_content(Sharing::shared));
}

TEST(MemoryDisk, AChangeAndAReadKeepEachOtherOut) {
    const auto disk = make_memory_disk();
    const auto writer = disk->open("a.txt", OpenMode::create);
    auto reader = disk->open("a.txt", OpenMode::read);
    EXPECT_TRUE(reader->lock_content(Sharing::shared));
    EXPECT_FALSE(writer->lock_content(Sharing::exclusive));
    reader.reset();
    EXPECT_TRUE(writer->lock_content(Sharing::exclusive));
    reader = disk->open("a.txt", OpenMode::read);
    EXPECT_FALSE(reader->lock_content(Sharing::shared));
    writer->unlock_content();
    EXPECT_TRUE(reader->lock_content(Sharing::shared));
}

TEST(DiskOfThisMachine, AChangeWaitsForAReadToEnd) {
    const support::TemporaryFolder folder;
    const auto disk = make_disk();
    const auto writer = disk->open(folder.file("a.txt"), OpenMode::create);
    auto reader = disk->open(folder.file("a.txt"), OpenMode::read);
    ASSERT_TRUE(reader->lock_content(Sharing::shared));
    std::atomic<bool> over = false;
    std::thread reading([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        over = true;
        reader.reset();
    });
    EXPECT_TRUE(writer->lock_content(Sharing::exclusive));
    EXPECT_TRUE(over);
    reading.join();
}

TEST_P(Disk, ReplaceWholeLeavesOnlyTheNewContent) {
    put("a.txt", "a long old content");
    replace_whole(*disk, at("A.TXT"), bytes("new"));
    EXPECT_EQ(text_of(*disk, at("a.txt")), "new");
    EXPECT_EQ(disk->list(root), std::vector<std::string>{"a.txt"});
    replace_whole(*disk, at("b.txt"), bytes("made"));
    EXPECT_EQ(text_of(*disk, at("b.txt")), "made");
}

TEST_P(Disk, ReplaceWholeSweepsUpWhatACutLeft) {
    put("a.txt", "old");
    put("a.txt.new", "half of the n");
    replace_whole(*disk, at("a.txt"), bytes("new"));
    EXPECT_EQ(text_of(*disk, at("a.txt")), "new");
    EXPECT_FALSE(disk->exists(at("a.txt.new")));
}

TEST_P(Disk, AFailureNamesThePathAndTheReason) {
    try {
        disk->open(at("gone.txt"), OpenMode::read);
        FAIL() << "opened";
    } catch (const basic::RunTimeError& error) {
        EXPECT_NE(error.text().find(at("gone.txt")), std::string::npos) << error.text();
        EXPECT_NE(error.text().find('('), std::string::npos) << error.text();
    }
}

TEST_P(Disk, SyncOfAFolderSucceeds) {
    put("a.txt", "x");
    EXPECT_NO_THROW(disk->sync_folder(root));
}

} // namespace
} // namespace tolva::files
