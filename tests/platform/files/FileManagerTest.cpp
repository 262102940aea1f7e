#include "platform/files/Files.h"
#include "support/TemporaryDirectory.h"

#include <dirent.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace platform;

namespace {

const FileManager& manager() {
    return FileManager::defaultManager();
}

/// The names as the C library's own listing gives them.
std::vector<std::string> rawListing(const std::string& path) {
    std::vector<std::string> names;
    DIR* directory = ::opendir(path.c_str());
    while (const dirent* entry = ::readdir(directory)) {
        const std::string name = entry->d_name;
        if (name != "." && name != "..") {
            names.push_back(name);
        }
    }
    ::closedir(directory);
    return names;
}

} // namespace

TEST(FileManager, FilesAndDirectoriesExist) {
    const test::TemporaryDirectory directory;
    test::writeFile(directory.file("a"), "x");
    EXPECT_TRUE(manager().fileExistsAtPath(directory.file("a")));
    EXPECT_TRUE(manager().fileExistsAtPath(directory.path().string()));
    EXPECT_FALSE(manager().fileExistsAtPath(directory.file("b")));
    EXPECT_FALSE(manager().fileExistsAtPath(""));
}

TEST(FileManager, ContentsAreTheBytesAndAbsentForADirectoryOrAMissingFile) {
    const test::TemporaryDirectory directory;
    test::writeFile(directory.file("a"), std::string_view("x\0y\xFF", 4));
    EXPECT_EQ(manager().contentsAtPath(directory.file("a")), (Data{'x', 0, 'y', 0xFF}));
    EXPECT_FALSE(manager().contentsAtPath(directory.path().string()));
    EXPECT_FALSE(manager().contentsAtPath(directory.file("b")));
}

TEST(FileManager, ListsADirectoryInItsOwnOrder) {
    const test::TemporaryDirectory directory;
    for (const char* name : {"zeta", "Alpha", "mid", ".hidden", "10", "9"}) {
        test::writeFile(directory.file(name), "x");
    }
    const auto names = manager().contentsOfDirectoryAtPath(directory.path().string());
    ASSERT_TRUE(names);
    EXPECT_EQ(names.value().size(), 6U);
    EXPECT_EQ(names.value(), rawListing(directory.path().string()));
}

TEST(FileManager, ListingAMissingDirectoryIsAnErrorThatNamesIt) {
    const auto names = manager().contentsOfDirectoryAtPath("/no/such/directory");
    ASSERT_FALSE(names);
    EXPECT_EQ(names.error().domain, NSPOSIXErrorDomain);
    EXPECT_EQ(names.error().code, ENOENT);
    EXPECT_NE(names.error().localizedDescription().find("/no/such/directory"), std::string::npos);
}

TEST(FileManager, MakesDirectoriesWithAndWithoutIntermediateOnes) {
    const test::TemporaryDirectory directory;
    const URL deep = URL::fileURLWithPath(directory.file("a/b/c"));
    EXPECT_FALSE(manager().createDirectoryAtURL(deep, false));
    EXPECT_TRUE(manager().createDirectoryAtURL(deep, true));
    EXPECT_TRUE(manager().createDirectoryAtURL(deep, true));
    EXPECT_FALSE(manager().createDirectoryAtURL(deep, false));
    EXPECT_TRUE(manager().fileExistsAtPath(deep.path()));
}

TEST(FileManager, ADirectoryOverAFileCannotBeMade) {
    const test::TemporaryDirectory directory;
    test::writeFile(directory.file("a"), "x");
    EXPECT_FALSE(manager().createDirectoryAtURL(URL::fileURLWithPath(directory.file("a/b")), true));
}

TEST(FileManager, DocumentsAreWhereTheUserDirectoriesSay) {
    const test::TemporaryDirectory home;
    const test::ScopedVariable homeVariable("HOME", home.path().string());
    const test::ScopedVariable config("XDG_CONFIG_HOME", home.file("config"));
    const auto documents = [] {
        return manager()
            .URLsForDirectory(SearchPathDirectory::documentDirectory, SearchPathDomainMask::userDomainMask)
            .at(0)
            .path();
    };
    EXPECT_EQ(documents(), home.file("Documents"));
    test::writeFile(
        home.file("config/user-dirs.dirs"),
        "# comment\nXDG_MUSIC_DIR=\"$HOME/Music\"\nXDG_DOCUMENTS_DIR=\"$HOME/Dokumente \\\"x\\\"\"\n");
    EXPECT_EQ(documents(), home.file("Dokumente \"x\""));
    test::writeFile(home.file("config/user-dirs.dirs"), "XDG_DOCUMENTS_DIR=\"/srv/docs\"\n");
    EXPECT_EQ(documents(), "/srv/docs");
    test::writeFile(home.file("config/user-dirs.dirs"), "XDG_DOCUMENTS_DIR=\"relative\"\n");
    EXPECT_EQ(documents(), home.file("Documents"));
}
