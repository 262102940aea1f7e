#include "platform/files/Files.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>

using platform::Bundle;

TEST(Bundle, TheOverrideVariableAloneDecides) {
    const test::TemporaryDirectory directory;
    const test::ScopedVariable variable(Bundle::main().overrideVariable().c_str(), directory.path().string());
    const auto url = Bundle::main().resourceURL();
    ASSERT_TRUE(url);
    EXPECT_EQ(url->path(), directory.path().string());
    EXPECT_TRUE(url->hasDirectoryPath());
}

TEST(Bundle, AnOverrideThatIsNoDirectoryMeansNoResources) {
    const test::ScopedVariable variable(Bundle::main().overrideVariable().c_str(), "/no/such/directory");
    EXPECT_FALSE(Bundle::main().resourceURL());
}

TEST(Bundle, InTheBuildTreeTheResourcesAreThoseOfTheSourceTree) {
    const test::ScopedVariable variable(Bundle::main().overrideVariable().c_str(), std::nullopt);
    const auto url = Bundle::main().resourceURL();
    ASSERT_TRUE(url);
    EXPECT_EQ(std::filesystem::path(url->path()).filename(), "resources");
    EXPECT_TRUE(std::filesystem::exists(std::filesystem::path(url->path()).parent_path() / "CMakeLists.txt"));
}

TEST(Bundle, SystemDataDirectoriesAreTheAbsoluteOnesOfTheVariable) {
    {
        const test::ScopedVariable variable("XDG_DATA_DIRS", "/a:relative::/b/c");
        EXPECT_EQ(platform::systemDataDirectories(), (std::vector<std::string>{"/a", "/b/c"}));
    }
    const test::ScopedVariable unset("XDG_DATA_DIRS", std::nullopt);
    EXPECT_EQ(platform::systemDataDirectories(),
              (std::vector<std::string>{"/usr/local/share", "/usr/share"}));
}

TEST(Bundle, HasAReverseDomainIdentifier) {
    EXPECT_EQ(Bundle::main().bundleIdentifier(), "org.qrvk.qor-limiter");
    EXPECT_EQ(Bundle::main().directoryName(), "qor-limiter");
}
