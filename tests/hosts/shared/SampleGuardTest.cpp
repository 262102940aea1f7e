#include "hosts/shared/SampleGuard.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

using namespace qor::host;

namespace {
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
} // namespace

TEST(SampleGuard, ReplacesWhatIsNotFiniteAndCutsWhatIsTooLoud) {
    const std::array<float, 9> source{0.5F,    kNaN,   kInfinity, -kInfinity, 1e38F,
                                      -300.0F, 256.0F, -0.0F,     1e-40F};
    std::array<float, 9> target{};
    copyGuarded(source.data(), target.data(), 9);
    const std::array<float, 9> expected{0.5F, 0.0F, 0.0F, 0.0F, 256.0F, -256.0F, 256.0F, -0.0F, 1e-40F};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(target[i], expected[i]) << i;
        EXPECT_EQ(std::signbit(target[i]), std::signbit(expected[i])) << i;
    }
}

TEST(SampleGuard, TakesAnAbsentSourceForSilence) {
    std::array<float, 3> target{1.0F, 2.0F, 3.0F};
    copyGuarded(nullptr, target.data(), 2);
    EXPECT_EQ(target, (std::array<float, 3>{0.0F, 0.0F, 3.0F}));
}

TEST(SampleGuard, HoldsDownToFullScale) {
    const std::array<float, 4> source{0.25F, 1.5F, -2.0F, -1.0F};
    std::array<float, 4> target{};
    copyHeldDown(source.data(), target.data(), 4);
    EXPECT_EQ(target, (std::array<float, 4>{0.25F, 1.0F, -1.0F, -1.0F}));
}

TEST(SampleGuard, NoticesASingleBadSampleAnywhere) {
    std::array<float, 67> samples{};
    EXPECT_TRUE(allFinite(samples.data(), samples.size()));
    for (std::size_t place = 0; place < samples.size(); ++place) {
        for (const float bad : {kNaN, kInfinity, -kInfinity}) {
            samples[place] = bad;
            EXPECT_FALSE(allFinite(samples.data(), samples.size())) << place;
            samples[place] = 0.0F;
        }
    }
}
