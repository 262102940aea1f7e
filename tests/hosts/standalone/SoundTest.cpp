#include "hosts/standalone/Sound.h"

#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cmath>
#include <thread>

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

/// A server whose rate and blocks the test has in its hand.
class HandBackend final : public AudioBackend {
public:
    explicit HandBackend(std::atomic<double>& rate) : rate_(rate) {}
    std::string name() const override { return "hand"; }
    double sampleRate() const override { return rate_.load(); }
    Result<void> start(AudioTarget& target) override {
        target_ = &target;
        return {};
    }
    void stop() noexcept override {}
    Result<void> connect() override { return {}; }
    std::optional<std::string> loss() const override { return std::nullopt; }

    static constexpr std::size_t kFrames = 256;
    using Side = std::array<float, kFrames>;
    Side block(float input) const {
        Side in{};
        in.fill(input);
        Side left{};
        Side right{};
        const float* const inputs[2] = {in.data(), in.data()};
        float* const outputs[2] = {left.data(), right.data()};
        target_->process(inputs, outputs, kFrames);
        return left;
    }

private:
    std::atomic<double>& rate_;
    AudioTarget* target_ = nullptr;
};

class SoundRateTest : public SoundTest {
protected:
    SoundRateTest() {
        auto backend = std::make_unique<HandBackend>(rate_);
        backend_ = backend.get();
        EXPECT_TRUE(unit_->setParameter(kLimiterThreshold, 0.25F));
        EXPECT_TRUE(sound_.run(std::move(backend)));
    }

    std::atomic<double> rate_{44100.0};
    Sound sound_{*unit_};
    HandBackend* backend_ = nullptr;
};

TEST_F(SoundRateTest, StaysAsItIsWhileTheServersRateDoes) {
    EXPECT_FALSE(sound_.followRate());
    EXPECT_EQ(unit_->sampleRate(), 44100.0);
}

TEST_F(SoundRateTest, FollowsTheServersRateWithItsParameters) {
    rate_.store(96000.0);
    ASSERT_TRUE(sound_.followRate());
    EXPECT_FALSE(sound_.followRate());
    EXPECT_EQ(unit_->sampleRate(), 96000.0);
    EXPECT_EQ(unit_->parameter(kLimiterThreshold), 0.25F);
    EXPECT_EQ(sound_.description(), "hand, 96000 Hz");

    // From here on it sounds as a unit does that never knew another rate.
    host::UnitHostOptions options;
    options.serviced = false;
    const auto fresh = std::move(host::UnitHost::create(options)).value();
    ASSERT_TRUE(fresh->setParameter(kLimiterThreshold, 0.25F));
    Sound reference(*fresh);
    auto backend = std::make_unique<HandBackend>(rate_);
    const HandBackend* hand = backend.get();
    ASSERT_TRUE(reference.run(std::move(backend)));
    for (int i = 0; i < 20; ++i) {
        ASSERT_EQ(backend_->block(0.9F), hand->block(0.9F)) << "block " << i;
    }
}

TEST_F(SoundRateTest, ChangesTheRateUnderARunningServer) {
    std::atomic<bool> running{true};
    std::atomic<int> blocks{0};
    float loudest = 0.0F;
    std::thread server([&] {
        while (running.load()) {
            for (const float sample : backend_->block(0.9F)) {
                loudest = std::isfinite(sample) ? std::max(loudest, std::fabs(sample)) : INFINITY;
            }
            blocks.fetch_add(1);
        }
    });
    for (int i = 0; i < 50; ++i) {
        const int seen = blocks.load();
        while (blocks.load() == seen) { // the server goes on in between
            std::this_thread::yield();
        }
        rate_.store(i % 2 == 0 ? 48000.0 : 44100.0);
        EXPECT_TRUE(sound_.followRate());
    }
    running.store(false);
    server.join();
    EXPECT_GT(loudest, 0.0F);
    EXPECT_LE(loudest, 1.0F);
}

} // namespace
} // namespace qor::app
