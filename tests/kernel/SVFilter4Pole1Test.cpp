#include "kernel/SVFilter4Pole1.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <vector>

namespace {

using qor::Interpolator2;
using qor::Modulator;
using qor::SVFilter4Pole1;

TEST(SVFilter4Pole1, StartsWithThreeStagesInTheMiddle) {
    const SVFilter4Pole1 filter;
    EXPECT_EQ(filter.poles, 3.0F);
    EXPECT_EQ(filter.spare, 0.0F);
    EXPECT_EQ(filter.samplerate, 48000.0F);
    EXPECT_EQ(filter.cutoff, 0.5F);
    EXPECT_EQ(filter.resonance, 0.0F);
    EXPECT_EQ(filter.lastCutoff, 0.015625F);
    EXPECT_EQ(filter.frequency, 0.015625F);
    EXPECT_EQ(filter.band1, 0.0F);
    EXPECT_EQ(filter.low4, 0.0F);
}

TEST(SVFilter4Pole1, TheLowestCutoffStandsOnTheLowerLimit) {
    SVFilter4Pole1 filter;
    filter.setCutoff(0.0F);
    EXPECT_EQ(filter.frequency, 0.0012000000569969416F);
    EXPECT_FLOAT_EQ(filter.damping, 0.40024012F);
    filter.setCutoff(0.235F); // still on the limit
    EXPECT_EQ(filter.frequency, 0.0012F);
    filter.setCutoff(0.25F);
    EXPECT_GT(filter.frequency, 0.0012F);
}

TEST(SVFilter4Pole1, TheHighestCutoffIsExactlyOne) {
    SVFilter4Pole1 filter;
    filter.setCutoff(1.0F);
    EXPECT_EQ(filter.frequency, 1.0F);
    EXPECT_FLOAT_EQ(filter.damping, 0.80000001F);
}

TEST(SVFilter4Pole1, TheOutputGainIsTheSameAtEveryCutoff) {
    SVFilter4Pole1 filter;
    for (const float cutoff : {0.0F, 0.3F, 0.5F, 0.9F, 1.0F}) {
        filter.setCutoff(cutoff);
        EXPECT_EQ(std::bit_cast<std::uint32_t>(filter.outputGain), 0x3FD33333U);
    }
}

TEST(SVFilter4Pole1, CoefficientsStayWhereNothingChanged) {
    SVFilter4Pole1 filter;
    filter.setCutoff(0.7F);
    filter.damping = 9.0F;
    filter.setCutoff(0.7F);
    EXPECT_EQ(filter.damping, 9.0F);
    filter.setCutoff(0.71F);
    EXPECT_NE(filter.damping, 9.0F);
}

TEST(SVFilter4Pole1, ResonanceIsHeldFromZeroToOneAndLowersTheDamping) {
    SVFilter4Pole1 filter;
    filter.setCutoff(1.0F); // the frequency's share of the damping is 1.0
    filter.resonance = 0.5F;
    filter.processParameters();
    EXPECT_EQ(filter.lastResonance, 0.5F);
    EXPECT_EQ(filter.outputGain, 0.7F + (1.0F - 0.3F));
    EXPECT_EQ(filter.damping, 1.0F / (0.3F * 25.0F));
    filter.resonance = 7.0F;
    filter.processParameters();
    EXPECT_EQ(filter.lastResonance, 1.0F);
    EXPECT_EQ(filter.resonance, 7.0F);
    EXPECT_EQ(filter.damping, 1.0F / ((1.0F + 0.05F) * 25.0F));
    filter.resonance = -7.0F;
    filter.processParameters();
    EXPECT_EQ(filter.lastResonance, 0.0F);
    EXPECT_EQ(filter.damping, 1.0F / (0.05F * 25.0F));
}

TEST(SVFilter4Pole1, AStageIsTheRecurrence) {
    SVFilter4Pole1 filter;
    SVFilter4Pole1 twin;
    filter.setCutoff(0.8F);
    twin.setCutoff(0.8F);
    const float f = filter.frequency;
    const float d = filter.damping;
    float band = 0.0F;
    float low = 0.0F;
    for (const float s : {1.0F, -0.5F, 0.25F, 0.0F, 0.0F}) {
        const float l = low + (f * band);
        const float h = ((0.5F * s) - l) - (d * band);
        band = (f * h) + band;
        low = l;
        float sample = s;
        filter.processSampleHP(&sample);
        EXPECT_EQ(sample, h * filter.outputGain);
        sample = s;
        twin.processSampleLP(&sample);
        EXPECT_EQ(sample, l * filter.outputGain);
        EXPECT_EQ(filter.band1, band);
        EXPECT_EQ(filter.low1, low);
    }
}

TEST(SVFilter4Pole1, StagesRunByTheirPolesAndHoldTheSameValues) {
    for (const float poles : {0.0F, 1.0F, 1.5F, 2.0F, 3.0F, 3.5F}) {
        SVFilter4Pole1 filter;
        filter.poles = poles;
        for (int i = 0; i < 50; ++i) {
            float sample = std::sin(static_cast<float>(i));
            filter.processSampleLP(&sample);
        }
        EXPECT_NE(filter.band1, 0.0F);
        EXPECT_EQ(filter.band2, poles > 1.0F ? filter.band1 : 0.0F);
        EXPECT_EQ(filter.low3, poles > 2.0F ? filter.low1 : 0.0F);
        EXPECT_EQ(filter.band4, poles > 3.0F ? filter.band1 : 0.0F);
        EXPECT_TRUE(filter.stagesAgree());
    }
}

TEST(SVFilter4Pole1, TheNumberOfStagesDoesNotChangeTheSoundFromACleanState) {
    SVFilter4Pole1 one;
    SVFilter4Pole1 four;
    one.poles = 1.0F;
    four.poles = 4.0F;
    for (int i = 0; i < 200; ++i) {
        float a = std::sin(static_cast<float>(i * i));
        float b = a;
        one.processSampleHP(&a);
        four.processSampleHP(&b);
        EXPECT_EQ(a, b);
    }
}

TEST(SVFilter4Pole1, TheOutputIsThatOfTheLastStageInUse) {
    SVFilter4Pole1 filter;
    filter.low3 = 0.5F;
    EXPECT_FALSE(filter.stagesAgree());
    float sample = 0.0F;
    filter.processSampleLP(&sample);
    EXPECT_EQ(sample, 0.5F * filter.outputGain);
    filter.poles = 2.0F;
    sample = 0.0F;
    filter.processSampleLP(&sample);
    EXPECT_EQ(sample, 0.0F);
}

TEST(SVFilter4Pole1, TheRestIsTheInputWithoutTheOutputAndMayReplaceIt) {
    SVFilter4Pole1 a;
    SVFilter4Pole1 b;
    const float in = 0.75F;
    float out = 0.0F;
    float rest = 0.0F;
    a.processSampleHP(&in, &out, &rest);
    EXPECT_EQ(rest, in - out);
    float inAndRest = 0.75F;
    float otherOut = 0.0F;
    b.processSampleHP(&inAndRest, &otherOut, &inAndRest);
    EXPECT_EQ(otherOut, out);
    EXPECT_EQ(inAndRest, rest);
}

TEST(SVFilter4Pole1, BuffersAreTheirSamplesInTurn) {
    using Sample = void (SVFilter4Pole1::*)(const float*, float*, float*);
    using Buffer = void (SVFilter4Pole1::*)(const float*, float*, float*, int);
    const auto compare = [](Buffer processBuffer, Sample processSample) {
        SVFilter4Pole1 a;
        SVFilter4Pole1 b;
        const std::vector<float> in = {1.0F, -0.5F, 0.25F, 3.0F};
        std::vector<float> out(4);
        std::vector<float> rest(4);
        (a.*processBuffer)(in.data(), out.data(), rest.data(), 4);
        for (std::size_t i = 0; i < in.size(); ++i) {
            float o = 0.0F;
            float r = 0.0F;
            (b.*processSample)(&in[i], &o, &r);
            EXPECT_EQ(out[i], o);
            EXPECT_EQ(rest[i], r);
        }
        EXPECT_NE(out[3], 0.0F);
    };
    compare(&SVFilter4Pole1::processBufferLP, &SVFilter4Pole1::processSampleLP);
    compare(&SVFilter4Pole1::processBufferHP, &SVFilter4Pole1::processSampleHP);
}

TEST(SVFilter4Pole1, ResetGoesBackToTheMiddleWithACleanState) {
    SVFilter4Pole1 filter;
    filter.setCutoff(0.9F);
    filter.resonance = 1.0F;
    filter.spare = 3.0F;
    filter.poles = 4.0F;
    float sample = 1.0F;
    filter.processSampleHP(&sample);
    filter.reset();
    EXPECT_EQ(filter.cutoff, 0.5F);
    EXPECT_EQ(filter.resonance, 0.0F);
    EXPECT_EQ(filter.spare, 0.0F);
    EXPECT_EQ(filter.frequency, 0.015625F);
    EXPECT_EQ(filter.band4, 0.0F);
    EXPECT_EQ(filter.low1, 0.0F);
    EXPECT_EQ(filter.poles, 4.0F);
}

TEST(SVFilter4Pole1, InitGoesBackAsResetDoes) {
    SVFilter4Pole1 filter;
    filter.setCutoff(0.9F);
    float sample = 1.0F;
    filter.processSampleHP(&sample);
    filter.init();
    EXPECT_EQ(filter.cutoff, 0.5F);
    EXPECT_EQ(filter.frequency, 0.015625F);
    EXPECT_EQ(filter.band1, 0.0F);
    EXPECT_EQ(filter.low3, 0.0F);
}

TEST(SVFilter4Pole1, TheSampleRateIsStoredOnly) {
    SVFilter4Pole1 filter;
    const float frequency = filter.frequency;
    filter.setSamplerate(8000.0F);
    filter.processParameters();
    EXPECT_EQ(filter.samplerate, 8000.0F);
    EXPECT_EQ(filter.frequency, frequency);
}

TEST(SVFilter4Pole1, EachFilterCountsAsOneModulator) {
    const std::uint64_t before = Modulator::count;
    {
        const SVFilter4Pole1 filters[3];
        EXPECT_EQ(Modulator::count, before + 3);
    }
    EXPECT_EQ(Modulator::count, before);
}

TEST(Interpolator2, StartsInTheMiddleAndJumpsToAnInitialValue) {
    Interpolator2 smoother;
    EXPECT_EQ(smoother.value, 0.5F);
    EXPECT_EQ(smoother.target, 0.5F);
    EXPECT_EQ(smoother.word1, 0U);
    EXPECT_EQ(smoother.steps, 1024U);
    EXPECT_EQ(smoother.word2, 0U);
    smoother.setInitialValue(0.25F);
    EXPECT_EQ(smoother.value, 0.25F);
    EXPECT_EQ(smoother.target, 0.25F);
}

} // namespace
