#include "hosts/cli/AtomicFile.h"

#include "TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

using namespace qor::cli;
using testing::ElementsAre;
using testing::HasSubstr;
namespace fs = std::filesystem;

TEST(AtomicFile, AppearsOnlyOnCommit) {
    const test::TemporaryFolder folder;
    auto file = AtomicFile::create(folder.path("a.txt"));
    ASSERT_TRUE(file);
    ASSERT_TRUE(file.value()->write("hello"));
    EXPECT_FALSE(fs::exists(folder.path("a.txt")));
    ASSERT_TRUE(file.value()->commit());
    EXPECT_EQ(test::contentOf(folder.path("a.txt")), "hello");
    EXPECT_THAT(folder.names(), ElementsAre("a.txt"));
}

TEST(AtomicFile, GivenUpLeavesTheOldContentAndNoTemporaryFile) {
    const test::TemporaryFolder folder;
    const std::string target = folder.write("a.txt", "old");
    {
        auto file = AtomicFile::create(target);
        ASSERT_TRUE(file);
        ASSERT_TRUE(file.value()->write("new"));
        EXPECT_EQ(test::contentOf(target), "old");
    }
    EXPECT_EQ(test::contentOf(target), "old");
    EXPECT_THAT(folder.names(), ElementsAre("a.txt"));
}

TEST(AtomicFile, KeepsThePermissionsOfAnExistingTarget) {
    const test::TemporaryFolder folder;
    const std::string target = folder.write("a.txt", "old");
    fs::permissions(target, fs::perms(0640));
    auto file = AtomicFile::create(target);
    ASSERT_TRUE(file);
    ASSERT_TRUE(file.value()->commit());
    EXPECT_EQ(fs::status(target).permissions(), fs::perms(0640));
}

TEST(AtomicFile, GivesANewFileThePermissionsOfTheMask) {
    const test::TemporaryFolder folder;
    const mode_t before = ::umask(027);
    auto file = AtomicFile::create(folder.path("a.txt"));
    ::umask(before);
    ASSERT_TRUE(file);
    ASSERT_TRUE(file.value()->commit());
    EXPECT_EQ(fs::status(folder.path("a.txt")).permissions(), fs::perms(0640));
}

TEST(AtomicFile, FollowsASymbolicLinkToItsTarget) {
    const test::TemporaryFolder folder;
    fs::create_directory(folder.path("far"));
    fs::create_symlink("far/real.txt", folder.path("link.txt"));
    auto file = AtomicFile::create(folder.path("link.txt"));
    ASSERT_TRUE(file);
    ASSERT_TRUE(file.value()->write("x"));
    ASSERT_TRUE(file.value()->commit());
    EXPECT_TRUE(fs::is_symlink(folder.path("link.txt")));
    EXPECT_EQ(test::contentOf(folder.path("far/real.txt")), "x");
}

TEST(AtomicFile, RefusesAFolderAMissingFolderADeviceAndNoName) {
    const test::TemporaryFolder folder;
    const auto message = [](const std::string& target) {
        return AtomicFile::create(target).error().localizedDescription();
    };
    EXPECT_EQ(message(folder.path("")),
              "cannot write '" + folder.path("") + "': it is a folder. Add a file name.");
    EXPECT_EQ(message(folder.path("none/a.wav")),
              "cannot write '" + folder.path("none/a.wav") +
                  "': No such file or directory. Create the folder first.");
    EXPECT_EQ(message("/dev/null"), "cannot write '/dev/null': it is not a plain file. Name a plain file.");
    EXPECT_EQ(message(""), "an output file needs a name");
    EXPECT_EQ(AtomicFile::create("").error().code, kExitWrongUsage);
    EXPECT_EQ(AtomicFile::create("/dev/null").error().code, kExitWorkFailed);
}
