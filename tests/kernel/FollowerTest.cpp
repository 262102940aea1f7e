#include "kernel/Follower.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

namespace {

using qor::Follower;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

void feed(Follower& follower, float sample, int count = 1) {
    for (int i = 0; i < count; ++i) {
        follower.processSample(&sample);
    }
}

TEST(Follower, StandsAtTheTimesOf48000HzAfterConstruction) {
    const Follower follower;
    EXPECT_EQ(follower.samplerate, 48000.0F);
    EXPECT_EQ(follower.attack, 0.01F);
    EXPECT_EQ(follower.release, 0.5F);
    EXPECT_EQ(follower.decay, 0.0001F);
    EXPECT_EQ(follower.attackSamples, 480.0F);
    EXPECT_EQ(follower.releaseSamples, 24000.0F);
    EXPECT_EQ(follower.holdCounter, 4);
    EXPECT_EQ(follower.attackStep, 1.0 / 480.0);
    EXPECT_EQ(follower.releaseStep, 1.0 / 24000.0);
    EXPECT_EQ(follower.value, 0.0);
}

TEST(Follower, AConstantHalfIsReachedAfter241RisesAndHoveredAround) {
    Follower follower;
    int rises = 0;
    while (follower.value < 0.5) {
        feed(follower, 0.5F);
        ++rises;
    }
    EXPECT_EQ(rises, 241);
    const double top = follower.value;
    EXPECT_LE(top, 0.5 + follower.attackStep);
    feed(follower, 0.5F, 4);
    EXPECT_EQ(follower.value, top); // the hold
    feed(follower, 0.5F);
    EXPECT_EQ(follower.value, top - follower.releaseStep);
    for (int i = 0; i < 1000; ++i) {
        feed(follower, 0.5F);
        EXPECT_GT(follower.value, 0.5 - follower.releaseStep);
        EXPECT_LE(follower.value, 0.5 + follower.attackStep);
    }
}

TEST(Follower, SilenceAfterFullScaleHoldsFourSamplesAndThenFallsForHalfASecond) {
    Follower follower;
    follower.value = 1.0;
    feed(follower, 0.0F, 4);
    EXPECT_EQ(follower.value, 1.0);
    EXPECT_EQ(follower.holdCounter, 0);
    int falls = 0;
    while (follower.value > 0.0) {
        feed(follower, 0.0F);
        ++falls;
    }
    EXPECT_EQ(falls, 24000);
}

TEST(Follower, TheFallFromARealOvershootIsLongerThanHalfASecond) {
    Follower follower;
    while (follower.value < 1.0) {
        feed(follower, 1.0F);
    }
    EXPECT_GT(follower.value, 1.0);
    feed(follower, 0.0F, 4);
    int falls = 0;
    while (follower.value > 0.0) {
        feed(follower, 0.0F);
        ++falls;
    }
    EXPECT_GT(falls, 24000);
    EXPECT_LE(falls, 24000 + 51);
    feed(follower, 0.0F, 10);
    EXPECT_EQ(follower.value, 0.0);
}

TEST(Follower, AnInputOfExactlyTheValueChangesNothing) {
    Follower follower;
    follower.value = 0.25;
    follower.holdCounter = 3;
    feed(follower, 0.25F, 5);
    feed(follower, -0.25F, 5);
    EXPECT_EQ(follower.value, 0.25);
    EXPECT_EQ(follower.holdCounter, 3);
    feed(follower, kNaN, 5);
    EXPECT_EQ(follower.value, 0.25);
    EXPECT_EQ(follower.holdCounter, 3);
}

TEST(Follower, AnOverwrittenRateChangesOnlyTheRearm) {
    Follower follower;
    follower.samplerate = 480000.0F;
    feed(follower, 1.0F);
    EXPECT_EQ(follower.holdCounter, 48);
    EXPECT_EQ(follower.attackStep, 1.0 / 480.0);
    EXPECT_EQ(follower.releaseStep, 1.0 / 24000.0);
    follower.samplerate = kNaN;
    feed(follower, 1.0F);
    EXPECT_EQ(follower.holdCounter, 0);
    follower.samplerate = 1e30F;
    feed(follower, 1.0F);
    EXPECT_EQ(follower.holdCounter, std::numeric_limits<std::int32_t>::max());
    follower.samplerate = -1e30F;
    feed(follower, 1.0F);
    EXPECT_EQ(follower.holdCounter, std::numeric_limits<std::int32_t>::min());
    feed(follower, 0.0F);
    EXPECT_EQ(follower.holdCounter, 0);
}

TEST(Follower, At1000HzTheRiseTakes16SamplesOnPaperAndIsSilencedByTheFlush) {
    Follower follower;
    follower.setSamplerate(1000.0F);
    EXPECT_EQ(follower.attackSamples, 16.0F);
    EXPECT_EQ(follower.attackStep, 0.0); // 1/16 has no low mantissa bits
    EXPECT_EQ(follower.releaseSamples, 500.0F);
    EXPECT_EQ(follower.releaseStep, 1.0 / 500.0);
    feed(follower, 1.0F, 100);
    EXPECT_EQ(follower.value, 0.0);
}

TEST(Follower, TheFallTakes16SamplesAtLeast) {
    Follower follower;
    follower.samplerate = 20.0F;
    follower.setRelease(0.5F);
    EXPECT_EQ(follower.releaseSamples, 16.0F);
    EXPECT_EQ(follower.releaseStep, 0.0); // 1/16 has no low mantissa bits
    follower.setRelease(0.85F);
    EXPECT_EQ(follower.releaseSamples, 17.0F);
    EXPECT_EQ(follower.releaseStep, 1.0 / 17.0);
}

TEST(Follower, TheFlushLeavesTheUsualRatesAlone) {
    for (const float rate :
         {22050.0F, 32000.0F, 44100.0F, 48000.0F, 88200.0F, 96000.0F, 176400.0F, 192000.0F}) {
        Follower follower;
        follower.setSamplerate(rate);
        EXPECT_EQ(follower.attackStep, 1.0 / static_cast<double>(follower.attackSamples)) << rate;
        EXPECT_EQ(follower.releaseStep, 1.0 / static_cast<double>(follower.releaseSamples)) << rate;
    }
}

TEST(Follower, TheFlushLooksAtTheLowWordOfTheDouble) {
    int silenced = 0;
    Follower follower;
    for (int samples = 1000; samples < 9000; ++samples) {
        follower.samplerate = static_cast<float>(samples);
        follower.setAttack(1.0F);
        const double step = 1.0 / samples;
        std::uint64_t bits = 0;
        std::memcpy(&bits, &step, sizeof bits);
        const bool flushed = (bits & 0x7F800000U) == 0;
        EXPECT_EQ(follower.attackStep, flushed ? 0.0 : step) << samples;
        silenced += flushed ? 1 : 0;
    }
    EXPECT_GT(silenced, 0);
    EXPECT_LT(silenced, 100);
}

TEST(Follower, ReleaseTakesTenSecondsAndTheOthersOne) {
    Follower follower;
    follower.setRelease(10.0F);
    EXPECT_EQ(follower.release, 10.0F);
    EXPECT_EQ(follower.releaseSamples, 480000.0F);
    follower.setRelease(10.5F);
    follower.setRelease(-0.1F);
    EXPECT_EQ(follower.release, 10.0F);
    follower.setAttack(1.5F);
    follower.setAttack(-0.1F);
    EXPECT_EQ(follower.attack, 0.01F);
    EXPECT_EQ(follower.attackSamples, 480.0F);
    follower.setDecay(-0.1F);
    follower.setDecay(1.5F);
    EXPECT_EQ(follower.decay, 0.0001F);
    EXPECT_EQ(follower.holdCounter, 4);
    follower.setDecay(1.0F);
    EXPECT_EQ(follower.holdCounter, 48000);
}

TEST(Follower, AChangeOfRateBringsTheTimesBackAndKeepsTheValue) {
    Follower follower;
    follower.setRelease(10.0F);
    follower.value = 0.5;
    follower.setSamplerate(96000.0F);
    EXPECT_EQ(follower.release, 0.5F);
    EXPECT_EQ(follower.attackSamples, 960.0F);
    EXPECT_EQ(follower.holdCounter, 9);
    EXPECT_EQ(follower.value, 0.5);
}

TEST(Follower, ResetClearsTheValueAlone) {
    Follower follower;
    follower.value = 0.5;
    follower.holdCounter = 2;
    follower.reset();
    EXPECT_EQ(follower.value, 0.0);
    EXPECT_EQ(follower.holdCounter, 2);
    EXPECT_EQ(follower.attackStep, 1.0 / 480.0);
}

TEST(Follower, ThePeakIsReadFromZeroToOne) {
    Follower follower;
    follower.value = 1.0000001;
    EXPECT_EQ(follower.getPeakLimited(), 1.0F);
    follower.value = 7.0;
    EXPECT_EQ(follower.getPeakLimited(), 1.0F);
    follower.value = -0.5;
    EXPECT_EQ(follower.getPeakLimited(), 0.0F);
    follower.value = 0.3;
    EXPECT_EQ(follower.getPeakLimited(), 0.3F);
}

TEST(Follower, TheValueGoesAsHighAsTheInput) {
    Follower follower;
    feed(follower, 3.0F, 480 * 4);
    EXPECT_GT(follower.value, 3.0 - follower.attackStep);
    EXPECT_LE(follower.value, 3.0 + follower.attackStep);
    EXPECT_EQ(follower.getPeakLimited(), 1.0F);
}

TEST(Follower, ABufferOfNoOrNegativeCountChangesNothing) {
    Follower follower;
    const float sample = 1.0F;
    follower.processBuffer(&sample, 0);
    follower.processBuffer(&sample, -5);
    EXPECT_EQ(follower.value, 0.0);
    EXPECT_EQ(follower.holdCounter, 4);
}

TEST(Follower, EvenTheSmallestSampleRaisesAZeroValue) {
    Follower follower;
    feed(follower, -std::numeric_limits<float>::denorm_min());
    EXPECT_EQ(follower.value, 1.0 / 480.0);
    follower.value = 0x1p-148;
    feed(follower, std::numeric_limits<float>::denorm_min(), 4);
    EXPECT_EQ(follower.value, 0x1p-148); // held: the sample lies below it
    EXPECT_EQ(follower.holdCounter, 0);
}

TEST(Follower, TheAbsoluteValueKeepsZerosSignAndNaN) {
    EXPECT_EQ(qor::getAbsVal(-2.5F), 2.5F);
    EXPECT_EQ(qor::getAbsVal(2.5F), 2.5F);
    EXPECT_TRUE(std::signbit(qor::getAbsVal(-0.0F)));
    EXPECT_TRUE(std::isnan(qor::getAbsVal(kNaN)));
}

} // namespace
