#include "platform/files/AtomicFile.h"

#include "platform/files/Utf8.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <random>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace platform;

namespace {

Result<void> write(const std::string& path, std::string_view content) {
    return writeAtomically(dataFromText(content), URL::fileURLWithPath(path));
}

std::size_t entryCount(const std::filesystem::path& directory) {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(directory), {}));
}

} // namespace

TEST(AtomicFile, WritesANewFileAndReplacesAnOldOne) {
    const test::TemporaryDirectory directory;
    const std::string path = directory.file("a.plist");
    ASSERT_TRUE(write(path, "first"));
    ASSERT_TRUE(write(path, "second, longer"));
    EXPECT_EQ(test::readFile(path), "second, longer");
    EXPECT_EQ(entryCount(directory.path()), 1U);
}

TEST(AtomicFile, KeepsThePermissionsOfAnExistingFile) {
    const test::TemporaryDirectory directory;
    const std::string path = directory.file("a");
    ASSERT_TRUE(write(path, "x"));
    ASSERT_EQ(::chmod(path.c_str(), 0640), 0);
    ASSERT_TRUE(write(path, "y"));
    struct stat status {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0640U);
}

TEST(AtomicFile, WritesThroughASymbolicLink) {
    const test::TemporaryDirectory directory;
    test::writeFile(directory.file("real/a"), "old");
    std::filesystem::create_symlink(directory.file("real/a"), directory.file("link"));
    ASSERT_TRUE(write(directory.file("link"), "new"));
    EXPECT_TRUE(std::filesystem::is_symlink(directory.file("link")));
    EXPECT_EQ(test::readFile(directory.file("real/a")), "new");
}

TEST(AtomicFile, AppearsOnlyOnCommit) {
    const test::TemporaryDirectory directory;
    const auto file = AtomicFile::create(directory.file("a"));
    ASSERT_TRUE(file);
    ASSERT_TRUE(file.value()->write("hel"));
    ASSERT_TRUE(file.value()->sync());
    ASSERT_TRUE(file.value()->write("lo"));
    EXPECT_FALSE(std::filesystem::exists(directory.file("a")));
    ASSERT_TRUE(file.value()->commit());
    EXPECT_EQ(test::readFile(directory.file("a")), "hello");
    EXPECT_EQ(entryCount(directory.path()), 1U);
}

TEST(AtomicFile, GivenUpLeavesTheOldContentAndNoTemporaryFile) {
    const test::TemporaryDirectory directory;
    const std::string path = directory.file("a");
    test::writeFile(path, "old");
    {
        const auto file = AtomicFile::create(path);
        ASSERT_TRUE(file);
        ASSERT_TRUE(file.value()->write("new"));
        EXPECT_EQ(entryCount(directory.path()), 2U);
    }
    EXPECT_EQ(test::readFile(path), "old");
    EXPECT_EQ(entryCount(directory.path()), 1U);
}

TEST(AtomicFile, GivesANewFileThePermissionsOfTheMask) {
    const test::TemporaryDirectory directory;
    const mode_t before = ::umask(027);
    const Result<void> written = write(directory.file("a"), "x");
    ::umask(before);
    ASSERT_TRUE(written);
    EXPECT_EQ(std::filesystem::status(directory.file("a")).permissions(), std::filesystem::perms(0640));
}

TEST(AtomicFile, WritesWhatADanglingLinkPointsTo) {
    const test::TemporaryDirectory directory;
    std::filesystem::create_directory(directory.path() / "far");
    std::filesystem::create_symlink("far/real", directory.file("link"));
    std::filesystem::create_symlink("link", directory.file("second"));
    ASSERT_TRUE(write(directory.file("second"), "x"));
    EXPECT_TRUE(std::filesystem::is_symlink(directory.file("link")));
    EXPECT_TRUE(std::filesystem::is_symlink(directory.file("second")));
    EXPECT_EQ(test::readFile(directory.file("far/real")), "x");
}

TEST(AtomicFile, LinksInACircleAreRefusedAndStay) {
    const test::TemporaryDirectory directory;
    std::filesystem::create_symlink("b", directory.file("a"));
    std::filesystem::create_symlink("a", directory.file("b"));
    const Result<void> written = write(directory.file("a"), "x");
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().code, ELOOP);
    EXPECT_TRUE(std::filesystem::is_symlink(directory.file("a")));
    EXPECT_EQ(entryCount(directory.path()), 2U);
}

TEST(AtomicFile, WhatIsNoPlainFileIsNeverReplaced) {
    const test::TemporaryDirectory directory;
    ASSERT_EQ(::mkfifo(directory.file("pipe").c_str(), 0600), 0);
    const Result<void> written = write(directory.file("pipe"), "x");
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().code, ENOTSUP);
    EXPECT_TRUE(std::filesystem::is_fifo(directory.file("pipe")));
    const auto folder = AtomicFile::create(directory.path().string() + "/");
    ASSERT_FALSE(folder);
    EXPECT_EQ(folder.error().code, EISDIR);
    EXPECT_EQ(AtomicFile::create(directory.file("none/")).error().code, EISDIR);
    EXPECT_EQ(AtomicFile::create("").error().code, ENOENT);
    EXPECT_EQ(entryCount(directory.path()), 1U);
}

TEST(AtomicFile, ANameOfTheGreatestLengthIsWritten) {
    const test::TemporaryDirectory directory;
    std::string longest = "x"; // 255 bytes, of two-byte characters behind an odd one
    while (longest.size() < 255) {
        longest += "\xC3\xA4";
    }
    ASSERT_TRUE(write(directory.file(longest), "content"));
    EXPECT_EQ(test::readFile(directory.file(longest)), "content");
    const auto file = AtomicFile::create(directory.file(longest));
    ASSERT_TRUE(file);
    for (const auto& entry : std::filesystem::directory_iterator(directory.path())) {
        EXPECT_EQ(findBadUtf8(entry.path().filename().string()), std::string_view::npos)
            << "cut in the middle of a character";
    }
}

TEST(AtomicFile, AWriterAtWorkKeepsItsTemporaryFile) {
    const test::TemporaryDirectory directory;
    const auto slow = AtomicFile::create(directory.file("a"));
    ASSERT_TRUE(slow);
    ASSERT_TRUE(slow.value()->write("slow"));
    ASSERT_TRUE(write(directory.file("a"), "quick")); // removes leftovers, and this is none
    EXPECT_EQ(test::readFile(directory.file("a")), "quick");
    ASSERT_TRUE(slow.value()->commit());
    EXPECT_EQ(test::readFile(directory.file("a")), "slow");
}

TEST(AtomicFile, AFailedWriteNamesThePathAndLeavesTheOldFile) {
    const auto missing = write("/no/such/directory/a", "x");
    ASSERT_FALSE(missing);
    EXPECT_NE(missing.error().debugDescription().find("/no/such/directory/a"), std::string::npos);

    const test::TemporaryDirectory directory;
    test::writeFile(directory.file("a/b"), "old"); // a directory can't be replaced by a file
    EXPECT_FALSE(write(directory.file("a"), "x"));
    EXPECT_EQ(test::readFile(directory.file("a/b")), "old");
    EXPECT_EQ(entryCount(directory.path()), 1U) << "no temporary file is left";
}

TEST(AtomicFile, RemovesWhatAKilledWriterLeftButNotWhatAnotherIsWriting) {
    const test::TemporaryDirectory directory;
    test::writeFile(directory.file(".a.tmp-abc123"), "half");
    test::writeFile(directory.file(".a.tmp-xyz789"), "being written");
    test::writeFile(directory.file(".ab.tmp-abc123"), "of another file");
    const int other = ::open(directory.file(".a.tmp-xyz789").c_str(), O_RDWR);
    ASSERT_EQ(::flock(other, LOCK_EX), 0);
    ASSERT_TRUE(write(directory.file("a"), "x"));
    EXPECT_FALSE(std::filesystem::exists(directory.file(".a.tmp-abc123")));
    EXPECT_TRUE(std::filesystem::exists(directory.file(".a.tmp-xyz789")));
    EXPECT_TRUE(std::filesystem::exists(directory.file(".ab.tmp-abc123")));
    ::close(other);
}

TEST(AtomicFile, AWriterKilledAThousandTimesLeavesTheOldOrTheNewFile) {
    constexpr int kKills = 1000;
    constexpr std::size_t kLength = 20000;
    const test::TemporaryDirectory directory;
    const std::string path = directory.file("preset.plist");
    ASSERT_TRUE(write(path, std::string(kLength, 'a')));
    std::minstd_rand random(7);
    int sawNew = 0;
    for (int i = 0; i < kKills; ++i) {
        const char letter = static_cast<char>('a' + i % 26);
        int ready[2];
        ASSERT_EQ(::pipe(ready), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            const char byte = 1;
            (void)!::write(ready[1], &byte, 1);
            for (std::size_t n = 0;; ++n) {
                (void)write(path, std::string(kLength + n % 7, letter)).ok();
            }
        }
        char byte = 0;
        ASSERT_EQ(::read(ready[0], &byte, 1), 1);
        ::close(ready[0]);
        ::close(ready[1]);
        ::usleep(random() % 1500);
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        const std::string content = test::readFile(path);
        ASSERT_GE(content.size(), kLength);
        ASSERT_EQ(content.find_first_not_of(content[0]), std::string::npos) << "a mix of two writes";
        sawNew += content[0] == letter ? 1 : 0;
    }
    EXPECT_GT(sawNew, kKills / 20) << "the writer was killed before it could write";
}
