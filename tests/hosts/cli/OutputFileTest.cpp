#include "hosts/cli/OutputFile.h"

#include "TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

using namespace qor::cli;
using testing::ElementsAre;
using testing::HasSubstr;
namespace fs = std::filesystem;

TEST(OutputFile, AppearsOnlyOnCommit) {
    const test::TemporaryFolder folder;
    auto file = OutputFile::create(folder.path("a.txt"));
    ASSERT_TRUE(file);
    ASSERT_TRUE(file.value()->write("hello"));
    EXPECT_FALSE(fs::exists(folder.path("a.txt")));
    ASSERT_TRUE(file.value()->commit());
    EXPECT_EQ(test::contentOf(folder.path("a.txt")), "hello");
    EXPECT_THAT(folder.names(), ElementsAre("a.txt"));
}

TEST(OutputFile, GivenUpLeavesNothing) {
    const test::TemporaryFolder folder;
    ASSERT_TRUE(OutputFile::create(folder.path("a.txt")).value()->write("new"));
    EXPECT_THAT(folder.names(), ElementsAre());
}

TEST(OutputFile, FailuresNameTheFileAsTheUserWroteItAndTheRemedy) {
    EXPECT_EQ(writeFailure("a b.wav", ENOSPC).localizedDescription(),
              "cannot write 'a b.wav': No space left on device. Free some space or choose another disk.");
    EXPECT_EQ(OutputFile::create(std::string(300, 'x')).error().localizedDescription(),
              "cannot write '" + std::string(300, 'x') + "': File name too long. Choose a shorter name.");
    const test::TemporaryFolder folder;
    const auto file = OutputFile::create(folder.path("a.txt"));
    ASSERT_TRUE(file);
    std::filesystem::remove_all(folder.path(""));
    EXPECT_EQ(file.value()->commit().error().localizedDescription(),
              "cannot write '" + folder.path("a.txt") +
                  "': No such file or directory. Create the folder first.");
}

TEST(OutputFile, RefusesAFolderAMissingFolderADeviceAndNoName) {
    const test::TemporaryFolder folder;
    const auto message = [](const std::string& target) {
        return OutputFile::create(target).error().localizedDescription();
    };
    EXPECT_EQ(message(folder.path("")),
              "cannot write '" + folder.path("") + "': it is a folder. Add a file name.");
    EXPECT_EQ(message(folder.path("none/a.wav")),
              "cannot write '" + folder.path("none/a.wav") +
                  "': No such file or directory. Create the folder first.");
    EXPECT_EQ(message("/dev/null"), "cannot write '/dev/null': it is not a plain file. Name a plain file.");
    EXPECT_EQ(message(""), "an output file needs a name");
    EXPECT_EQ(OutputFile::create("").error().code, kExitWrongUsage);
    EXPECT_EQ(OutputFile::create("/dev/null").error().code, kExitWorkFailed);
}
