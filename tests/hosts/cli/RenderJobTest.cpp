// The loop over the file against an engine that only notes what it is asked.
#include "hosts/cli/RenderJob.h"

#include "SoundFiles.h"
#include "TemporaryFolder.h"
#include "hosts/cli/Interrupt.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>

using namespace qor;
using namespace qor::cli;
using testing::ElementsAre;

namespace {

// Copies input to output and keeps a list of calls.
class NotingEngine : public RenderEngine {
public:
    Result<void> allocate(double sampleRate) override {
        calls.push_back("allocate " + text(sampleRate));
        return {};
    }
    Result<void> setParameter(AUParameterAddress address, float value) override {
        calls.push_back("set " + text(address) + " " + text(value));
        return {};
    }
    void setRawParameter(std::int32_t address, float value) override {
        calls.push_back("raw " + text(address) + " " + text(value));
    }
    Result<void> render(std::int64_t sampleTime, std::span<const AutomationEvent> events,
                        std::uint32_t frames, const float* const input[2], float* const output[2]) override {
        std::string call = "render " + text(sampleTime) + " " + text(frames);
        for (const AutomationEvent& event : events) {
            call += " @" + text(event.time);
        }
        calls.push_back(call);
        if (sampleTime >= failAt) {
            return workFailed("engine failure");
        }
        for (int channel = 0; channel < 2; ++channel) {
            std::copy_n(input[channel], frames, output[channel]);
        }
        return {};
    }
    MeterValues meters() override { return {}; }
    std::uint64_t breakdowns() const override { return 0; }

    std::vector<std::string> calls;
    std::int64_t failAt = 1 << 30;
};

class RenderJob : public testing::Test {
protected:
    void SetUp() override {
        test::writeSound(folder.path("in.wav"), test::burstyNoise(1000));
        request.input = folder.path("in.wav");
        request.output = folder.path("out.wav");
    }

    test::TemporaryFolder folder;
    RenderRequest request;
    NotingEngine engine;
};

} // namespace

TEST_F(RenderJob, AllocatesThenSetsThenRendersInBlocksFromSampleTime0) {
    folder.write("moves.txt", "400 trim 0\n399 trim 0\n0 trim 0\n999 mix 1\n1000 mix 1\n");
    request.automation = folder.path("moves.txt");
    request.block = 400;
    request.settings = {{2, 0.5F, false}, {15, 2.0F, true}, {2, 0.25F, false}};
    const auto summary = renderFile(request, engine);
    ASSERT_TRUE(summary) << summary.error().localizedDescription();
    EXPECT_THAT(engine.calls,
                ElementsAre("allocate 48000.0", "set 2 0.5", "raw 15 2.0", "set 2 0.25",
                            "render 0 400 @0 @399", "render 400 400 @400", "render 800 200 @999"));
    EXPECT_EQ(summary.value().frames, 1000);
    EXPECT_EQ(summary.value().warnings.size(), 1U);
    EXPECT_EQ(test::readSound(request.output).samples, test::readSound(request.input).samples);
}

TEST_F(RenderJob, BlocksKeepTheirGridAcrossTheChunksOfTheFile) {
    test::writeSound(request.input, test::burstyNoise(50000));
    request.block = 3000;
    ASSERT_TRUE(renderFile(request, engine));
    ASSERT_EQ(engine.calls.size(), 18U);
    for (int i = 0; i < 16; ++i) {
        EXPECT_EQ(engine.calls[static_cast<std::size_t>(i) + 1], "render " + text(i * 3000) + " 3000");
    }
    EXPECT_EQ(engine.calls.back(), "render 48000 2000");
}

TEST_F(RenderJob, AFailedRenderCallLeavesNoFile) {
    engine.failAt = 512;
    request.meters = folder.path("m.csv");
    const auto summary = renderFile(request, engine);
    ASSERT_FALSE(summary);
    EXPECT_EQ(summary.error().localizedDescription(), "engine failure");
    EXPECT_THAT(folder.names(), ElementsAre("in.wav"));
}

TEST_F(RenderJob, AnInterruptEndsTheWorkAndLeavesNoFile) {
    const auto stoppedRender = [&] {
        catchInterrupts();
        static_cast<void>(std::raise(SIGTERM));
        const auto summary = renderFile(request, engine);
        const bool clean = folder.names() == std::vector<std::string>{"in.wav"};
        std::fputs(summary ? "done" : summary.error().localizedDescription().c_str(), stderr);
        std::_Exit(clean ? 3 : 4);
    };
    EXPECT_EXIT(stoppedRender(), testing::ExitedWithCode(3), "stopped; '.*out.wav' was not written");
}
