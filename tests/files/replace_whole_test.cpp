#include <gtest/gtest.h>

#include <filesystem>

#include "files/file_system.h"
#include "support/faulty_disk.h"
#include "support/samples.h"

namespace tolva::files {
namespace {

using support::FaultyDisk;
using Fault = FaultyDisk::Fault;

const Bytes old_content(3000, 'o');
const Bytes new_content(5000, 'n');

TEST(ReplaceWhole, ACutLeavesTheOldContentOrTheNewOne) {
    for (const Fault fault : {Fault::power_cut, Fault::kill}) {
        int old_ones = 0, new_ones = 0;
        bool done = false;
        for (int operation = 1; !done; ++operation) {
            for (std::uint32_t seed = 0; seed < 40; ++seed) {
                FaultyDisk disk({{"a.rtf", old_content}});
                disk.plan({fault, operation, seed, 512});
                try {
                    replace_whole(disk, "a.rtf", new_content);
                    done = true;
                    break;
                } catch (const support::PowerCut&) {
                }
                const Bytes found = disk.survivors().at("a.rtf");
                ASSERT_TRUE(found == old_content || found == new_content) << operation << " seed " << seed;
                ++(found == old_content ? old_ones : new_ones);

                // What a cut left beside it is no hindrance to the next attempt.
                FaultyDisk next(disk.survivors());
                replace_whole(next, "a.rtf", new_content);
                ASSERT_EQ(next.content().size(), 1u);
                ASSERT_EQ(next.content().at("a.rtf"), new_content);
            }
        }
        EXPECT_GT(old_ones, 0);
        EXPECT_GT(new_ones, 0);
    }
}

TEST(ReplaceWhole, AFailureLeavesTheOldContentAndNothingBeside) {
    int failures = 0;
    for (int operation = 1;; ++operation) {
        FaultyDisk disk({{"a.rtf", old_content}});
        disk.plan({Fault::fail_once, operation, 0, 512});
        try {
            replace_whole(disk, "a.rtf", new_content);
            if (disk.operations() < operation)
                break;
        } catch (const basic::RunTimeError& error) {
            EXPECT_EQ(error.number(), 75);
            ++failures;
            EXPECT_EQ(disk.content().size(), 1u) << operation;
            const Bytes found = disk.content().at("a.rtf");
            EXPECT_TRUE(found == old_content || found == new_content) << operation;
        }
    }
    EXPECT_GE(failures, 4);
}

TEST(ReplaceWhole, LeavesAFileThatMayOnlyBeReadAsItIs) {
    FaultyDisk disk({{"a.rtf", old_content}});
    disk.protect("a.rtf");
    try {
        replace_whole(disk, "a.rtf", new_content);
        FAIL() << "replaced what may not be written";
    } catch (const basic::RunTimeError& error) {
        EXPECT_EQ(error.number(), 75);
    }
    EXPECT_EQ(disk.content(), (std::map<std::string, Bytes>{{"a.rtf", old_content}}));
}

TEST(PutWhole, MakesTheNameAsItIsSpelled) {
    const support::TemporaryFolder folder;
    const auto disk = make_disk();
    replace_whole(*disk, folder.file("a.rtf"), old_content);
    const bool tells_cases_apart = !std::filesystem::exists(folder.file("A.RTF"));
    put_whole(*disk, folder.file("A.RTF"), new_content);
    EXPECT_EQ(read_whole(*disk, folder.file("A.RTF")), new_content);
    const std::vector<std::string> names = disk->list(folder.path().string());
    if (tells_cases_apart) {
        EXPECT_EQ(names, (std::vector<std::string>{"A.RTF", "a.rtf"}));
        EXPECT_EQ(read_whole(*disk, folder.file("a.rtf")), old_content);
    } else {
        EXPECT_EQ(names, std::vector<std::string>{"A.RTF"});
    }
}

TEST(ReplaceWhole, FindsTheFileInAnotherLetterCase) {
    const support::TemporaryFolder folder;
    const auto disk = make_disk();
    replace_whole(*disk, folder.file("a.rtf"), old_content);
    replace_whole(*disk, folder.file("A.RTF"), new_content);
    EXPECT_EQ(disk->list(folder.path().string()).size(), 1u);
    EXPECT_EQ(read_whole(*disk, folder.file("a.rtf")), new_content);
}

} // namespace
} // namespace tolva::files
