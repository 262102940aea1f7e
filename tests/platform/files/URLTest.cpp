#include "platform/files/URL.h"

#include <gtest/gtest.h>

using platform::URL;

TEST(URL, PathHasNoSlashAtItsEnd) {
    EXPECT_EQ(URL::fileURLWithPath("/tmp/a/").path(), "/tmp/a");
    EXPECT_EQ(URL::fileURLWithPath("/tmp/a").path(), "/tmp/a");
    EXPECT_EQ(URL::fileURLWithPath("/").path(), "/");
}

TEST(URL, AppendsBehindOneSlash) {
    URL url = URL::fileURLWithPath("/res/");
    url.appendPathComponent("QOR Limiter Folder/Library/Factory Presets/");
    EXPECT_EQ(url.path(), "/res/QOR Limiter Folder/Library/Factory Presets");
    EXPECT_TRUE(url.hasDirectoryPath());
    url.appendPathComponent("/Warm.plist");
    EXPECT_EQ(url.path(), "/res/QOR Limiter Folder/Library/Factory Presets/Warm.plist");
    EXPECT_EQ(URL::fileURLWithPath("/res").appendingPathComponent("a").path(), "/res/a");
}

TEST(URL, TellsNameAndExtension) {
    const URL url = URL::fileURLWithPath("/tmp/My Preset.v2.PLIST");
    EXPECT_EQ(url.lastPathComponent(), "My Preset.v2.PLIST");
    EXPECT_EQ(url.pathExtension(), "PLIST");
    EXPECT_EQ(url.deletingPathExtension().lastPathComponent(), "My Preset.v2");
}

TEST(URL, HiddenNamesAndPointsAtTheEndAreNoExtensions) {
    EXPECT_EQ(URL::fileURLWithPath("/tmp/.plist").pathExtension(), "");
    EXPECT_EQ(URL::fileURLWithPath("/tmp/a.").pathExtension(), "");
    EXPECT_EQ(URL::fileURLWithPath("/tmp.d/a").pathExtension(), "");
    EXPECT_EQ(URL::fileURLWithPath("/tmp/.plist").deletingPathExtension().path(), "/tmp/.plist");
}

TEST(URL, LastComponentOfDirectoriesAndOfTheRoot) {
    EXPECT_EQ(URL::fileURLWithPath("/tmp/a/").lastPathComponent(), "a");
    EXPECT_EQ(URL::fileURLWithPath("/").lastPathComponent(), "/");
    EXPECT_EQ(URL::fileURLWithPath("a.txt").lastPathComponent(), "a.txt");
}

TEST(URL, ReadsAndWritesTexts) {
    const auto file = URL::initWithString("file:///tmp/a%20b%C3%A9.plist");
    ASSERT_TRUE(file);
    EXPECT_TRUE(file->isFileURL());
    EXPECT_EQ(file->path(), "/tmp/a b\xC3\xA9.plist");
    EXPECT_EQ(file->absoluteString(), "file:///tmp/a%20b%C3%A9.plist");
    const auto web = URL::initWithString("HTTPS://example.org:80/a%20b?q=1#f");
    ASSERT_TRUE(web);
    EXPECT_EQ(web->scheme(), "https");
    EXPECT_EQ(web->path(), "/a b");
    EXPECT_EQ(web->absoluteString(), "https://example.org:80/a%20b?q=1#f");
}

TEST(URL, TextsWithoutSchemeOrWithBrokenCodesAreNone) {
    for (const char* text :
         {"", "no scheme", "/tmp/a", ":x", "1a:b", "file:///a%2", "file:///a%zz", "file:"}) {
        EXPECT_FALSE(URL::initWithString(text)) << text;
    }
}
