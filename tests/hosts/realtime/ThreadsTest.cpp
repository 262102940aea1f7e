// Every thread that may meet on one instance does its work at the same time. What is shared by plain fields
// is listed in docs/realtime.md; ThreadSanitizer finds anything else.
#include "hosts/shared/UnitHost.h"
#include "kernel/ParameterTable.h"
#include "support/CapturedLog.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cmath>
#include <random>
#include <thread>

namespace {

using namespace qor;
using namespace qor::host;

class Threads : public ::testing::Test {
protected:
    static constexpr int kCalls = 3000;
    static constexpr std::uint32_t kFrames = 64;

    LogSink& before = setLogSink(discardingSink());
    std::unique_ptr<UnitHost> host = UnitHost::create({}).value(); // with its service thread
    std::atomic<bool> rendering{true};

    void SetUp() override { ASSERT_TRUE(host->activate(48000.0)); }
    void TearDown() override {
        host = nullptr;
        setLogSink(before);
    }

    /// Renders noise with automation of every parameter; returns how many samples were not finite.
    int render() {
        std::minstd_rand random(3);
        std::array<float, kFrames> left{};
        std::array<float, kFrames> right{};
        int bad = 0;
        for (int call = 0; call < kCalls; ++call) {
            for (std::uint32_t i = 0; i < kFrames; ++i) {
                left[i] = static_cast<float>(random() % 2001) / 1000.0F - 1.0F;
                right[i] = static_cast<float>(random() % 2001) / 1000.0F - 1.0F;
            }
            HostEvent event;
            event.kind = HostEventKind::Parameter;
            event.frame = random() % kFrames;
            event.address = random() % kParameterCount;
            event.value = static_cast<float>(random() % 2);
            const float* const input[2] = {left.data(), right.data()};
            float* const output[2] = {left.data(), right.data()};
            host->render(input, output, kFrames, SpanEvents(std::span(&event, 1)));
            for (std::uint32_t i = 0; i < kFrames; ++i) {
                bad += std::isfinite(left[i]) && std::isfinite(right[i]) ? 0 : 1;
            }
        }
        rendering.store(false);
        return bad;
    }
};

TEST_F(Threads, KnobsMetersAndAutomationMeetOnOneInstance) {
    int bad = -1;
    std::thread renderer([&] { bad = render(); });
    std::thread meters([&] {
        while (rendering.load()) {
            const Meters now = host->meters();
            EXPECT_GE(now.peak1, 0.0F);
            EXPECT_LE(now.peak2, 1.0F);
            EXPECT_TRUE(std::isfinite(host->parameter(kLimiterThreshold)));
        }
    });
    std::minstd_rand random(5);
    while (rendering.load()) {
        const AUParameterAddress address = random() % kParameterCount;
        EXPECT_TRUE(host->setParameter(address, static_cast<float>(random() % 2)).ok());
        host->setBypassed(random() % 4 == 0);
        host->pump();
    }
    renderer.join();
    meters.join();
    EXPECT_EQ(bad, 0);
}

TEST_F(Threads, InstancesComeAndGoWhileOthersRender) {
    int bad = -1;
    std::thread renderer([&] { bad = render(); });
    std::thread maker([&] {
        while (rendering.load()) {
            auto other = UnitHost::create({});
            ASSERT_TRUE(other.ok());
            EXPECT_TRUE(other.value()->activate(44100.0).ok());
        }
    });
    while (rendering.load()) {
        auto other = UnitHost::create({.serviced = false});
        ASSERT_TRUE(other.ok());
        EXPECT_TRUE(other.value()->setParameter(kLimiterMix, 0.5F).ok());
    }
    renderer.join();
    maker.join();
    EXPECT_EQ(bad, 0);
}

TEST_F(Threads, ABrokenUnitIsReplacedByTheServiceThreadWhileItsMetersAreRead) {
    host->unit().kernelAdapter->setParameterEx(kLimiterFinalLimiter, 0.0F);
    host->unit().kernelAdapter->setParameterEx(kLimiterAttack, -1e30F);
    std::atomic<bool> replaced{false};
    host->setOnUnitReplaced([&replaced] { replaced.store(true); });
    std::thread renderer([&] {
        std::array<float, kFrames> left{};
        std::array<float, kFrames> right{};
        while (!replaced.load()) {
            left.fill(2.0F);
            right.fill(-2.0F);
            float* const both[2] = {left.data(), right.data()};
            host->render(both, both, kFrames, SpanEvents({}));
            EXPECT_TRUE(std::isfinite(left[0]));
        }
    });
    while (!replaced.load()) {
        EXPECT_GE(host->meters().peak1, 0.0F);
        EXPECT_EQ(host->parameter(kLimiterMix), 1.0F);
    }
    renderer.join();
    EXPECT_EQ(host->replacements(), 1U);
}

} // namespace
