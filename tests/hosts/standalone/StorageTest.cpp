#include "hosts/standalone/Storage.h"

#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace qor::app {
namespace {

using ::testing::HasSubstr;

class StorageTest : public ::testing::Test {
protected:
    static std::unique_ptr<host::UnitHost> makeUnit() {
        host::UnitHostOptions options;
        options.serviced = false;
        auto made = host::UnitHost::create(options);
        EXPECT_TRUE(made);
        return std::move(made).value();
    }
    std::string stateFile() const { return directory_.file("qor-limiter/app-state.plist"); }
    std::string windowFile() const { return directory_.file("qor-limiter/app-window.plist"); }

    test::TemporaryDirectory directory_;
    test::ScopedVariable variable_{"XDG_STATE_HOME", directory_.path().string()};
};

TEST_F(StorageTest, GivesBackEveryParameterThatItKept) {
    const auto before = makeUnit();
    ASSERT_TRUE(before->setParameter(kLimiterThreshold, 0.3F));
    ASSERT_TRUE(before->setParameter(kLimiterMode, 2.0F));
    ASSERT_TRUE(before->setParameter(kLimiterFinalLimiter, 1.0F));
    ASSERT_TRUE(Storage().keep(*before));
    const auto after = makeUnit();
    ASSERT_TRUE(Storage().restore(*after));
    EXPECT_EQ(host::parameterValues(*after), host::parameterValues(*before));
}

TEST_F(StorageTest, StartsWithTheDefaultsWhereNothingIsKept) {
    const auto unit = makeUnit();
    ASSERT_TRUE(Storage().restore(*unit));
    EXPECT_EQ(host::parameterValues(*unit), host::defaultParameterValues());
}

TEST_F(StorageTest, PutsADamagedFileAsideAndSaysSo) {
    test::writeFile(stateFile(), "<plist><dict>");
    const auto unit = makeUnit();
    const auto restored = Storage().restore(*unit);
    ASSERT_FALSE(restored);
    EXPECT_THAT(restored.error().localizedDescription(), HasSubstr(stateFile()));
    EXPECT_EQ(host::parameterValues(*unit), host::defaultParameterValues());
    EXPECT_EQ(test::readFile(stateFile() + ".damaged"), "<plist><dict>");
    EXPECT_FALSE(std::filesystem::exists(stateFile()));
}

TEST_F(StorageTest, WritesAStateOnlyWhenItHasChanged) {
    const auto unit = makeUnit();
    Storage storage;
    ASSERT_TRUE(storage.keep(*unit));
    std::filesystem::remove(stateFile());
    ASSERT_TRUE(storage.keep(*unit));
    EXPECT_FALSE(std::filesystem::exists(stateFile()));
    ASSERT_TRUE(unit->setParameter(kLimiterTrim, 0.25F));
    ASSERT_TRUE(storage.keep(*unit));
    EXPECT_TRUE(std::filesystem::exists(stateFile()));
}

TEST_F(StorageTest, SaysWhyAStateCannotBeWritten) {
    test::writeFile(directory_.file("qor-limiter"), "a file where the folder should be");
    const auto unit = makeUnit();
    const auto kept = Storage().keep(*unit);
    ASSERT_FALSE(kept);
    EXPECT_THAT(kept.error().localizedDescription(), HasSubstr(directory_.file("qor-limiter")));
}

TEST_F(StorageTest, RemembersTheWindowsSize) {
    EXPECT_FALSE(Storage().windowSize());
    ASSERT_TRUE(Storage().keepWindowSize({.width = 640.5, .height = 480.25}));
    EXPECT_EQ(Storage().windowSize(), (CGSize{640.5, 480.25}));
}

TEST_F(StorageTest, TakesNoSenselessWindowSize) {
    const Storage storage;
    for (const char* text : {"", "no list", "<plist version=\"1.0\"><array/></plist>",
                             "<plist version=\"1.0\"><dict><key>width</key><real>640</real></dict></plist>",
                             "<plist "
                             "version=\"1.0\"><dict><key>width</key><real>1e9</real><key>height</"
                             "key><real>400</real></dict></plist>",
                             "<plist "
                             "version=\"1.0\"><dict><key>width</key><real>nan</real><key>height</"
                             "key><real>400</real></dict></plist>",
                             "<plist "
                             "version=\"1.0\"><dict><key>width</key><string>640</string><key>height</"
                             "key><real>400</real></dict></plist>"}) {
        test::writeFile(windowFile(), text);
        EXPECT_FALSE(storage.windowSize()) << text;
    }
}

TEST_F(StorageTest, KeepsNothingInARelativeDirectory) {
    const test::TemporaryDirectory home;
    const test::ScopedVariable relative("XDG_STATE_HOME", "somewhere");
    const test::ScopedVariable homeVariable("HOME", home.path().string());
    ASSERT_TRUE(Storage().keepWindowSize({.width = 640.0, .height = 480.0}));
    EXPECT_TRUE(std::filesystem::exists(home.file(".local/state/qor-limiter/app-window.plist")));
}

} // namespace
} // namespace qor::app
