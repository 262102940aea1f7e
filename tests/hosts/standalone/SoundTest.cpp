#include "hosts/standalone/Sound.h"

#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace qor::app {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class SoundTest : public ::testing::Test {
protected:
    SoundTest() {
        host::UnitHostOptions options;
        options.serviced = false;
        unit_ = std::move(host::UnitHost::create(options)).value();
    }

    // A server name that nobody uses, so that a server of the machine plays no part.
    test::ScopedVariable server_{"JACK_DEFAULT_SERVER", "qor-limiter-test-without-server"};
    std::unique_ptr<host::UnitHost> unit_;
    std::vector<std::string> notes_;
};

TEST_F(SoundTest, IsNotThereWhenNoneIsWanted) {
    Sound sound(*unit_);
    EXPECT_TRUE(sound.start({.backend = BackendChoice::none, .clientName = "test", .devices = {}}, notes_));
    EXPECT_FALSE(sound.isRunning());
    EXPECT_EQ(sound.description(), "no sound");
    EXPECT_FALSE(sound.takeLoss());
    EXPECT_TRUE(notes_.empty());
}

TEST_F(SoundTest, SaysThatNoServerRunsAndLeavesTheUnitAlone) {
    Sound sound(*unit_);
    const auto started =
        sound.start({.backend = BackendChoice::jack, .clientName = "test", .devices = {}}, notes_);
    ASSERT_FALSE(started);
    EXPECT_EQ(started.error().localizedDescription(), "no JACK server is running. Start jackd or PipeWire.");
    EXPECT_FALSE(sound.isRunning());
    EXPECT_FALSE(unit_->isActive());
}

TEST_F(SoundTest, NamesTheDeviceThatIsNotThere) {
    Sound sound(*unit_);
    const auto started = sound.start({.backend = BackendChoice::rtaudio,
                                      .clientName = "test",
                                      .devices = {.input = "", .output = "no such device"}},
                                     notes_);
    ASSERT_FALSE(started);
    EXPECT_THAT(started.error().localizedDescription(), HasSubstr("'no such device'"));
    EXPECT_THAT(started.error().localizedDescription(), HasSubstr("--list-devices"));
}

TEST_F(SoundTest, NotesWhyItTriesTheNextBackend) {
    Sound sound(*unit_);
    const auto started = sound.start({.backend = BackendChoice::automatic,
                                      .clientName = "test",
                                      .devices = {.input = "", .output = "no such device"}},
                                     notes_);
    EXPECT_FALSE(started);
    EXPECT_THAT(notes_, ElementsAre("no JACK server is running. Start jackd or PipeWire."));
}

} // namespace
} // namespace qor::app
