#include <gtest/gtest.h>

#include <new>
#include <utility>

#include "basic/run_time_error.h"
#include "jet/bytes.h"
#include "jet/file_pager.h"
#include "jet/header_page.h"
#include "jet/stored_content.h"
#include "support/faulty_disk.h"
#include "support/jet_files.h"
#include "support/passing_disk.h"
#include "support/read_only_disk.h"
#include "support/samples.h"

namespace tolva::jet {
namespace {

using support::error_of;
using support::FaultyDisk;
using support::PowerCut;
using Fault = FaultyDisk::Fault;

const std::string path = "a.mdb";
const std::string journal = "a.mdb-journal";
constexpr PageNumber pages_at_first = 12;

files::Bytes plain_file() {
    return support::file_of_pages(jet4_format, pages_at_first);
}

void fill(Pager& pager, PageNumber page, std::uint8_t value) {
    const auto bytes = pager.modify(page);
    std::fill(bytes.begin(), bytes.end(), value);
}

/// The change whose commit the tests cut.
void change(Pager& pager) {
    fill(pager, 3, 0xa3);
    fill(pager, 4, 0xa4);
    fill(pager, 9, 0xa9);
    fill(pager, pager.append(), 0xaa);
    fill(pager, pager.append(), 0xab);
}

files::Bytes changed_file() {
    FaultyDisk disk({{path, plain_file()}});
    FilePager pager(disk, path);
    change(pager);
    pager.commit();
    return disk.content().at(path);
}

/// Whether there is no journal, or one without a header.
bool tells_of_nothing(const std::map<std::string, files::Bytes>& content) {
    const auto found = content.find(journal);
    if (found == content.end())
        return true;
    const auto header = std::span(found->second).first(std::min<std::size_t>(found->second.size(), 4096));
    return std::all_of(header.begin(), header.end(), [](std::uint8_t byte) { return byte == 0; });
}

TEST(Pager, AReferenceNeverChanges) {
    FaultyDisk disk({{path, plain_file()}});
    FilePager pager(disk, path);
    const PageRef clean = pager.read(5);
    fill(pager, 5, 0xf0);
    const PageRef pending = pager.read(5);
    fill(pager, 5, 0xf1);
    EXPECT_EQ((*clean)[7], 5);
    EXPECT_EQ((*pending)[7], 0xf0);
    EXPECT_EQ((*pager.read(5))[7], 0xf1);
    pager.rollback();
    EXPECT_EQ((*pager.read(5))[7], 5);
    EXPECT_EQ((*pending)[7], 0xf0);
}

TEST(Pager, UndoPutsBackOneStatementOnly) {
    FaultyDisk disk({{path, plain_file()}});
    FilePager pager(disk, path);
    fill(pager, 3, 0xf0);
    const PageNumber kept = pager.append();
    fill(pager, kept, 0xf5);
    pager.begin_statement();
    fill(pager, 3, 0xf1);
    fill(pager, 3, 0xf2);
    fill(pager, 4, 0xf3);
    fill(pager, kept, 0xf6);
    fill(pager, pager.append(), 0xf4);
    pager.undo_statement();
    EXPECT_EQ((*pager.read(3))[0], 0xf0);
    EXPECT_EQ((*pager.read(4))[0], 4);
    EXPECT_EQ((*pager.read(kept))[0], 0xf5);
    EXPECT_EQ(pager.page_count(), pages_at_first + 1);
}

TEST(Pager, ACommitLeavesNoJournalAndTheCommitBytesAtRest) {
    FaultyDisk disk({{path, plain_file()}});
    {
        FilePager pager(disk, path);
        change(pager);
        EXPECT_TRUE(pager.dirty());
        pager.commit();
        EXPECT_FALSE(pager.dirty());
    }
    const auto content = disk.content();
    EXPECT_EQ(content.size(), 1u);
    const files::Bytes& file = content.at(path);
    EXPECT_EQ(file.size(), (pages_at_first + 2) * jet4_format.page_size);
    EXPECT_EQ(file[0xe00], 0x00);
    EXPECT_EQ(file[0xe01], 0x01);
    EXPECT_EQ(file[3 * jet4_format.page_size + 100], 0xa3);
    EXPECT_EQ(file[13 * jet4_format.page_size + 100], 0xab);
}

TEST(Pager, BetweenTheCommitsOfAnOpenFileItsJournalStaysBlank) {
    FaultyDisk disk({{path, plain_file()}});
    {
        FilePager pager(disk, path);
        change(pager);
        pager.commit();
        EXPECT_TRUE(disk.exists(journal));
        EXPECT_TRUE(tells_of_nothing(disk.content()));
        EXPECT_TRUE(tells_of_nothing(disk.survivors(0, 512))) << "not even when the power goes now";
        const FilePager reader(disk, path, FilePager::Access::read);
        EXPECT_EQ((*reader.read(3))[0], 0xa3);
    }
    EXPECT_FALSE(disk.exists(journal));
}

TEST(Pager, AKeptJournalThatSomebodyWroteToServesTheNextCommit) {
    FaultyDisk disk({{path, plain_file()}});
    FilePager pager(disk, path);
    fill(pager, 6, 0xb6);
    pager.commit();
    disk.open(journal, files::OpenMode::create)->write(0, files::Bytes(9000, 0x55));
    change(pager);
    pager.commit();
    EXPECT_TRUE(tells_of_nothing(disk.content()));
    EXPECT_EQ(disk.content().at(path)[3 * jet4_format.page_size], 0xa3);
}

/// A disk on which something happens right after the question whether the journal is there.
class MeddledDisk final : public support::PassingDisk {
  public:
    using PassingDisk::PassingDisk;

    bool exists_exactly(const std::string& name) const override {
        const bool found = PassingDisk::exists_exactly(name);
        if (found && name == journal && then)
            std::exchange(then, nullptr)();
        return found;
    }
    mutable std::function<void()> then;
};

TEST(Pager, AReaderComesWhileTheWriterCloses) {
    FaultyDisk disk({{path, plain_file()}});
    auto writer = std::make_unique<FilePager>(disk, path);
    fill(*writer, 3, 0xc3);
    writer->commit();
    MeddledDisk beside(disk);
    beside.then = [&] { writer.reset(); };
    const FilePager reader(beside, path, FilePager::Access::read);
    EXPECT_EQ(writer, nullptr);
    EXPECT_EQ((*reader.read(3))[0], 0xc3);
}

TEST(Pager, ALongJournalGoesWithItsCommit) {
    files::Bytes file = plain_file();
    file.resize(300 * jet4_format.page_size);
    FaultyDisk disk({{path, file}});
    FilePager pager(disk, path);
    for (PageNumber page = 1; page < 300; ++page)
        fill(pager, page, 0xc1);
    pager.commit();
    EXPECT_FALSE(disk.exists(journal));
    fill(pager, 299, 0xc2);
    pager.commit();
    EXPECT_TRUE(tells_of_nothing(disk.content()));
    EXPECT_EQ(disk.content().at(path)[299 * jet4_format.page_size], 0xc2);
    EXPECT_EQ(disk.content().at(path)[298 * jet4_format.page_size], 0xc1);
}

TEST(Pager, WhileAFileIsWrittenItsCommitBytesSaySo) {
    // Killed at each step of a commit: whenever the pages are neither the old nor the new ones, page 0 tells
    // other programs.
    const files::Bytes before = plain_file(), after = changed_file();
    bool seen = false;
    for (int operation = 1;; ++operation) {
        FaultyDisk disk({{path, before}});
        FilePager pager(disk, path);
        change(pager);
        disk.plan({Fault::kill, operation, 0, 512});
        try {
            pager.commit();
            break;
        } catch (const PowerCut&) {
        }
        const files::Bytes file = disk.survivors().at(path);
        if (file == before || file == after)
            continue;
        EXPECT_TRUE(commit_was_cut(jet4_format, file));
        seen = true;
    }
    EXPECT_TRUE(seen);
}

TEST(Pager, WhatAWalkReadAheadIsForgottenWithACommit) {
    // Fewer pages are kept in memory than the file has, so that what was committed has to be read again.
    constexpr PageNumber pages = 1000, kept = 50;
    files::Bytes file = plain_file();
    file.resize(pages * jet4_format.page_size);
    FaultyDisk disk({{path, file}});
    FilePager pager(disk, path, FilePager::Access::write, kept * Page::largest);
    for (const PageNumber page : {1u, 2u, 3u})
        EXPECT_EQ((*pager.read(page))[0], page);
    fill(pager, 9, 0xa9);
    pager.commit();
    for (PageNumber page = pages; --page > 100;)
        EXPECT_EQ((*pager.read(page))[0], 0);
    EXPECT_EQ((*pager.read(8))[0], 8);
    EXPECT_EQ((*pager.read(9))[0], 0xa9);
    EXPECT_EQ((*pager.read(10))[0], 10);
}

TEST(Pager, AWalkComesToTheFilesEnd) {
    FaultyDisk disk({{path, plain_file()}});
    FilePager pager(disk, path);
    for (PageNumber page = 1; page < pages_at_first; ++page)
        EXPECT_EQ((*pager.read(page))[jet4_format.page_size - 1], page);
    EXPECT_EQ(error_of([&] { pager.read(pages_at_first); }), 3049);
}

TEST(Pager, WhatIsPendingIsDroppedWithThePager) {
    FaultyDisk disk({{path, plain_file()}});
    {
        FilePager pager(disk, path);
        change(pager);
    }
    EXPECT_EQ(disk.content().at(path), plain_file());
}

TEST(Pager, ASecondOpeningIsRefusedWhileTheFirstLives) {
    FaultyDisk disk({{path, plain_file()}});
    auto first = std::make_unique<FilePager>(disk, path);
    EXPECT_EQ(error_of([&] { FilePager second(disk, path); }), 3045);
    first.reset();
    EXPECT_EQ(error_of([&] { FilePager second(disk, path); }), 0);
}

/// A file on this machine's own disk.
class PagerOnDisk : public testing::Test {
  protected:
    PagerOnDisk() { put(file, plain_file()); }

    void put(const std::string& name, const files::Bytes& content) {
        const auto made = disk->open(name, files::OpenMode::create);
        made->write(0, content);
    }
    void set_length(std::uint64_t length) { disk->open(file, files::OpenMode::read_write)->truncate(length); }

    const support::TemporaryFolder folder;
    const std::unique_ptr<files::FileSystem> disk = files::make_disk();
    const std::string file = folder.file("a.mdb");
};

TEST_F(PagerOnDisk, AFileEndsWhereItsVersionEnds) {
    for (const Format& format : {jet3_format, jet4_format}) {
        files::Bytes header(format.page_size);
        write_header(format, header, 45000.5);
        put(file, header);
        set_length(format.longest_file - format.page_size); // of blanks, which take no room
        FilePager pager(*disk, file);
        fill(pager, pager.append(), 0xaa);
        EXPECT_EQ(error_of([&] { pager.append(); }), 75);
        EXPECT_EQ(pager.page_count(), format.longest_file / format.page_size);
    }
    set_length(jet4_format.longest_file + jet4_format.page_size);
    EXPECT_EQ(error_of([&] { FilePager(*disk, file); }), 3049);
}

TEST_F(PagerOnDisk, AMapReachesToTheEndOfTheLongestFile) {
    for (const Format& format : {jet3_format, jet4_format}) {
        const std::size_t references = (format.map.inline_size - 1) / 4;
        const std::size_t pages_of_each = (format.page_size - format.map.page_bits) * 8;
        EXPECT_GE(references * pages_of_each * format.page_size, format.longest_file);
    }
}

TEST_F(PagerOnDisk, AJournalLiesBesideTheFileThatALinkLeadsTo) {
#ifdef _WIN32
    GTEST_SKIP() << "links to files are not for everybody to make there";
#else
    const std::string link = folder.file("link.mdb");
    std::filesystem::create_symlink("a.mdb", link);
    put(link + "-journal", {1, 2, 3});
    {
        FilePager pager(*disk, link);
        change(pager);
        pager.commit();
    }
    EXPECT_EQ(files::read_whole(*disk, file), changed_file());
    put(file + "-journal", {1, 2, 3});
    for (const auto access : {FilePager::Access::write, FilePager::Access::read})
        EXPECT_EQ(error_of([&] { FilePager(*disk, link, access); }), 3049);
#endif
}

TEST_F(PagerOnDisk, AClosingLeavesTheJournalOfAFileThatTookThePlaceOfItsOwn) {
#ifdef _WIN32
    GTEST_SKIP() << "an open file keeps its place there";
#else
    auto first = std::make_unique<FilePager>(*disk, file);
    fill(*first, 3, 0xc3);
    first->commit();
    put(folder.file("copy.mdb"), plain_file());
    disk->rename(folder.file("copy.mdb"), file);
    const FilePager second(*disk, file); // sweeps away what the first one kept
    put(file + "-journal", files::Bytes(4096));
    first.reset();
    EXPECT_TRUE(disk->exists(file + "-journal"));
#endif
}

TEST_F(PagerOnDisk, NothingIsCommittedToAFileThatAnotherOneReplaced) {
#ifdef _WIN32
    GTEST_SKIP() << "an open file keeps its place there";
#else
    FilePager pager(*disk, file);
    change(pager);
    const files::Bytes copy = changed_file();
    put(folder.file("copy.mdb"), copy);
    disk->rename(folder.file("copy.mdb"), file);
    EXPECT_EQ(error_of([&] { pager.commit(); }), 75);
    EXPECT_TRUE(pager.dirty()) << "what is pending was not stored";
    EXPECT_EQ(files::read_whole(*disk, file), copy);
    EXPECT_EQ(disk->list(folder.path().generic_string()), std::vector<std::string>{"a.mdb"});
#endif
}

TEST(Pager, APageBeyondTheEndIsDamage) {
    FaultyDisk disk({{path, plain_file()}});
    FilePager pager(disk, path);
    EXPECT_EQ(error_of([&] { pager.read(pages_at_first); }), 3049);
    EXPECT_EQ(error_of([&] { pager.modify(4000000000u); }), 3049);
}

struct Cut {
    Fault fault;
    std::size_t sector;
    std::uint32_t seeds;
};

class CutCommit : public testing::TestWithParam<Cut> {};

INSTANTIATE_TEST_SUITE_P(Cuts, CutCommit,
                         testing::Values(Cut{Fault::kill, 512, 1}, Cut{Fault::power_cut, 512, 60},
                                         Cut{Fault::power_cut, 4096, 60}),
                         [](const auto& chosen) {
                             return chosen.param.fault == Fault::kill
                                        ? std::string("Kill")
                                        : "Power" + std::to_string(chosen.param.sector);
                         });

/// Opens what survived, cutting the recovery itself at operation `operation`; true when it was not cut.
bool recover(FaultyDisk& disk, const FaultyDisk::Plan& plan) {
    disk.plan(plan);
    try {
        FilePager pager(disk, path);
        return true;
    } catch (const PowerCut&) {
        return false;
    }
}

/// Cuts what `commit` does to the file that `prepare` leaves at each operation, and expects one of two
/// images.
void expect_whole_or_absent(const Cut& cut, const files::Bytes& first,
                            const std::function<void(FaultyDisk&, FilePager&)>& prepare,
                            const std::function<void(FilePager&)>& commit) {
    FaultyDisk undisturbed({{path, first}});
    FilePager pager(undisturbed, path);
    prepare(undisturbed, pager);
    const files::Bytes before = undisturbed.content().at(path);
    commit(pager);
    const files::Bytes after = undisturbed.content().at(path);
    int old_images = 0, new_images = 0;
    bool done = false;
    for (int operation = 1; !done; ++operation) {
        FaultyDisk disk({{path, first}});
        {
            FilePager other(disk, path);
            prepare(disk, other);
            disk.plan({cut.fault, operation, 0, cut.sector});
            try {
                commit(other);
                done = true;
            } catch (const PowerCut&) {
            }
        }
        for (std::uint32_t seed = 0; seed < cut.seeds && !done; ++seed) {
            FaultyDisk next(disk.survivors(seed, cut.sector));
            ASSERT_TRUE(recover(next, {}));
            const auto content = next.content();
            ASSERT_EQ(content.size(), 1u) << "operation " << operation << " seed " << seed;
            const files::Bytes& file = content.at(path);
            ASSERT_TRUE(file == before || file == after) << "operation " << operation << " seed " << seed;
            ++(file == before ? old_images : new_images);

            FaultyDisk again(content);
            ASSERT_TRUE(recover(again, {}));
            ASSERT_EQ(again.content(), content) << "a second recovery changed something";
        }
    }
    EXPECT_GT(old_images, 0);
    EXPECT_GT(new_images, 0);
}

TEST_P(CutCommit, LeavesTheCommitWholeOrAbsent) {
    expect_whole_or_absent(
        GetParam(), plain_file(), [](FaultyDisk&, FilePager&) {},
        [](FilePager& pager) {
            change(pager);
            pager.commit();
        });
}

TEST_P(CutCommit, ARecoveryThatIsCutCanBeDoneAgain) {
    const files::Bytes before = plain_file(), after = changed_file();
    int cut_recoveries = 0;
    bool done = false;
    for (int operation = 1; !done; ++operation) {
        for (std::uint32_t seed = 0; seed < GetParam().seeds; seed += 7) {
            FaultyDisk disk({{path, before}});
            FilePager pager(disk, path);
            change(pager);
            disk.plan({GetParam().fault, operation, seed, GetParam().sector});
            try {
                pager.commit();
                done = true;
                break;
            } catch (const PowerCut&) {
            }
            const auto survivors = disk.survivors();
            for (int second = 1;; ++second) {
                FaultyDisk next(survivors);
                if (recover(next, {GetParam().fault, second, seed + 1, GetParam().sector}))
                    break;
                ++cut_recoveries;
                FaultyDisk last(next.survivors());
                ASSERT_TRUE(recover(last, {}));
                const files::Bytes file = last.content().at(path);
                ASSERT_TRUE(file == before || file == after)
                    << "operation " << operation << ", then " << second << ", seed " << seed;
            }
        }
    }
    EXPECT_GT(cut_recoveries, 0);
}

TEST_P(CutCommit, AReportedCommitStays) {
    // The cut comes in the commit that follows it.
    const files::Bytes after = changed_file();
    bool done = false;
    for (int operation = 1; !done; ++operation) {
        for (std::uint32_t seed = 0; seed < GetParam().seeds; ++seed) {
            FaultyDisk disk({{path, plain_file()}});
            FilePager pager(disk, path);
            change(pager);
            pager.commit();
            fill(pager, 6, 0xb6);
            disk.plan({GetParam().fault, operation, seed, GetParam().sector});
            try {
                pager.commit();
                done = true;
                break;
            } catch (const PowerCut&) {
            }
            FaultyDisk next(disk.survivors());
            ASSERT_TRUE(recover(next, {}));
            files::Bytes file = next.content().at(path);
            if (file[6 * jet4_format.page_size] == 0xb6)
                std::fill_n(file.begin() + 6 * static_cast<std::ptrdiff_t>(jet4_format.page_size),
                            jet4_format.page_size, std::uint8_t{6});
            ASSERT_EQ(file, after) << "operation " << operation << " seed " << seed;
        }
    }
}

constexpr PageNumber many_pages = 130;

files::Bytes longer_file() {
    files::Bytes file = plain_file();
    file.resize(many_pages * jet4_format.page_size, 0x11);
    return file;
}

/// More pages than a journal's header has room to name, in several runs of neighbours.
void change_many(Pager& pager) {
    for (PageNumber page = 2; page < many_pages; ++page)
        if (page % 6 != 0)
            fill(pager, page, 0xd2);
}

TEST_P(CutCommit, OfMoreBlocksThanAHeaderNamesIsWholeOrAbsent) {
    expect_whole_or_absent(
        GetParam(), longer_file(), [](FaultyDisk&, FilePager&) {},
        [](FilePager& pager) {
            change_many(pager);
            pager.commit();
        });
}

TEST_P(CutCommit, InTheJournalThatALongerOneLeftIsWholeOrAbsent) {
    expect_whole_or_absent(
        GetParam(), longer_file(),
        [](FaultyDisk& disk, FilePager& pager) {
            change_many(pager);
            pager.commit();
            EXPECT_TRUE(disk.exists(journal));
        },
        [](FilePager& pager) {
            change(pager);
            pager.commit();
        });
}

TEST_P(CutCommit, AfterTheKeptJournalWasTakenAwayOrReplacedIsWholeOrAbsent) {
    for (const bool replaced : {false, true})
        expect_whole_or_absent(
            GetParam(), plain_file(),
            [replaced](FaultyDisk& disk, FilePager& pager) {
                fill(pager, 6, 0xb6);
                pager.commit();
                disk.remove(journal);
                if (replaced)
                    disk.open(journal, files::OpenMode::create_new); // whose name the device doesn't know
            },
            [](FilePager& pager) {
                change(pager);
                pager.commit();
            });
}

class FailingCommit : public testing::TestWithParam<Fault> {};

INSTANTIATE_TEST_SUITE_P(Faults, FailingCommit, testing::Values(Fault::fail_once, Fault::fail_for_good));

TEST_P(FailingCommit, LeavesTheOldFileOrTheNewOne) {
    const files::Bytes before = plain_file(), after = changed_file();
    bool failed = false;
    for (int operation = 1;; ++operation) {
        FaultyDisk disk({{path, before}});
        bool reported = false;
        {
            FilePager pager(disk, path);
            change(pager);
            disk.plan({GetParam(), operation, 0, 512});
            const int error = error_of([&] { pager.commit(); });
            EXPECT_TRUE(error == 0 || error == 75) << error;
            reported = error == 0;
            failed = failed || !reported;
        }
        const bool reached = disk.operations() >= operation;
        FaultyDisk next(disk.content());
        ASSERT_TRUE(recover(next, {}));
        const files::Bytes file = next.content().at(path);
        ASSERT_TRUE(file == before || file == after) << "operation " << operation;
        if (reported) {
            ASSERT_EQ(file, after) << "operation " << operation;
        }
        EXPECT_EQ(next.content().size(), 1u);
        if (!reached)
            break;
    }
    EXPECT_TRUE(failed);
}

TEST(Pager, AFailedCommitCanBeTriedAgain) {
    const files::Bytes before = plain_file(), after = changed_file();
    for (int operation = 1;; ++operation) {
        FaultyDisk disk({{path, before}});
        FilePager pager(disk, path);
        change(pager);
        disk.plan({Fault::fail_once, operation, 0, 512});
        const bool failed = error_of([&] { pager.commit(); }) != 0;
        if (!failed && disk.operations() < operation)
            break;
        if (failed && pager.dirty()) {
            const files::Bytes file = disk.content().at(path);
            EXPECT_TRUE(file == before || file == after) << "operation " << operation;
            pager.commit();
        }
        EXPECT_EQ(disk.content().at(path), after) << "operation " << operation;
        EXPECT_TRUE(tells_of_nothing(disk.content())) << "operation " << operation;
    }
}

/// The first commit of a file whose journal's end, the last of four syncs, fails: the change is in the file,
/// and a power cut may take it back.
void commit_but_for_its_last_step(FaultyDisk& disk, FilePager& pager, std::uint32_t seed) {
    fill(pager, 3, 0xc3);
    disk.plan({Fault::fail_once, 4, seed, 512, FaultyDisk::Failure::sync});
    ASSERT_EQ(error_of([&] { pager.commit(); }), 75);
    disk.plan({});
    ASSERT_EQ(disk.content().at(path)[3 * jet4_format.page_size], 0xc3);
}

TEST(Pager, ACommitWhoseLastStepFailedIsMadeDurableByTheNextAttempt) {
    for (std::uint32_t seed = 0; seed < 40; ++seed) {
        FaultyDisk disk({{path, plain_file()}});
        FilePager pager(disk, path);
        commit_but_for_its_last_step(disk, pager, seed);
        EXPECT_TRUE(pager.dirty());
        pager.commit();
        EXPECT_FALSE(pager.dirty());
        FaultyDisk next(disk.survivors(seed, 512));
        const FilePager after(next, path);
        ASSERT_EQ((*after.read(3))[0], 0xc3) << "seed " << seed;
    }
}

TEST(Pager, ACommitWhoseLastStepFailedIsMadeDurableByTheNextCommit) {
    for (std::uint32_t seed = 0; seed < 40; ++seed) {
        FaultyDisk disk({{path, plain_file()}});
        FilePager pager(disk, path);
        commit_but_for_its_last_step(disk, pager, seed);
        fill(pager, 5, 0xc5);
        pager.commit();
        FaultyDisk next(disk.survivors(seed, 512));
        const FilePager after(next, path);
        ASSERT_EQ((*after.read(3))[0], 0xc3) << "seed " << seed;
        ASSERT_EQ((*after.read(5))[0], 0xc5) << "seed " << seed;
    }
}

/// A disk that has no memory left at one of the writes to the file.
class PoorDisk final : public support::PassingDisk {
  public:
    using PassingDisk::PassingDisk;

    std::unique_ptr<files::File> open(const std::string& name, files::OpenMode mode) override {
        return std::make_unique<PoorFile>(*this, PassingDisk::open(name, mode));
    }
    int writes_left = -1; ///< to the file, before it has none; -1 for any number

  private:
    class PoorFile final : public files::File {
      public:
        PoorFile(PoorDisk& disk, std::unique_ptr<files::File> file) : disk_(disk), file_(std::move(file)) {}

        const std::string& path() const override { return file_->path(); }
        std::uint64_t size() const override { return file_->size(); }
        std::size_t read(std::uint64_t offset, std::span<std::uint8_t> out) const override {
            return file_->read(offset, out);
        }
        void write(std::uint64_t offset, std::span<const std::uint8_t> bytes) override {
            if (file_->path() == jet::path && disk_.writes_left >= 0 && disk_.writes_left-- == 0)
                throw std::bad_alloc();
            file_->write(offset, bytes);
        }
        void truncate(std::uint64_t size) override { file_->truncate(size); }
        void sync() override { file_->sync(); }
        bool lock() override { return file_->lock(); }
        void unlock() override { file_->unlock(); }
        bool lock_content(files::Sharing sharing) override { return file_->lock_content(sharing); }
        void unlock_content() noexcept override { file_->unlock_content(); }
        bool locked_by_strangers() const override { return file_->locked_by_strangers(); }

      private:
        PoorDisk& disk_;
        std::unique_ptr<files::File> file_;
    };
};

TEST(Pager, ACommitThatRanOutOfMemoryIsTakenBackInTheFile) {
    FaultyDisk disk({{path, plain_file()}});
    PoorDisk poor(disk);
    FilePager pager(poor, path);
    fill(pager, 3, 0xa3);
    fill(pager, 9, 0xa9);
    poor.writes_left = 2; // page 0 and page 3
    EXPECT_THROW(pager.commit(), std::bad_alloc);
    EXPECT_EQ(disk.content(), (std::map<std::string, files::Bytes>{{path, plain_file()}}));
    pager.rollback();
    fill(pager, 5, 0xa5);
    pager.commit();
    EXPECT_EQ(disk.content().at(path)[3 * jet4_format.page_size], 3);
    EXPECT_EQ(disk.content().at(path)[5 * jet4_format.page_size], 0xa5);
}

TEST(Pager, ACutAfterAFailedCommitStillFindsAWholeFile) {
    // What a failed sync left behind must not count on being written later.
    const files::Bytes before = plain_file(), after = changed_file();
    for (int operation = 1; operation < 40; ++operation) {
        for (std::uint32_t seed = 0; seed < 20; ++seed) {
            FaultyDisk disk({{path, before}});
            FilePager pager(disk, path);
            change(pager);
            disk.plan({Fault::fail_once, operation, seed, 512});
            const bool failed = error_of([&] { pager.commit(); }) != 0;
            FaultyDisk next(disk.survivors());
            ASSERT_TRUE(recover(next, {}));
            const files::Bytes file = next.content().at(path);
            ASSERT_TRUE(file == before || file == after) << "operation " << operation << " seed " << seed;
            if (!failed) {
                ASSERT_EQ(file, after) << "operation " << operation << " seed " << seed;
            }
        }
    }
}

TEST(Pager, AJournalWithoutAHeaderIsSweptAway) {
    for (const std::size_t size : {std::size_t{0}, std::size_t{10}, std::size_t{4096}, std::size_t{20000}}) {
        files::Bytes begun(size);
        if (size > 4096) // records, as far as they came
            std::fill(begun.begin() + 4096, begun.end(), std::uint8_t{0x55});
        FaultyDisk disk({{path, plain_file()}, {journal, begun}});
        ASSERT_TRUE(recover(disk, {}));
        EXPECT_EQ(disk.content().size(), 1u);
        EXPECT_EQ(disk.content().at(path), plain_file());
    }
}

/// What a kill leaves in the middle of the change's commit: some pages old, some new, and a whole journal.
std::map<std::string, files::Bytes> half_written() {
    const files::Bytes before = plain_file();
    for (int operation = 1;; ++operation) {
        FaultyDisk disk({{path, before}});
        FilePager pager(disk, path);
        change(pager);
        disk.plan({Fault::kill, operation, 0, 512});
        EXPECT_THROW(pager.commit(), PowerCut) << "no step had a whole journal and a half-written file";
        auto survivors = disk.survivors();
        if (survivors.at(path).size() != before.size())
            return survivors;
    }
}

/// Neither a writer nor a reader takes the file with this journal, and neither touches anything.
void expect_refusal(const std::map<std::string, files::Bytes>& found) {
    for (const auto access : {FilePager::Access::write, FilePager::Access::read}) {
        FaultyDisk disk(found);
        try {
            FilePager pager(disk, path, access);
            ADD_FAILURE() << "opened";
        } catch (const basic::RunTimeError& error) {
            EXPECT_EQ(error.number(), 3049);
            EXPECT_NE(error.text().find(journal), std::string::npos) << error.text();
        }
        EXPECT_EQ(disk.content(), found) << "nothing may be touched";
    }
}

TEST(Pager, AFileOfSomeoneElsesUnderTheJournalsNameIsLeftAlone) {
    expect_refusal({{path, plain_file()}, {journal, files::Bytes(20000, 0x55)}});
    expect_refusal({{path, plain_file()}, {journal, {'a', 'b', 'c'}}});
}

TEST(Pager, AJournalWithADamagedHeaderIsToldOf) {
    auto found = half_written();
    found.at(journal)[30] ^= 1;
    expect_refusal(found);
}

TEST(Pager, AJournalOfAnotherFileIsRefused) {
    // Another file took the place of the one that the cut hit, as when a copy is put back.
    auto found = half_written();
    files::Bytes other = plain_file();
    other[7 * jet4_format.page_size + 100] ^= 1; // a page that the commit left alone
    found.at(path) = other;
    expect_refusal(found);

    for (const std::size_t pages : {pages_at_first - 1, pages_at_first + 8}) {
        found.at(path) = plain_file();
        found.at(path).resize(pages * jet4_format.page_size);
        expect_refusal(found);
    }
}

TEST(Pager, AJournalOfAnEarlierCommitIsRefused) {
    // A copying program brings back the journal of a commit that was followed by another on the same pages.
    const auto earlier = half_written();
    FaultyDisk disk(earlier);
    files::Bytes later;
    {
        FilePager pager(disk, path);
        change(pager);
        pager.commit();
        fill(pager, 4, 0xb4);
        pager.commit();
        later = disk.content().at(path);
    }
    expect_refusal({{path, later}, {journal, earlier.at(journal)}});
}

TEST(Pager, AWholeJournalWithADamagedRecordIsToldOf) {
    auto found = half_written();
    found.at(journal)[3 * 4096] ^= 1;
    expect_refusal(found);
    found = half_written();
    found.at(journal).resize(found.at(journal).size() - 1);
    expect_refusal(found);
}

/// A whole journal of the change's commit beside a file that it has not begun to write to.
std::map<std::string, files::Bytes> not_yet_written() {
    auto found = half_written();
    found.at(path) = plain_file();
    return found;
}

TEST(Pager, AJournalThatMissesRecordsIsSweptAwayWhereItsCommitWroteNothingYet) {
    // The power went when the header had reached the device, and not all that goes there with it.
    const auto whole = not_yet_written();
    const std::size_t size = whole.at(journal).size();
    for (std::size_t record = 4096; record < size; record += 4140) {
        for (const bool cut_off : {false, true}) {
            auto found = whole;
            if (cut_off)
                found.at(journal).resize(record + 2000);
            else
                std::fill_n(found.at(journal).begin() + static_cast<std::ptrdiff_t>(record), 512,
                            std::uint8_t{0});
            FaultyDisk beside(found);
            const FilePager reader(beside, path, FilePager::Access::read);
            EXPECT_EQ((*reader.read(3))[0], 3);
            EXPECT_EQ(beside.content(), found);

            FaultyDisk disk(found);
            ASSERT_TRUE(recover(disk, {}));
            EXPECT_EQ(disk.content(), (std::map<std::string, files::Bytes>{{path, plain_file()}}));
        }
    }
}

TEST(Pager, AJournalThatMissesRecordsIsRefusedBesideAnotherFile) {
    auto found = not_yet_written();
    found.at(journal)[5000] ^= 1;
    for (const std::size_t page : {3, 7}) { // of the blocks that the commit overwrites, and of the others
        auto other = found;
        other.at(path)[page * jet4_format.page_size + 100] ^= 1;
        expect_refusal(other);
    }
    found.at(path).resize((pages_at_first + 1) * jet4_format.page_size);
    expect_refusal(found);
}

TEST(Pager, AJournalWithoutTheFilesFirstBlockIsRefused) {
    // Every commit overwrites that block. A journal of none, of a file without length, would leave nothing.
    files::Bytes bytes(4096);
    const std::string name = "TOLVA journal 4\n";
    std::copy(name.begin(), name.end(), bytes.begin());
    put64(bytes.data() + 24, std::uint64_t{1} << 24); // the length after it
    put64(bytes.data() + 460, Journal::checksum(0, std::span(bytes).first(460)));
    expect_refusal({{path, plain_file()}, {journal, bytes}});
}

TEST(Pager, AJournalOfMoreBlocksThanAHeaderNamesMissesNoRecord) {
    // There the header comes when they are on the device: one that is missing has been lost since.
    std::map<std::string, files::Bytes> found;
    for (int operation = 1; tells_of_nothing(found); ++operation) {
        FaultyDisk disk({{path, longer_file()}});
        FilePager pager(disk, path);
        change_many(pager);
        disk.plan({Fault::kill, operation, 0, 512});
        ASSERT_THROW(pager.commit(), PowerCut);
        found = disk.survivors();
    }
    ASSERT_EQ(found.at(path), longer_file());
    found.at(journal)[5000] ^= 1;
    expect_refusal(found);
}

TEST(Pager, AFileThatMayOnlyBeReadOpensForReading) {
    FaultyDisk disk({{path, plain_file()}});
    support::ReadOnlyDisk locked(disk);
    FilePager pager(locked, path);
    EXPECT_TRUE(pager.read_only());
    EXPECT_EQ((*pager.read(5))[9], 5);
    EXPECT_EQ(error_of([&] { pager.modify(5); }), 3027);
    EXPECT_EQ(error_of([&] { pager.append(); }), 3027);
}

TEST(Pager, AReaderSeesTheFileBeforeACutCommitAndRollsNothingBack) {
    const auto found = half_written();
    FaultyDisk disk(found);
    support::ReadOnlyDisk locked(disk);
    const FilePager reader(disk, path, FilePager::Access::read);
    const FilePager without_rights(locked, path);
    for (const FilePager* pager : {&reader, &without_rights}) {
        EXPECT_TRUE(pager->read_only());
        EXPECT_EQ(pager->page_count(), pages_at_first);
        EXPECT_FALSE(pager->was_cut_short());
        for (PageNumber page = 1; page < pages_at_first; ++page)
            EXPECT_EQ((*pager->read(page))[50], page);
    }
    EXPECT_EQ(disk.content(), found);
}

TEST(Pager, AReaderBesideAWriterSeesWholeCommitsAndKeepsWhatItSaw) {
    FaultyDisk disk({{path, plain_file()}});
    FilePager writer(disk, path);
    const FilePager early(disk, path, FilePager::Access::read);
    fill(writer, 3, 0xc3);
    const FilePager beside_pending(disk, path, FilePager::Access::read);
    writer.commit();
    const FilePager late(disk, path, FilePager::Access::read);
    EXPECT_EQ((*early.read(3))[0], 3);
    EXPECT_EQ((*beside_pending.read(3))[0], 3);
    EXPECT_EQ((*late.read(3))[0], 0xc3);
}

TEST(Pager, ACommitIsRefusedWhileAReadLastsAndCanBeTriedAgain) {
    FaultyDisk disk({{path, plain_file()}});
    FilePager writer(disk, path);
    change(writer);
    {
        const StoredContent reading(disk, path);
        EXPECT_EQ(error_of([&] { writer.commit(); }), 3045);
        EXPECT_EQ(reading.read(), plain_file());
    }
    EXPECT_TRUE(writer.dirty());
    writer.commit();
    EXPECT_EQ(disk.content().at(path), changed_file());
}

TEST(Pager, AJournalOfALiveWriterStaysWhenAReaderComes) {
    // The disk failed a commit and its undoing: the writer lives on, its journal stands.
    FaultyDisk disk({{path, plain_file()}});
    FilePager writer(disk, path);
    change(writer);
    disk.plan({Fault::fail_for_good, 8, 0, 512});
    ASSERT_EQ(error_of([&] { writer.commit(); }), 75);
    ASSERT_TRUE(disk.exists(journal));
    const auto found = disk.content();
    disk.plan({});
    ASSERT_NE(found.at(path), plain_file());
    const FilePager reader(disk, path, FilePager::Access::read);
    EXPECT_EQ((*reader.read(3))[0], 3);
    EXPECT_EQ(error_of([&] { FilePager second(disk, path); }), 3045);
    EXPECT_EQ(disk.content(), found);
}

} // namespace
} // namespace tolva::jet
