#include "files/path.h"

#include <gtest/gtest.h>

namespace tolva::files {
namespace {

TEST(Path, EitherSlashMayStandAndNoneTwice) {
    EXPECT_EQ(with_slashes("data\\listings.mdb"), "data/listings.mdb");
    EXPECT_EQ(with_slashes("/home//agent///data/"), "/home/agent/data");
    EXPECT_EQ(with_slashes("C:\\agent\\data\\"), "C:/agent/data");
    EXPECT_EQ(with_slashes("C:\\"), "C:/");
    EXPECT_EQ(with_slashes("/"), "/");
    EXPECT_EQ(with_slashes(""), "");
}

TEST(Path, AnotherMachinesNameKeepsItsTwoSlashes) {
    EXPECT_EQ(with_slashes("\\\\office\\share\\a.mdb"), "//office/share/a.mdb");
}

TEST(Path, AFolderAndANameMakeAPath) {
    EXPECT_EQ(folder_of("data/a.mdb"), "data");
    EXPECT_EQ(folder_of("a.mdb"), "");
    EXPECT_EQ(folder_of("/a.mdb"), "/");
    EXPECT_EQ(folder_of("C:/a.mdb"), "C:/");
    EXPECT_EQ(name_of("data/a.mdb"), "a.mdb");
    EXPECT_EQ(name_of("a.mdb"), "a.mdb");
    EXPECT_EQ(join("data", "a.mdb"), "data/a.mdb");
    EXPECT_EQ(join("/", "a.mdb"), "/a.mdb");
    EXPECT_EQ(join("", "a.mdb"), "a.mdb");
}

} // namespace
} // namespace tolva::files
