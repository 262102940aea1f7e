// The host's bypass, apart from the limiter's own.
#include "ClapRendering.h"

#include "hosts/clap/ClapParameters.h"

#include <gtest/gtest.h>

using namespace test;
using qor::clap::kBypassId;

namespace {

constexpr std::uint32_t kFrames = 9600;
constexpr std::uint32_t kFade = 480; // 10 ms at 48 kHz

class ClapBypass : public testing::Test {
protected:
    ClapBypass() { EXPECT_TRUE(plugin.activate()); }

    ClapTestHost host;
    ClapPluginUnderTest plugin{host};
    Stereo input = noise(kFrames, 1.5F);
};

} // namespace

TEST_F(ClapBypass, BeginsOnItsSampleAndLetsTheInputThroughTenMillisecondsLater) {
    const Stereo limited = renderBare(input);
    for (const std::uint32_t block : {64U, 1000U, 9600U}) {
        ClapPluginUnderTest fresh(host);
        ASSERT_TRUE(fresh.activate());
        const Stereo made = renderClap(fresh, input, block, {{1234, kBypassId, 1.0}});
        EXPECT_EQ(firstDifference(made.left, limited.left), 1234U) << block;
        for (std::size_t i = 1234 + kFade + 1; i < kFrames; ++i) {
            ASSERT_EQ(made.left[i], input.left[i]) << i;
            ASSERT_EQ(made.right[i], input.right[i]) << i;
        }
    }
}

TEST_F(ClapBypass, TheCrossfadeRunsStraightFromTheOneToTheOther) {
    Stereo constant = silence(kFrames);
    std::fill(constant.left.begin(), constant.left.end(), 1.0F);
    std::fill(constant.right.begin(), constant.right.end(), 1.0F);
    const std::vector<Move> loud{{0, 4, 0.25}, {0, 2, 0.25}, {0, 11, 0.0}};
    std::vector<Move> moves = loud;
    moves.push_back({4800, kBypassId, 1.0});
    const Stereo limited = renderBare(constant, loud);
    const Stereo made = renderClap(plugin, constant, 512, moves);
    for (std::uint32_t i = 0; i < kFade; ++i) {
        const float share = static_cast<float>(i + 1) / static_cast<float>(kFade);
        const float wanted = limited.left[4800 + i] + (1.0F - limited.left[4800 + i]) * share;
        ASSERT_NEAR(made.left[4800 + i], wanted, 1e-4F) << i;
    }
}

TEST_F(ClapBypass, GoesBackWithTheSameCrossfadeAndTheLimiterHasKeptRunning) {
    const Stereo limited = renderBare(input);
    const Stereo made = renderClap(plugin, input, 256, {{1000, kBypassId, 1.0}, {5000, kBypassId, 0.0}});
    for (std::size_t i = 5000 + kFade + 1; i < kFrames; ++i) {
        ASSERT_EQ(made.left[i], limited.left[i]) << i;
    }
}

TEST_F(ClapBypass, TwoMovesInOneBlockBothCount) {
    const Stereo apart = renderClap(plugin, input, 32, {{1000, kBypassId, 1.0}, {5000, kBypassId, 0.0}});
    ClapPluginUnderTest fresh(host);
    ASSERT_TRUE(fresh.activate());
    EXPECT_TRUE(
        sameBits(renderClap(fresh, input, kFrames, {{1000, kBypassId, 1.0}, {5000, kBypassId, 0.0}}), apart));
}

TEST_F(ClapBypass, ParameterMovesBesideItStayOnTheirSamples) {
    std::vector<Move> moves = manyMoves(kFrames, 200, 9);
    const Stereo limited = renderBare(input, moves);
    moves.push_back({4000, kBypassId, 1.0});
    moves.push_back({4100, kBypassId, 0.0});
    std::stable_sort(moves.begin(), moves.end(),
                     [](const Move& a, const Move& b) { return a.frame < b.frame; });
    const Stereo made = renderClap(plugin, input, 2048, moves);
    EXPECT_EQ(firstDifference(made.left, limited.left), 4000U);
    for (std::size_t i = 4200; i < kFrames; ++i) { // 100 frames in, 100 frames out
        ASSERT_EQ(made.left[i], limited.left[i]) << i;
    }
}

TEST_F(ClapBypass, IsNotTheLimitersOwnBypass) {
    plugin.setValue(7, 1.0);
    EXPECT_EQ(plugin.value(kBypassId), 0.0);
    plugin.setValue(kBypassId, 1.0);
    plugin.setValue(7, 0.0);
    EXPECT_EQ(plugin.value(kBypassId), 1.0);
    EXPECT_EQ(plugin.value(7), 0.0);
}
