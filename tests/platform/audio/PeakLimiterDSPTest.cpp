#include "platform/audio/PeakLimiterDSP.h"
#include "LimiterSignals.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace {

using namespace platform;
using test::sameBits;
using test::Samples;

constexpr std::array kRates{44100.0, 48000.0, 88200.0, 96000.0, 176400.0, 192000.0};

PeakLimiterDSP limiterAt(double rate, float attack = 0.012F, float decay = 0.024F, float preGain = 0.0F) {
    PeakLimiterDSP limiter;
    limiter.set(attack, decay, preGain);
    limiter.prepare(rate);
    return limiter;
}

void run(PeakLimiterDSP& limiter, Samples& left, Samples& right) {
    limiter.process(left.data(), right.data(), static_cast<std::uint32_t>(left.size()));
}

/// The gain that one quiet frame gets now.
double probe(PeakLimiterDSP& limiter) {
    float left = 0.001F;
    float right = 0.001F;
    limiter.process(&left, &right, 1);
    return double{left} / double{0.001F};
}

/// Holds the level for a time.
void feed(PeakLimiterDSP& limiter, float level, std::size_t frames) {
    Samples left(frames, level);
    Samples right(frames, level);
    run(limiter, left, right);
}

std::vector<test::StereoSignal> loudSignals(double rate) {
    const auto frames = static_cast<std::size_t>(rate / 4);
    std::vector<test::StereoSignal> signals;
    for (const double decibels : {-6.0, 0.0, 0.1, 6.0, 12.0, 24.0, 40.0}) {
        const std::string at = " at " + std::to_string(decibels) + " dB";
        signals.push_back({"noise" + at, test::noise(frames, decibels, 1), test::noise(frames, decibels, 2)});
        for (const double hertz : {20.0, 110.0, 997.0, 7351.0, 19997.0}) {
            signals.push_back({"sine of " + std::to_string(hertz) + at,
                               test::sine(frames, decibels, hertz, rate),
                               test::sine(frames, decibels, hertz * 1.01, rate)});
        }
        signals.push_back({"square" + at, test::square(frames, decibels, 97.0, rate),
                           test::square(frames, decibels, 1201.0, rate)});
        signals.push_back(
            {"drums" + at, test::drums(frames, decibels, rate, 3), test::drums(frames, decibels, rate, 4)});
    }
    return signals;
}

TEST(PeakLimiter, NothingLeavesAboveTheCeiling) {
    for (const double rate : {44100.0, 48000.0, 96000.0, 192000.0}) {
        for (const auto& [attack, decay, preGain] :
             {std::array{0.012F, 0.024F, 0.0F}, std::array{0.03F, 0.06F, -0.01F},
              std::array{0.001F, 0.001F, 12.0F}, std::array{0.03F, 0.001F, 40.0F}}) {
            for (const auto& signal : loudSignals(rate)) {
                Samples left = signal.left;
                Samples right = signal.right;
                auto limiter = limiterAt(rate, attack, decay, preGain);
                run(limiter, left, right);
                ASSERT_LE(test::peakOf(left), 1.0F) << signal.name << ", rate " << rate << ", " << preGain;
                ASSERT_LE(test::peakOf(right), 1.0F) << signal.name << ", rate " << rate << ", " << preGain;
            }
        }
    }
}

TEST(PeakLimiter, ALoudSignalReachesTheCeiling) {
    Samples left = test::square(4410, 20.0, 97.0, 44100.0);
    Samples right = left;
    auto limiter = limiterAt(44100.0);
    run(limiter, left, right);
    EXPECT_EQ(test::peakOf(left), 1.0F);
}

TEST(PeakLimiter, TheLargestFiniteInputStaysBelowTheCeiling) {
    const float largest = std::numeric_limits<float>::max();
    for (const float preGain : {-40.0F, 0.0F, 40.0F}) {
        auto limiter = limiterAt(44100.0, 0.012F, 0.024F, preGain);
        Samples left{largest, -largest, 0x1p101F, 1e38F, largest};
        Samples right{1e-38F, largest, -1.0F, -1e38F, 0.0F};
        run(limiter, left, right);
        for (std::size_t i = 0; i < left.size(); ++i) {
            EXPECT_LE(std::abs(left[i]), 1.0F);
            EXPECT_LE(std::abs(right[i]), 1.0F);
        }
        EXPECT_GT(left[0], 0.0F);
    }
}

TEST(PeakLimiter, BelowTheCeilingAtNoPreGainEverySamplePassesBitForBit) {
    for (const double rate : kRates) {
        Samples left = test::noise(20000, 0.0, 11);
        Samples right = test::drums(20000, -1.0, rate, 12);
        const std::array<float, 7> edges{1.0F, -1.0F, -0.0F, 1e-45F, -1e-40F, 0x1.fffffep-1F, 0x1p-126F};
        std::copy(edges.begin(), edges.end(), left.begin() + 100);
        std::copy(edges.rbegin(), edges.rend(), right.begin() + 5000);
        ASSERT_LE(test::peakOf(right), 1.0F);
        const Samples leftIn = left;
        const Samples rightIn = right;
        auto limiter = limiterAt(rate);
        run(limiter, left, right);
        EXPECT_TRUE(sameBits(left, leftIn));
        EXPECT_TRUE(sameBits(right, rightIn));
    }
}

TEST(PeakLimiter, AfterLimitingHasDiedAwayItIsBitTransparentAgain) {
    auto limiter = limiterAt(48000.0, 0.03F, 0.06F);
    feed(limiter, 100.0F, 48000);
    feed(limiter, 0.0F, 3 * 48000);
    EXPECT_EQ(limiter.reduction(), 0.0);
    Samples left = test::noise(4800, 0.0, 13);
    Samples right = left;
    const Samples in = left;
    run(limiter, left, right);
    EXPECT_TRUE(sameBits(left, in));
}

TEST(PeakLimiter, TheGainRecoversWithTheDecayConstantAtEveryRate) {
    for (const double rate : kRates) {
        for (const float decay : {0.001F, 0.024F, 0.06F}) {
            auto limiter = limiterAt(rate, 0.001F, decay);
            feed(limiter, 4.0F, static_cast<std::size_t>(rate / 10));
            // Two points of the exponential give its constant.
            const auto first = static_cast<std::size_t>(0.25 * decay * rate);
            const auto span = static_cast<std::size_t>(1.5 * decay * rate);
            feed(limiter, 0.001F, first);
            const double early = 1.0 - probe(limiter);
            feed(limiter, 0.001F, span - 1);
            const double late = 1.0 - probe(limiter);
            const double measured = static_cast<double>(span) / rate / std::log(early / late);
            EXPECT_NEAR(measured, decay, 0.0005 * decay) << rate;
        }
    }
}

TEST(PeakLimiter, AStepIntoLimitingSettlesWithTheAttackConstant) {
    constexpr float kStep = 4.0F; // asks for a reduction of 0.75
    for (const double rate : kRates) {
        for (const float attack : {0.001F, 0.012F, 0.03F}) {
            const auto remainingAfter = [&](std::size_t frames) {
                auto limiter = limiterAt(rate, attack, 0.06F);
                feed(limiter, kStep, frames);
                return 0.75 - limiter.reduction();
            };
            const auto first = static_cast<std::size_t>(0.5 * attack * rate);
            const auto span = static_cast<std::size_t>(2.0 * attack * rate);
            const double measured = static_cast<double>(span) / rate /
                                    std::log(remainingAfter(first) / remainingAfter(first + span));
            EXPECT_NEAR(measured, attack, 0.0005 * attack) << rate;
            EXPECT_NEAR(remainingAfter(static_cast<std::size_t>(20.0 * attack * rate)), 0.0, 1e-8);
        }
    }
}

TEST(PeakLimiter, TheMemoryOfAStepIsHeardByTheQuietSampleThatFollows) {
    auto limiter = limiterAt(44100.0, 0.012F, 0.06F);
    feed(limiter, 4.0F, 529); // one attack constant
    EXPECT_NEAR(1.0 - probe(limiter), 0.75 * (1.0 - std::exp(-1.0)), 0.002);
}

TEST(PeakLimiter, APeakThatTheMemoryHasNotCaughtIsHeldOnItsOwnSample) {
    auto limiter = limiterAt(44100.0);
    Samples left(200, 0.25F);
    Samples right(200, -0.125F);
    left[100] = 4.0F;
    run(limiter, left, right);
    EXPECT_EQ(left[99], 0.25F);
    EXPECT_EQ(left[100], 1.0F);
    EXPECT_EQ(right[100], -0.03125F);
    EXPECT_GT(left[101], 0.249F);
    EXPECT_LT(left[101], 0.25F);
}

TEST(PeakLimiter, BothSidesGetTheSameGain) {
    const std::size_t frames = 20000;
    const Samples leftIn = test::drums(frames, 18.0, 44100.0, 21);
    const Samples rightIn = test::noise(frames, -3.0, 22);
    Samples left = leftIn;
    Samples right = rightIn;
    auto limiter = limiterAt(44100.0);
    run(limiter, left, right);
    int reduced = 0;
    for (std::size_t i = 0; i < frames; ++i) {
        // Equal gains turn both sides alike: the image, left against right, is that of the input.
        const double a = double{left[i]} * double{rightIn[i]};
        const double b = double{right[i]} * double{leftIn[i]};
        ASSERT_NEAR(a, b, 4e-7 * std::abs(b)) << i;
        reduced += std::abs(right[i]) < 0.99F * std::abs(rightIn[i]) ? 1 : 0;
    }
    EXPECT_GT(reduced, 1000); // the right side alone never reaches the ceiling
}

TEST(PeakLimiter, SwappedSidesGiveSwappedSides) {
    Samples left = test::drums(5000, 12.0, 44100.0, 31);
    Samples right = test::noise(5000, 6.0, 32);
    Samples left2 = right;
    Samples right2 = left;
    auto limiter = limiterAt(44100.0);
    auto swapped = limiterAt(44100.0);
    run(limiter, left, right);
    run(swapped, left2, right2);
    EXPECT_TRUE(sameBits(left, right2));
    EXPECT_TRUE(sameBits(right, left2));
}

TEST(PeakLimiter, MonoSoundsLikeTwoEqualSides) {
    Samples mono = test::drums(5000, 12.0, 44100.0, 41);
    Samples left = mono;
    Samples right = mono;
    auto limiter = limiterAt(44100.0);
    auto single = limiterAt(44100.0);
    run(limiter, left, right);
    single.process(mono.data(), nullptr, 5000);
    EXPECT_TRUE(sameBits(mono, left));
}

/// The gain of each frame while the pre-gain is set to the given values at frames 1000, 1100 and so on.
std::vector<double> preGainPath(const std::vector<float>& decibels) {
    auto limiter = limiterAt(44100.0, 0.012F, 0.024F, decibels.front());
    std::vector<double> path;
    for (std::size_t i = 0; i < 4000; ++i) {
        if (i >= 1000 && (i - 1000) % 100 == 0 && (i - 1000) / 100 + 1 < decibels.size()) {
            limiter.set(0.012F, 0.024F, decibels[(i - 1000) / 100 + 1]);
        }
        path.push_back(probe(limiter));
    }
    return path;
}

TEST(PeakLimiter, AMovedPreGainGlidesWithoutAStep) {
    for (const auto& moves : {std::vector{0.0F, 20.0F}, std::vector{20.0F, -40.0F},
                              std::vector{0.0F, 12.0F, -12.0F, 6.0F, 6.0F, 0.0F}}) {
        const auto path = preGainPath(moves);
        double largest = 1.0;
        for (const float decibels : moves) {
            largest = std::max(largest, double{test::fromDecibels(decibels)});
        }
        // A glide of 441 frames over at most the whole range.
        for (std::size_t i = 1; i < path.size(); ++i) {
            ASSERT_LE(std::abs(path[i] - path[i - 1]), 1.01 * largest / 441.0 * 1.3) << i;
        }
        EXPECT_NEAR(path.back(), test::fromDecibels(moves.back()), 1e-5);
    }
}

TEST(PeakLimiter, AGlideIsStraightAndEndsExactlyAtItsTarget) {
    const auto path = preGainPath({6.0F, 0.0F});
    for (std::size_t i = 1001; i < 1440; ++i) {
        ASSERT_LT(path[i], path[i - 1]);
        ASSERT_NEAR(path[i + 1] - path[i], path[1001] - path[1000], 1e-6);
    }
    EXPECT_EQ(path[1440], 1.0);
    EXPECT_EQ(path.back(), 1.0);
}

TEST(PeakLimiter, APreGainSetBeforeTheFirstFrameHoldsAtOnce) {
    auto limiter = limiterAt(44100.0);
    limiter.set(0.012F, 0.024F, -20.0F);
    EXPECT_NEAR(probe(limiter), 0.1, 1e-6);
    limiter.set(0.012F, 0.024F, 0.0F);
    limiter.reset();
    EXPECT_EQ(probe(limiter), 1.0);
}

TEST(PeakLimiter, AbsurdRatesGiveNothingAboveTheCeiling) {
    for (const double rate : {1e-3, 1.0, 1e12, 1e300}) {
        auto limiter = limiterAt(rate);
        feed(limiter, 4.0F, 100);
        limiter.set(0.012F, 0.024F, 20.0F);
        Samples left = test::noise(1000, 12.0, 45);
        Samples right = test::noise(1000, 12.0, 46);
        run(limiter, left, right);
        EXPECT_LE(test::peakOf(left), 1.0F) << rate;
        EXPECT_LE(test::peakOf(right), 1.0F) << rate;
    }
}

TEST(PeakLimiter, TheSamplesDoNotDependOnHowTheSignalIsCut) {
    std::mt19937 random(51);
    const std::size_t frames = 30000;
    Samples left = test::drums(frames, 18.0, 44100.0, 52);
    Samples right = test::noise(frames, 3.0, 53);
    std::fill(right.begin() + 10000, right.begin() + 20000, 0.0F);
    Samples left2 = left;
    Samples right2 = right;
    auto whole = limiterAt(44100.0);
    auto cut = limiterAt(44100.0);
    run(whole, left, right);
    for (std::size_t at = 0; at < frames;) {
        const auto count = static_cast<std::uint32_t>(std::min<std::size_t>(random() % 300, frames - at));
        cut.process(left2.data() + at, right2.data() + at, count);
        at += count;
    }
    EXPECT_TRUE(sameBits(left, left2));
    EXPECT_TRUE(sameBits(right, right2));
}

TEST(PeakLimiter, TheBitsAreThoseOfAPlainFrameByFrameVersion) {
    for (const double rate : kRates) {
        for (const float preGain : {-0.01F, 0.0F, 9.0F}) {
            Samples left = test::drums(30000, 9.0, rate, 61);
            Samples right = test::noise(30000, -6.0, 62);
            Samples left2 = left;
            Samples right2 = right;
            auto limiter = limiterAt(rate, 0.03F, 0.06F, preGain);
            test::PlainLimiter plain(rate, 0.03F, 0.06F, preGain);
            run(limiter, left, right);
            for (std::size_t i = 0; i < left2.size(); ++i) {
                plain.process(left2[i], right2[i]);
            }
            ASSERT_TRUE(sameBits(left, left2));
            ASSERT_TRUE(sameBits(right, right2));
        }
    }
}

TEST(PeakLimiter, ANaNCountsAsSilenceAndLeavesNoTrace) {
    Samples left = test::drums(5000, 12.0, 44100.0, 71);
    Samples right = test::noise(5000, 0.0, 72);
    Samples left2 = left;
    Samples right2 = right;
    left[2000] = std::numeric_limits<float>::quiet_NaN();
    left2[2000] = 0.0F;
    auto limiter = limiterAt(44100.0);
    auto clean = limiterAt(44100.0);
    run(limiter, left, right);
    run(clean, left2, right2);
    EXPECT_TRUE(sameBits(left, left2));
    EXPECT_TRUE(sameBits(right, right2));
}

TEST(PeakLimiter, AnInfinityIsHeldAtTheCeilingAndTheGainRecovers) {
    const float infinity = std::numeric_limits<float>::infinity();
    auto limiter = limiterAt(44100.0);
    Samples left{infinity, -infinity};
    Samples right{0.5F, infinity};
    run(limiter, left, right);
    EXPECT_EQ(left[0], 1.0F);
    EXPECT_EQ(left[1], -1.0F);
    EXPECT_EQ(right[1], 1.0F);
    EXPECT_TRUE(std::isfinite(right[0]));
    feed(limiter, 0.0F, 44100);
    EXPECT_NEAR(probe(limiter), 1.0, 1e-6);
}

/// What is left of a limited sine beside its own frequency, in decibels below it.
double distortion(double hertz, double decibels, double rate) {
    const auto frames = static_cast<std::size_t>(rate);
    auto limiter = limiterAt(rate, 0.03F, 0.06F);
    Samples left = test::sine(2 * frames, decibels, hertz, rate);
    Samples right = left;
    run(limiter, left, right);
    double inPhase = 0.0;
    double quadrature = 0.0;
    double power = 0.0;
    for (std::size_t i = 0; i < frames; ++i) {
        const double angle = 2.0 * std::numbers::pi * hertz * static_cast<double>(i) / rate;
        const double sample = left[frames + i];
        inPhase += sample * std::sin(angle);
        quadrature += sample * std::cos(angle);
        power += sample * sample;
    }
    const double tone = 2.0 * (inPhase * inPhase + quadrature * quadrature) / static_cast<double>(frames);
    return 10.0 * std::log10((power - tone) / tone);
}

TEST(PeakLimiter, ASteadyToneIsShapedNoMoreThanTheDecayBetweenItsPeaksAllows) {
    for (const double rate : {44100.0, 96000.0}) {
        for (const double hertz : {50.0, 100.0, 1000.0}) {
            for (const double decibels : {6.0, 12.0, 24.0}) {
                // Well below the rate a sample falls close to every peak. From one peak to the next the
                // reduction lets go of this share, seen from the gain.
                const double gain = 1.0 / test::fromDecibels(decibels);
                const double ripple = (1.0 - std::exp(-0.5 / hertz / 0.06)) * (1.0 - gain) / gain;
                EXPECT_LT(distortion(hertz, decibels, rate), 20.0 * std::log10(ripple)) << hertz << " Hz";
            }
        }
    }
}

} // namespace
