#include "hosts/shared/BypassFade.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using qor::host::BypassFade;

namespace {

struct Stretch {
    explicit Stretch(std::size_t count)
        : dryLeft(count, 1.0F), dryRight(count, -1.0F), left(count), right(count) {}

    bool run(BypassFade& fade) {
        const float* const dry[2] = {dryLeft.data(), dryRight.data()};
        float* const output[2] = {left.data(), right.data()};
        return fade.process(dry, output, static_cast<std::uint32_t>(left.size()));
    }

    std::vector<float> dryLeft, dryRight, left, right;
};

} // namespace

TEST(BypassFade, TouchesNothingWhileOff) {
    BypassFade fade;
    fade.setSampleRate(48000.0);
    Stretch stretch(64);
    EXPECT_FALSE(stretch.run(fade));
    EXPECT_EQ(stretch.left, std::vector<float>(64, 0.0F));
}

TEST(BypassFade, LetsTheInputThroughBitForBitWhenSettledOn) {
    BypassFade fade;
    fade.setSampleRate(48000.0);
    fade.setBypassed(true);
    fade.settle();
    Stretch stretch(64);
    stretch.dryLeft[3] = 0.1F;
    EXPECT_TRUE(stretch.run(fade));
    EXPECT_EQ(stretch.left, stretch.dryLeft);
    EXPECT_EQ(stretch.right, stretch.dryRight);
}

TEST(BypassFade, FadesInTenMillisecondsWithoutAStepAtAnyRateAndBlockSize) {
    for (const double rate : {8000.0, 44100.0, 192000.0}) {
        const auto whole = static_cast<std::size_t>(std::lround(rate * 0.010));
        for (const std::size_t block : {std::size_t{7}, std::size_t{64}, 2 * whole}) {
            BypassFade fade;
            fade.setSampleRate(rate);
            fade.settle();
            fade.setBypassed(true);
            std::vector<float> heard{0.0F};
            while (heard.size() < 2 * whole) {
                Stretch stretch(block);
                stretch.run(fade);
                heard.insert(heard.end(), stretch.left.begin(), stretch.left.end());
            }
            const auto largest = static_cast<float>(1.0 / (rate * 0.010)) * 1.001F;
            for (std::size_t i = 1; i < heard.size(); ++i) {
                ASSERT_GE(heard[i], heard[i - 1]);
                ASSERT_LE(heard[i] - heard[i - 1], largest) << rate << " " << block << " " << i;
            }
            EXPECT_LT(heard[whole - 2], 1.0F);
            EXPECT_EQ(heard[whole + 2], 1.0F);
        }
    }
}

TEST(BypassFade, TurnsBackFromWhereItIs) {
    BypassFade fade;
    fade.setSampleRate(1000.0); // ten samples
    fade.setBypassed(true);
    Stretch first(5);
    first.run(fade);
    EXPECT_NEAR(first.left[4], 0.5F, 1e-6F);
    fade.setBypassed(false);
    Stretch second(8);
    second.run(fade);
    EXPECT_NEAR(second.left[0], 0.4F, 1e-6F);
    EXPECT_EQ(second.left[6], 0.0F);
}
