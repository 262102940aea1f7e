#include "kernel/Follower.h"
#include "kernel/comparison/Random.h"
#include "kernel/model/KernelModel.h"

#include <gtest/gtest.h>

#include <bit>
#include <vector>

namespace {

using comparison::Random;
using qor::Follower;

/// Both forms in the same state, at a place in their range that the shipped one's shortcuts depend on.
void place(Follower& follower, model::Meter& meter, Random& random) {
    const auto rate = random.oneOf<float>({48000.0F, 44100.0F, 192000.0F, 22050.0F, 1000.0F, 97.0F});
    follower.setSamplerate(rate);
    meter.rate(rate);
    const double low = std::exp2(random.below(14) - 12);
    follower.value = random.oneOf<double>({0.0, low, low * (1.0 + 0x1p-52), low * (1.0 - 0x1p-53),
                                           low + follower.releaseStep * random.below(12),
                                           low * static_cast<double>(1.0F + random.unit())});
    follower.holdCounter = random.oneIn(2) ? 0 : random.below(9) - 2;
    if (random.oneIn(4)) { // steps half way between two places of the values around the start
        follower.releaseStep = (random.below(100000) + 0.5) * low * 0x1p-52;
    }
    meter.value = follower.value;
    meter.holdCounter = follower.holdCounter;
    meter.releaseStep = follower.releaseStep;
}

/// Whole signals, and such as lie around what the follower falls to: a few samples reach it, most do not.
void fill(std::vector<float>& samples, Random& random, double value) {
    random.fill(samples.data(), static_cast<int>(samples.size()));
    if (random.oneIn(3)) {
        return;
    }
    const int rare = 2 + random.below(60);
    for (float& sample : samples) {
        const float scale = random.oneIn(rare) ? 1.0F + 0.01F * random.unit() : 0.999F * random.unit();
        sample = static_cast<float>(value) * (random.oneIn(2) ? scale : -scale);
    }
}

TEST(FollowerPlainForm, RandomBlocksAgreeWithSingleSamplesBitForBit) {
    for (std::uint32_t seed = 1; seed <= 3000; ++seed) {
        Random random(seed);
        Follower follower;
        model::Meter meter;
        place(follower, meter, random);
        for (int block = 0; block < 8; ++block) {
            std::vector<float> samples(static_cast<std::size_t>(random.below(200)));
            fill(samples, random, follower.value);
            follower.processBuffer(samples.data(), static_cast<long>(samples.size()));
            for (const float sample : samples) {
                meter.sample(sample);
            }
            ASSERT_EQ(std::bit_cast<std::uint64_t>(follower.value), std::bit_cast<std::uint64_t>(meter.value))
                << "seed " << seed << ", block " << block;
            ASSERT_EQ(follower.holdCounter, meter.holdCounter) << "seed " << seed << ", block " << block;
        }
    }
}

} // namespace
