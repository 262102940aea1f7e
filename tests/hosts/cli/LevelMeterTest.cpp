#include "hosts/cli/LevelMeter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

using qor::cli::LevelMeter;

namespace {

std::vector<float> sine(double level, double frequency, int rate, double seconds) {
    std::vector<float> samples(static_cast<std::size_t>(rate * seconds));
    for (std::size_t i = 0; i < samples.size(); ++i) {
        samples[i] = static_cast<float>(
            level * std::sin(2.0 * std::numbers::pi * frequency * static_cast<double>(i) / rate));
    }
    return samples;
}

} // namespace

TEST(LevelMeter, AStereoSineOf1kHzAtMinus23DbFullScaleReads23LufsDown) {
    for (const int rate : {8000, 44100, 48000, 384000}) {
        LevelMeter meter(rate);
        const std::vector<float> samples = sine(std::pow(10.0, -23.0 / 20.0), 1000.0, rate, 5.0);
        meter.add(samples.data(), samples.data(), samples.size());
        EXPECT_NEAR(meter.loudness(), -23.0, 0.1) << rate;
        EXPECT_NEAR(meter.peak(), -23.0, 0.02) << rate;
    }
}

TEST(LevelMeter, AgreesWithTheLibrarysOwnGateOnMusicWithPauses) {
    std::mt19937 generator(3);
    std::normal_distribution<float> noise;
    std::vector<float> interleaved;
    std::vector<float> left;
    std::vector<float> right;
    for (int i = 0; i < 48000 * 30; ++i) {
        const float level = 0.3F * std::exp(-static_cast<float>(i % 96000) / 9000.0F);
        left.push_back(level * noise(generator));
        right.push_back(0.5F * level * noise(generator));
        interleaved.insert(interleaved.end(), {left.back(), right.back()});
    }
    LevelMeter meter(48000);
    meter.add(left.data(), right.data(), left.size());
    ebur128_state* reference = ebur128_init(2, 48000, EBUR128_MODE_I);
    ebur128_add_frames_float(reference, interleaved.data(), left.size());
    double expected = 0.0;
    ebur128_loudness_global(reference, &expected);
    ebur128_destroy(&reference);
    EXPECT_NEAR(meter.loudness(), expected, 0.01);
}

TEST(LevelMeter, LessThanOneBlockHasNoLoudness) {
    LevelMeter meter(48000);
    const std::vector<float> samples = sine(0.5, 1000.0, 48000, 0.399);
    meter.add(samples.data(), samples.data(), samples.size());
    EXPECT_EQ(meter.loudness(), -std::numeric_limits<double>::infinity());
    meter.add(samples.data(), samples.data(), 48);
    EXPECT_NEAR(meter.loudness(), -6.0, 0.1);
}

TEST(LevelMeter, SilenceIsInfinitelyQuiet) {
    LevelMeter meter(48000);
    const std::vector<float> samples(48000);
    meter.add(samples.data(), samples.data(), samples.size());
    EXPECT_EQ(meter.peak(), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(meter.loudness(), -std::numeric_limits<double>::infinity());
}

TEST(LevelMeter, ThePiecesOfASignalAddUpToTheWhole) {
    const std::vector<float> samples = sine(0.5, 440.0, 48000, 3.0);
    LevelMeter whole(48000);
    whole.add(samples.data(), samples.data(), samples.size());
    LevelMeter pieces(48000);
    for (std::size_t i = 0; i < samples.size(); i += 1000) {
        pieces.add(&samples[i], &samples[i], 1000);
    }
    EXPECT_EQ(whole.loudness(), pieces.loudness());
    EXPECT_TRUE(std::isfinite(whole.loudness()));
    EXPECT_EQ(whole.peak(), pieces.peak());
}

TEST(LevelMeter, CountsWhatIsNotFiniteAndMeasuresTheRest) {
    std::vector<float> samples = sine(0.5, 1000.0, 48000, 3.0);
    samples[10] = std::numeric_limits<float>::quiet_NaN();
    samples[20] = std::numeric_limits<float>::infinity();
    LevelMeter meter(48000);
    meter.add(samples.data(), samples.data(), samples.size());
    EXPECT_EQ(meter.nonFiniteSamples(), 4U);
    EXPECT_NEAR(meter.peak(), 20.0 * std::log10(0.5), 0.01);
    EXPECT_TRUE(std::isfinite(meter.loudness()));
}
