// The whole unit as the program drives it, beside the bare kernel.
#include "hosts/cli/UnitEngine.h"

#include "KernelEngine.h"
#include "SoundFiles.h"
#include "TemporaryFolder.h"
#include "hosts/cli/FileLogSink.h"
#include "hosts/cli/RenderJob.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace qor;
using namespace qor::cli;

namespace {

class UnitEngineRender : public testing::Test {
protected:
    std::unique_ptr<RenderEngine> unit(bool plainPull = false) {
        return std::move(UnitEngine::create(plainPull)).value();
    }
    /// Renders a sound and returns the bytes of the file.
    std::string render(RenderEngine& engine, const test::Sound& sound,
                       std::vector<ParameterSetting> settings = {}, const std::string& automation = "") {
        RenderRequest request;
        request.input = folder.path("in.wav");
        request.output = folder.path("out.wav");
        request.settings = std::move(settings);
        if (!automation.empty()) {
            request.automation = folder.write("moves.txt", automation);
        }
        request.block = 480;
        request.meters = folder.path("meters.csv");
        test::writeSound(request.input, sound);
        summary = std::move(renderFile(request, engine)).value();
        return test::contentOf(request.output) + test::contentOf(request.meters);
    }
    float outputPeak() const {
        float peak = 0.0F;
        for (const float sample : test::readSound(folder.path("out.wav")).samples) {
            peak = std::max(peak, std::abs(sample));
        }
        return peak;
    }

    test::TemporaryFolder folder;
    RenderSummary summary;
    LogSinkScope quiet{discardingSink()};
};

test::Sound louder(test::Sound sound, float gain) {
    for (float& sample : sound.samples) {
        sample *= gain;
    }
    return sound;
}

} // namespace

TEST_F(UnitEngineRender, WithoutTheFinalLimiterEverySampleAndMeterIsTheKernels) {
    const test::Sound sound = test::burstyNoise(20000, 2, 44100);
    const std::vector<std::vector<ParameterSetting>> cases{
        {},
        {{3, 1.0F}, {2, 0.4F}, {6, 1.0F}},
        {{6, 2.0F}, {2, 0.3F}, {8, 1.0F}},
        {{9, 0.2F}, {10, 0.6F}, {2, 0.3F}},
        {{6, 3.0F}, {10, 0.5F}, {2, 0.2F}, {5, 0.6F}},
        {{6, 1.9F, true}, {15, 100.0F, true}},
    };
    for (std::vector<ParameterSetting> settings : cases) {
        settings.insert(settings.begin(), {11, 0.0F});
        const std::string automation =
            "100 threshold 0.2\n100 attack 0\n479 trim 0.6\n480 mode 1\n9999 mix 0.5\n";
        const auto whole = unit();
        test::KernelEngine kernel;
        EXPECT_EQ(render(*whole, sound, settings, automation), render(kernel, sound, settings, automation));
    }
}

TEST_F(UnitEngineRender, TheKnobsAreHeardThroughTheFinalLimiter) {
    const test::Sound sound = test::burstyNoise(10000);
    const auto one = unit();
    const auto other = unit();
    EXPECT_NE(render(*one, sound, {{2, 0.8F}}), render(*other, sound, {{2, 0.3F}}));
}

TEST_F(UnitEngineRender, InputOf24DbOverFullScaleNeverLeavesAboveFullScale) {
    const test::Sound hot = louder(test::burstyNoise(50000), 16.0F);
    for (const float mode : {0.0F, 1.0F, 2.0F, 3.0F}) {
        const auto engine = unit();
        render(*engine, hot, {{6, mode}, {4, 1.0F}});
        EXPECT_GT(outputPeak(), 0.5F);
        EXPECT_LE(outputPeak(), 1.0F);
        test::KernelEngine kernel;
        render(kernel, hot, {{6, mode}, {4, 1.0F}});
        EXPECT_GT(outputPeak(), 1.0F) << "or there is nothing to guard";
    }
}

TEST_F(UnitEngineRender, WithPlainPullTheFinalLimiterHearsTheDryInput) {
    const test::Sound hot = louder(test::burstyNoise(20000), 4.0F);
    const auto plain = unit(true);
    render(*plain, hot, {{2, 0.1F}});
    const std::vector<float> plainSamples = test::readSound(folder.path("out.wav")).samples;
    const auto bypassed = unit();
    render(*bypassed, hot, {{7, 1.0F}});
    EXPECT_EQ(plainSamples, test::readSound(folder.path("out.wav")).samples);
    const auto chained = unit();
    render(*chained, hot, {{2, 0.1F}});
    EXPECT_NE(plainSamples, test::readSound(folder.path("out.wav")).samples);
}

TEST_F(UnitEngineRender, OneHostileSampleDoesNotReachWhatFollowsIt) {
    const float infinity = std::numeric_limits<float>::infinity();
    for (const float hostile : {infinity, -infinity, std::nanf(""), 1e38F}) {
        test::Sound sound = test::burstyNoise(30000);
        const auto clean = unit();
        render(*clean, sound);
        const std::vector<float> expected = test::readSound(folder.path("out.wav")).samples;
        sound.samples[2 * 5000] = hostile;
        const auto engine = unit();
        render(*engine, sound);
        const std::vector<float> got = test::readSound(folder.path("out.wav")).samples;
        EXPECT_EQ(engine->breakdowns(), 0U);
        double loudest = 0.0;
        double difference = 0.0;
        for (std::size_t i = 2 * 29000; i < got.size(); ++i) {
            ASSERT_TRUE(std::isfinite(got[i]));
            loudest = std::max(loudest, std::abs(static_cast<double>(expected[i])));
            difference = std::max(difference, std::abs(static_cast<double>(expected[i]) - got[i]));
        }
        EXPECT_LT(difference, 0.5 * loudest) << hostile << ": half a second later the music is back";
    }
}

TEST_F(UnitEngineRender, AStateThatBreaksDownIsMadeAnewAndReported) {
    const auto engine = unit();
    render(*engine, test::burstyNoise(5000), {{4, 3e38F, true}, {2, 3e38F, true}});
    EXPECT_GE(engine->breakdowns(), 1U);
    EXPECT_LE(outputPeak(), 1.0F);
    ASSERT_EQ(summary.warnings.size(), 1U);
    EXPECT_THAT(summary.warnings[0], testing::HasSubstr("made anew"));
}
