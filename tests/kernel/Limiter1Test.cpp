#include "kernel/Limiter1.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {

using qor::Limiter1;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

/// An element with known coefficients: threshold coefficient 1, attack coefficient 1, trim and input gain 1.
Limiter1 plainElement(float knee) {
    Limiter1 element;
    element.knee = knee;
    element.reset();
    element.setThreshold(knee > 0.5F ? 0.5F : 1.0F);
    element.setAttack(0.0F);
    element.setTrim(0.5F);
    return element;
}

float run(Limiter1& element, float sample) {
    element.processSample(&sample, nullptr);
    return sample;
}

TEST(Limiter1, FieldsStartWithTheirDefaults) {
    const Limiter1 element;
    EXPECT_EQ(element.input, 0.5F);
    EXPECT_EQ(element.attack, 0.1F);
    EXPECT_EQ(element.release, 0.66F);
    EXPECT_EQ(element.threshold, 0.9F);
    EXPECT_EQ(element.trim, 0.6F);
    EXPECT_EQ(element.knee, 1.0F);
    EXPECT_EQ(element.mix, 1.0F);
    EXPECT_EQ(element.audition, 0.0F);
    EXPECT_EQ(element.gainTarget, 0.0F);
    EXPECT_EQ(element.gain, 1.0F);
    EXPECT_EQ(element.inputGain, 1.0F);
}

TEST(Limiter1, ResetFillsTheCoefficientsAndKeepsTheGain) {
    Limiter1 element;
    element.gain = 0.25F;
    element.gainTarget = 0.5F;
    element.input = 0.75F;
    element.reset();
    EXPECT_FLOAT_EQ(element.attackCoefficient, 0.63095734F);
    EXPECT_FLOAT_EQ(element.releaseCoefficient, 0.00010471285F);
    EXPECT_FLOAT_EQ(element.trimCoefficient, 1.5848932F);
    EXPECT_FLOAT_EQ(element.thresholdCoefficient, 0.15848932F);
    EXPECT_EQ(element.inputGain, 1.5F);
    EXPECT_EQ(element.gainTarget, 0.0F);
    EXPECT_EQ(element.gain, 0.25F);
}

TEST(Limiter1, TheSettersSpanTheirRanges) {
    Limiter1 element;
    element.setAttack(0.0F);
    EXPECT_EQ(element.attackCoefficient, 1.0F);
    element.setAttack(1.0F);
    EXPECT_FLOAT_EQ(element.attackCoefficient, 0.01F);
    element.setRelease(0.0F);
    EXPECT_FLOAT_EQ(element.releaseCoefficient, 0.01F);
    element.setRelease(1.0F);
    EXPECT_FLOAT_EQ(element.releaseCoefficient, 0.00001F);
    element.setTrim(0.0F);
    EXPECT_FLOAT_EQ(element.trimCoefficient, 0.1F);
    element.setTrim(0.5F);
    EXPECT_EQ(element.trimCoefficient, 1.0F);
    element.setTrim(1.0F);
    EXPECT_EQ(element.trimCoefficient, 10.0F);
}

TEST(Limiter1, AHigherThresholdLimitsLessUnderBothLaws) {
    Limiter1 element;
    element.knee = 1.0F;
    element.setThreshold(0.0F);
    EXPECT_EQ(element.thresholdCoefficient, 10.0F);
    element.setThreshold(1.0F);
    EXPECT_FLOAT_EQ(element.thresholdCoefficient, 0.1F);
    element.knee = 0.5F;
    element.setThreshold(0.0F);
    EXPECT_FLOAT_EQ(element.thresholdCoefficient, 0.01F);
    element.setThreshold(1.0F);
    EXPECT_EQ(element.thresholdCoefficient, 1.0F);
}

TEST(Limiter1, CoefficientsArePowersOfTenToTheLastBit) {
    const auto powerOfTen = [](float exponent) { return platform::libraryPower(10.0F, exponent); };
    Limiter1 element;
    for (int i = 0; i <= 1000; ++i) {
        const float x = static_cast<float>(i) / 1000.0F;
        element.setAttack(x);
        EXPECT_EQ(element.attackCoefficient, powerOfTen(-2.0F * x));
        element.setRelease(x);
        EXPECT_EQ(element.releaseCoefficient, powerOfTen(-2.0F - 3.0F * x));
        element.knee = 1.0F;
        element.setThreshold(x);
        EXPECT_EQ(element.thresholdCoefficient, powerOfTen(1.0F - 2.0F * x));
        element.knee = 0.0F;
        element.setThreshold(x);
        EXPECT_EQ(element.thresholdCoefficient, powerOfTen(2.0F * x - 2.0F));
        element.setTrim(x);
        const auto exponent = static_cast<float>(2.0 * static_cast<double>(x) - 1.0);
        EXPECT_EQ(element.trimCoefficient, powerOfTen(exponent));
    }
}

TEST(Limiter1, HyperbolicLawOnSilenceCreepsUpToFullGain) {
    Limiter1 element = plainElement(1.0F);
    element.gain = 0.5F;
    EXPECT_EQ(run(element, 0.0F), 0.0F);
    EXPECT_EQ(element.gainTarget, 1.0F);
    EXPECT_EQ(element.gain, 0.5F + element.releaseCoefficient * 0.5F);
    float before = element.gain;
    for (int i = 0; i < 1000; ++i) {
        EXPECT_EQ(run(element, 0.0F), 0.0F);
        EXPECT_GT(element.gain, before);
        EXPECT_LE(element.gain, 1.0F);
        before = element.gain;
    }
}

TEST(Limiter1, HyperbolicLawAtFullScaleHasTheTargetOneHalf) {
    Limiter1 element = plainElement(1.0F);
    ASSERT_EQ(element.thresholdCoefficient, 1.0F);
    ASSERT_EQ(element.attackCoefficient, 1.0F);
    EXPECT_EQ(run(element, 1.0F), 0.5F);
    EXPECT_EQ(element.gainTarget, 0.5F);
    EXPECT_EQ(element.gain, 0.5F);
}

TEST(Limiter1, ThresholdLawTakesTheReleaseBranchAtExactlyTheCoefficient) {
    Limiter1 element = plainElement(0.0F);
    ASSERT_EQ(element.thresholdCoefficient, 1.0F);
    element.gain = 0.5F;
    run(element, 4.0F);
    EXPECT_EQ(element.gainTarget, 1.0F);
    EXPECT_EQ(element.gain, 0.5F + element.releaseCoefficient * 0.5F);
}

TEST(Limiter1, ThresholdLawDetectsBehindTheGain) {
    Limiter1 element = plainElement(0.0F);
    element.gain = 0.5F;
    run(element, 8.0F);
    EXPECT_EQ(element.gainTarget, 2.0F);
    EXPECT_EQ(element.gain, 0.5F - 1.0F * (2.0F - 1.0F));
}

TEST(Limiter1, ThresholdLawMayOvershootBelowZeroAndFlipTheSign) {
    Limiter1 element = plainElement(0.0F);
    EXPECT_LT(run(element, 100.0F), 0.0F);
    EXPECT_LT(element.gain, 0.0F);
    EXPECT_LT(element.getCompression(), 0.0F);
}

TEST(Limiter1, ComparisonsWithNaNTakeTheSecondBranch) {
    Limiter1 element = plainElement(kNaN); // a knee that is no number is the threshold law
    EXPECT_EQ(element.thresholdCoefficient, 1.0F);
    element.thresholdCoefficient = kNaN;
    element.gain = 0.5F;
    run(element, 8.0F);
    EXPECT_EQ(element.gain, 0.5F + element.releaseCoefficient * 0.5F);
    element.audition = kNaN; // not above 0.5 either
    element.gain = 1.0F;
    element.releaseCoefficient = 0.0F;
    EXPECT_EQ(run(element, 0.25F), 0.25F);
}

TEST(Limiter1, ExactlyOneHalfSelectsTheThresholdLawAndNoAudition) {
    for (const float knee : {0.5F, 1.0F}) {
        Limiter1 element = plainElement(knee);
        element.audition = 0.5F;
        element.gain = 0.25F;
        element.attackCoefficient = element.releaseCoefficient = 0.0F;
        EXPECT_EQ(run(element, 2.0F), 0.5F); // what is taken away would be 1.5
        EXPECT_EQ(element.gainTarget, knee > 0.5F ? 1.0F / 3.0F : 0.25F);
    }
}

TEST(Limiter1, ATinyLevelIsRoundedInTheOrderOfTheFormula) {
    Limiter1 element = plainElement(0.0F);
    const float denormal = std::numeric_limits<float>::denorm_min();
    for (const float gain : {1.0F, 0.75F, 3.0F}) {
        for (const float sample : {denormal, 3.0F * denormal, 0x1.000002p-126F, 0x1.000002p-125F}) {
            element.gain = gain;
            run(element, sample);
            EXPECT_EQ(element.gainTarget, (0.5F * gain) * sample);
        }
    }
    element.gain = 3.0F * denormal;
    run(element, 5.0F);
    EXPECT_EQ(element.gainTarget, (0.5F * (3.0F * denormal)) * 5.0F);
}

TEST(Limiter1, WithoutMixTheInputPassesAndTheGainStillMoves) {
    for (const float knee : {0.0F, 1.0F}) {
        Limiter1 element = plainElement(knee);
        element.mix = 0.0F;
        for (const float sample : {0.3F, -3.0F, 20.0F, 0.001F}) {
            element.gain = 0.7F;
            EXPECT_EQ(run(element, sample), sample);
            EXPECT_NE(element.gain, 0.7F);
        }
    }
}

TEST(Limiter1, MixIsLinear) {
    Limiter1 element = plainElement(1.0F);
    element.mix = 0.25F;
    EXPECT_EQ(run(element, 1.0F), 0.5F * 0.25F + 1.0F * 0.75F);
}

TEST(Limiter1, AuditionGivesWhatIsTakenAway) {
    Limiter1 element = plainElement(1.0F);
    element.setTrim(0.7F);
    element.audition = 1.0F;
    const float in = 0.8F;
    const float out = run(element, in);
    EXPECT_EQ(out, in - (in * element.trimCoefficient) * element.gain);
}

TEST(Limiter1, AWrittenKneeKeepsTheOtherLawsCoefficientUntilTheNextSetThresholdOrReset) {
    Limiter1 element = plainElement(1.0F);
    element.setThreshold(0.25F);
    const float hyperbolic = element.thresholdCoefficient;
    element.knee = 0.0F;
    run(element, 0.5F);
    EXPECT_EQ(element.thresholdCoefficient, hyperbolic);
    element.setThreshold(0.25F);
    EXPECT_FLOAT_EQ(element.thresholdCoefficient, 0.031622775F);
    element.knee = 1.0F;
    element.reset();
    EXPECT_EQ(element.thresholdCoefficient, hyperbolic);
}

TEST(Limiter1, InputGainScalesWhatIsDetectedAndHeardButNotTheDryShare) {
    Limiter1 element = plainElement(1.0F);
    element.input = 1.0F;
    element.updateParameters();
    ASSERT_EQ(element.inputGain, 2.0F);
    element.mix = 0.25F;
    EXPECT_EQ(run(element, 0.5F), 0.5F * 0.25F + 0.5F * 0.75F); // x is 1.0, the gain 0.5
    EXPECT_EQ(element.gainTarget, 0.5F);
}

TEST(Limiter1, CompressionOfFullGainIsOneAndOfNoGainIsZero) {
    Limiter1 element;
    element.gain = 1.0F;
    EXPECT_EQ(element.getCompression(), 1.0F);
    element.gain = 1.5F;
    EXPECT_EQ(element.getCompression(), 1.0F);
    element.gain = kNaN;
    EXPECT_EQ(element.getCompression(), 1.0F);
    for (const float tiny : {0.97F, 0.999F}) { // -70 and -138 on the scale: clamped
        element.gain = tiny;
        EXPECT_EQ(element.getCompression(), 1.0F);
    }
    element.gain = 0.94F; // -56
    EXPECT_NEAR(element.getCompression(), 0.938F, 0.001F);
    element.gain = 0.0F;
    EXPECT_EQ(element.getCompression(), 0.0F);
    element.gain = 0.5F;
    EXPECT_FLOAT_EQ(element.getCompression(), 20.0F * std::log(0.5F) / -60.0F);
}

TEST(Limiter1, ABufferCutAnywhereGivesTheSame) {
    std::vector<float> whole(64);
    for (std::size_t i = 0; i < whole.size(); ++i) {
        whole[i] = std::sin(static_cast<float>(i)) * 2.0F;
    }
    const std::vector<float> input = whole;
    for (const float knee : {0.0F, 1.0F}) {
        Limiter1 once = plainElement(knee);
        whole = input;
        once.processBuffer(whole.data(), 64);
        for (int cut = 0; cut <= 64; ++cut) {
            Limiter1 twice = plainElement(knee);
            std::vector<float> parts = input;
            twice.processBuffer(parts.data(), cut);
            twice.processBuffer(parts.data() + cut, 64 - cut);
            EXPECT_EQ(parts, whole);
            EXPECT_EQ(twice.gain, once.gain);
            EXPECT_EQ(twice.gainTarget, once.gainTarget);
        }
    }
}

TEST(Limiter1, ABufferIsItsSamplesInTurn) {
    std::vector<float> buffer = {0.5F, -2.0F, 0.0F, 7.0F};
    std::vector<float> samples = buffer;
    Limiter1 a = plainElement(1.0F);
    Limiter1 b = plainElement(1.0F);
    a.processBuffer(buffer.data(), 4);
    for (float& sample : samples) {
        b.processSample(&sample, nullptr);
    }
    EXPECT_EQ(buffer, samples);
    a.processBuffer(buffer.data(), 0);
    a.processBuffer(buffer.data(), -3);
    EXPECT_EQ(a.gain, b.gain);
    EXPECT_EQ(buffer, samples);
}

TEST(Limiter1, ASideChainIsWhatIsDetectedAndWhatIsHeard) {
    Limiter1 element = plainElement(1.0F);
    float sample = 0.125F;
    const float sidechain = 1.0F;
    element.processSample(&sample, &sidechain);
    EXPECT_EQ(element.gainTarget, 0.5F);
    EXPECT_EQ(sample, 0.5F);
    element.mix = 0.5F;
    element.gain = 0.5F;
    sample = 0.125F;
    element.processSample(&sample, &sidechain);
    EXPECT_EQ(sample, 0.5F * 0.5F + 0.125F * 0.5F);
}

TEST(Limiter1, ALinkedElementWorksOnTheSum) {
    Limiter1 element = plainElement(1.0F);
    float sample = 0.25F;
    const float other = 0.75F;
    element.processSampleLinked(&sample, &other, nullptr, nullptr);
    EXPECT_EQ(element.gainTarget, 0.5F);
    EXPECT_EQ(sample, 0.5F);
    EXPECT_EQ(other, 0.75F);
}

TEST(Limiter1, ALinkedElementTakesTheSideChainsSumIfTheFirstIsThere) {
    Limiter1 element = plainElement(1.0F);
    float sample = 9.0F;
    const float other = 9.0F;
    const float a = 0.25F;
    const float b = 0.75F;
    element.processSampleLinked(&sample, &other, &a, &b);
    EXPECT_EQ(sample, 0.5F);
    Limiter1 second = plainElement(1.0F);
    sample = 0.25F;
    const float half = 0.75F;
    second.processSampleLinked(&sample, &half, nullptr, &b);
    EXPECT_EQ(sample, 0.5F);
}

TEST(Limiter1, LinkedBuffersDropTheirSideChains) {
    std::vector<float> with = {0.5F, -2.0F, 0.0F, 7.0F};
    std::vector<float> without = with;
    const std::vector<float> other = {1.0F, 2.0F, -3.0F, 0.25F};
    const std::vector<float> sidechain = {9.0F, 9.0F, 9.0F, 9.0F};
    Limiter1 a = plainElement(1.0F);
    Limiter1 b = plainElement(1.0F);
    a.processBuffersSidechainLinked(with.data(), other.data(), sidechain.data(), sidechain.data(), 4);
    b.processBuffersLinked(without.data(), other.data(), 4);
    EXPECT_EQ(with, without);
    EXPECT_EQ(a.gain, b.gain);
}

} // namespace
