#include "hosts/cli/FileChecks.h"

#include "TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace qor::cli;
namespace fs = std::filesystem;

TEST(FileChecks, OneFileIsTheSameThroughSymbolicAndHardLinksAndDetours) {
    const test::TemporaryFolder folder;
    const std::string file = folder.write("a", "x");
    folder.write("b", "x");
    fs::create_symlink("a", folder.path("soft"));
    fs::create_hard_link(file, folder.path("hard"));
    EXPECT_TRUE(isSameFile(file, file));
    EXPECT_TRUE(isSameFile(file, folder.path("soft")));
    EXPECT_TRUE(isSameFile(file, folder.path("hard")));
    EXPECT_TRUE(isSameFile(file, folder.path("./../") +
                                     fs::path(folder.path("")).parent_path().filename().string() + "/a"));
    EXPECT_FALSE(isSameFile(file, folder.path("b")));
    EXPECT_FALSE(isSameFile(file, folder.path("none")));
}

TEST(FileChecks, FilesThatDoNotExistYetAreTheSameByTheirPath) {
    const test::TemporaryFolder folder;
    EXPECT_TRUE(isSameFile(folder.path("new"), folder.path("./new")));
    EXPECT_FALSE(isSameFile(folder.path("new"), folder.path("newer")));
}
