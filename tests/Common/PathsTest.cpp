#include "Common/Paths.h"

#include "support/CapturedLog.h"
#include "support/NoUserEntry.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace qor;
using testing::ElementsAre;

class Paths : public testing::Test {
protected:
    std::vector<std::string> lines() {
        loop_.pump();
        return log_.lines();
    }

    test::TemporaryDirectory home_;
    test::ScopedVariable homeVariable_{"HOME", home_.path().string()};
    test::ScopedVariable configVariable_{"XDG_CONFIG_HOME", home_.file("config")};
    test::ScopedVariable resources_{Bundle::main().overrideVariable().c_str(), home_.path().string()};
    test::CapturedLog log_;
    RunLoop loop_;
    RunLoop::Scope scope_{loop_};
};

} // namespace

TEST_F(Paths, AreAbsentBeforeTheyAreAskedFor) {
    EXPECT_EQ(sharedURLAudio, std::nullopt);
    EXPECT_EQ(sharedURLMIDI, std::nullopt);
}

TEST_F(Paths, GetPathsFillsAndLogsBoth) {
    getPaths();
    EXPECT_EQ(documentsURL->path(), home_.file("Documents"));
    EXPECT_EQ(resourcesURL->path(), home_.path().string());
    EXPECT_EQ(sharedURLAudio, std::nullopt);
    EXPECT_THAT(lines(),
                ElementsAre("AudioUnitViewController::getPaths() : Audio Unit's documents path is: " +
                                home_.file("Documents"),
                            "AudioUnitViewController::getPaths() : Audio Unit's resources path is: " +
                                home_.path().string()));
}

TEST_F(Paths, AbsentResourcesAreLoggedAndStayAbsent) {
    const test::ScopedVariable nowhere(Bundle::main().overrideVariable().c_str(), "/no/such/directory");
    getPaths();
    EXPECT_EQ(resourcesURL, std::nullopt);
    EXPECT_EQ(lines().back(),
              "AudioUnitViewController::getPaths() : ERROR: Audio Unit's resources path is nil.");
}

TEST_F(Paths, AbsentDocumentsAreLoggedAndStayAbsent) {
    const test::ScopedVariable noHome("HOME", std::nullopt);
    const test::ScopedVariable noConfig("XDG_CONFIG_HOME", std::nullopt);
    const test::NoUserEntry nobody;
    getPaths();
    EXPECT_EQ(documentsURL, std::nullopt);
    EXPECT_EQ(lines().front(),
              "AudioUnitViewController::getPaths() : ERROR: Audio Unit's documents path is nil.");
}

TEST_F(Paths, ADirectoryIsMadeWithThoseAboveIt) {
    const URL url = URL::fileURLWithPath(home_.file("a/b/c"));
    EXPECT_TRUE(ensureDirectoryExists(url));
    EXPECT_TRUE(FileManager::defaultManager().fileExistsAtPath(url.path()));
    EXPECT_TRUE(ensureDirectoryExists(url)) << "one that exists is fine";
    EXPECT_THAT(lines(), testing::IsEmpty());
}

TEST_F(Paths, AFailureIsLoggedWithPathAndReason) {
    test::writeFile(home_.file("file"), "x");
    EXPECT_FALSE(ensureDirectoryExists(URL::fileURLWithPath(home_.file("file/b"))));
    const auto logged = lines();
    ASSERT_EQ(logged.size(), 1U);
    EXPECT_THAT(logged[0],
                testing::StartsWith("ensureDirectoryExists() : ERROR: Creating required directory '" +
                                    home_.file("file/b") + "' failed: "));
}
