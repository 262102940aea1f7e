#include "AUDIO/SOURCES/VAOscillators/Modulator.h"
#include "AUDIO/SOURCES/VAOscillators/WaveTables.h"
#include "platform/core/MathCalls.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using qor::Modulator;
using qor::NoiseOscillator;

// Read before any instance has built the tables.
const float maxFrequencyBefore = Modulator::maxFrequency;

TEST(Modulator, StartsWithItsDefaults) {
    const Modulator m;
    EXPECT_EQ(m.word1 + m.word2 + m.word3 + m.word4 + m.word5, 0U);
    EXPECT_EQ(m.flag, 0);
    EXPECT_EQ(m.mode, 1);
    EXPECT_EQ(m.samplerate, 48000.0F);
    EXPECT_EQ(m.frequency, 1.0F);
    EXPECT_EQ(m.gain, 0.5F);
    EXPECT_EQ(m.shape, 1.0F);
    EXPECT_EQ(m.lastValue, 0.0F);
    EXPECT_EQ(m.phaseScale, 16777216.0F / 48000.0F);
    EXPECT_EQ(m.tableShift, 12U);
    EXPECT_EQ(m.phase, 0);
    EXPECT_EQ(m.numCycles, 0);
    EXPECT_EQ(m.table1, Modulator::waveSine);
    EXPECT_EQ(m.table2, Modulator::waveSine);
}

TEST(Modulator, TheScaledReadingIsZeroAtZeroAndOneFromOneOn) {
    const Modulator m;
    EXPECT_EQ(Modulator::getValueFrequencyScaled(0.0F), 0.0F);
    EXPECT_EQ(Modulator::getValueFrequencyScaled(1.0F), 1.0F);
    EXPECT_EQ(Modulator::getValueFrequencyScaled(7.0F), 1.0F);
    EXPECT_EQ(Modulator::getValueFrequencyScaled(1e30F), 1.0F);
    EXPECT_EQ(Modulator::getValueFrequencyScaled(-1.0F), -1.0F);
    EXPECT_EQ(Modulator::getValueFrequencyScaled(-0.5F), -0.015625F);
    EXPECT_EQ(Modulator::getValueFrequencyScaled(std::numeric_limits<float>::quiet_NaN()), 0.0F);
}

TEST(Modulator, TheScaledReadingFollowsItsCurveWithoutInterpolation) {
    const Modulator m;
    EXPECT_NEAR(Modulator::getValueFrequencyScaled(0.25F), 0.00138F, 5e-6F);
    EXPECT_NEAR(Modulator::getValueFrequencyScaled(0.333F), 0.00326F, 5e-6F);
    EXPECT_EQ(Modulator::getValueFrequencyScaled(0.5F), 0.015625F);
    EXPECT_NEAR(Modulator::getValueFrequencyScaled(0.666F), 0.0656F, 5e-5F);
    EXPECT_NEAR(Modulator::getValueFrequencyScaled(0.9F), 0.450F, 5e-4F);
    EXPECT_NEAR(Modulator::waveRampLogUp[4095], 0.99807F, 5e-6F);
    EXPECT_EQ(Modulator::getValueFrequencyScaled(0.50012F), Modulator::getValueFrequencyScaled(0.5F));
}

TEST(Modulator, RampsMeetAtTheirEnds) {
    const Modulator m;
    EXPECT_EQ(Modulator::waveRampLogUp[0], 0.0F);
    EXPECT_EQ(Modulator::waveRampLogDown[0], Modulator::waveRampLogUp[4095]);
    EXPECT_EQ(Modulator::waveRampLogDown[4095], 0.0F);
    EXPECT_EQ(Modulator::waveRampExponDown[4095], 0.0F);
    EXPECT_EQ(Modulator::waveRampExponDown[0], Modulator::waveRampExponUp[4095]);
}

TEST(Modulator, SinesFollowTheirRules) {
    const Modulator m;
    EXPECT_EQ(Modulator::waveSine[1024], 1.0F);
    EXPECT_EQ(Modulator::waveSineQuad[0], 0.5F);
    for (int i = 0; i < 4096; ++i) {
        const float t = 0.000244140625F * static_cast<float>(i);
        const float s = platform::librarySine(6.2831855F * t);
        EXPECT_EQ(Modulator::waveSine[i], (s + 1.0F) * 0.5F);
        EXPECT_EQ(Modulator::waveSineQuad[i], (((s * s) * s) + 1.0F) * 0.5F);
    }
}

TEST(Modulator, TheEighthRootOfTheSineHasNoValuesBetweenItsHalves) {
    const Modulator m;
    for (int i = 0; i < 4096; ++i) {
        const float s = platform::librarySine(6.2831855F * (0.000244140625F * static_cast<float>(i)));
        const float q = std::sqrt(std::sqrt(std::sqrt(std::fabs(s))));
        EXPECT_EQ(Modulator::waveSineSquar[i], i < 2048 ? (q + 1.0F) * 0.5F : -(q + 1.0F) * 0.5F);
        EXPECT_GE(std::fabs(Modulator::waveSineSquar[i]), 0.5F);
        EXPECT_LE(std::fabs(Modulator::waveSineSquar[i]), 1.0F);
    }
}

TEST(Modulator, RampsFollowTheirRules) {
    const Modulator m;
    for (int i = 0; i < 4096; ++i) {
        const float t = 0.000244140625F * static_cast<float>(i);
        EXPECT_EQ(Modulator::waveSaw[i], 1.0F - t);
        EXPECT_EQ(Modulator::waveRampLinUp[i], t);
        EXPECT_EQ(Modulator::waveRampLinDown[i], 1.0F - t);
        EXPECT_EQ(Modulator::waveRampExponUp[i], (t * t) * t);
        EXPECT_EQ(Modulator::waveRampExponDown[4095 - i], (t * t) * t);
    }
}

TEST(Modulator, TheLogarithmicRampsSpanTenOctaves) {
    EXPECT_EQ(maxFrequencyBefore, 22050.0F);
    const Modulator m;
    EXPECT_EQ(Modulator::maxFrequency, 14080.0F);
    EXPECT_EQ(Modulator::wave100[0], 13.75F);
    EXPECT_LT(Modulator::wave100[4095], 14080.0F);
    for (int i = 0; i < 4096; ++i) {
        const float t = 0.000244140625F * static_cast<float>(i);
        const float hertz = 440.0F * platform::libraryPower(2.0F, (t * 10.0F) - 5.0F);
        EXPECT_EQ(Modulator::wave100[i], hertz);
        EXPECT_EQ(Modulator::waveRampLogUp[i], (hertz / 14080.0F) * t);
        EXPECT_EQ(Modulator::waveRampLogDown[4095 - i], (hertz / 14080.0F) * t);
    }
}

TEST(Modulator, TheNoteTableIsTunedTo440) {
    const Modulator m;
    EXPECT_EQ(Modulator::freqTable[69], 440.0F);
    EXPECT_NEAR(Modulator::freqTable[0], 8.1758F, 5e-5F);
    double note = 6.875 * 1.059463094359 * 1.059463094359 * 1.059463094359;
    for (int i = 0; i < 128; ++i, note *= 1.059463094359) {
        EXPECT_EQ(Modulator::freqTable[i], static_cast<float>(note));
        EXPECT_EQ(Modulator::freqFactors[i], Modulator::freqTable[i] / Modulator::freqTable[60]);
    }
}

TEST(Modulator, InstancesAreCountedAndTheFirstBuildsTheTables) {
    ASSERT_EQ(Modulator::count, 0U);
    Modulator::waveRampLogUp[2048] = 9.0F;
    {
        const Modulator first;
        EXPECT_EQ(Modulator::count, 1U);
        EXPECT_EQ(Modulator::waveRampLogUp[2048], 0.015625F);
        Modulator::waveRampLogUp[2048] = 9.0F;
        const Modulator second;
        EXPECT_EQ(Modulator::count, 2U);
        EXPECT_EQ(Modulator::waveRampLogUp[2048], 9.0F); // not built again
    }
    EXPECT_EQ(Modulator::count, 0U);
    const Modulator again;
    EXPECT_EQ(Modulator::waveRampLogUp[2048], 0.015625F);
}

TEST(Modulator, TableNumbersOutOfRangeSelectTheComputedSineTwice) {
    Modulator m;
    for (const int index : {65, -1, 1000}) {
        m.setTable(0);
        m.setTable(index);
        EXPECT_EQ(m.table1, Modulator::waveSine);
        EXPECT_EQ(m.table2, Modulator::waveSine);
        EXPECT_EQ(m.tableShift, 12U);
    }
}

TEST(Modulator, TableNumbersSelectTheStoredSineAndItsPartner) {
    Modulator m;
    const float* const partners[] = {qor::table_tri, qor::table_saw, qor::table_sqr, qor::table_03,
                                     qor::table_04};
    for (int index = 0; index < 5; ++index) {
        m.setTable(index);
        EXPECT_EQ(m.table1, qor::table_sine);
        EXPECT_EQ(m.table2, partners[index]);
    }
    m.setTable(64);
    EXPECT_EQ(m.table2, qor::table_64);
    m.setTable(37);
    EXPECT_EQ(m.table2, qor::table_37);
}

TEST(Modulator, TheTableShiftCountsTheDoublingsToOneCycle) {
    Modulator m;
    m.setTables(Modulator::waveSaw, Modulator::wave100, 256);
    EXPECT_EQ(m.table1, Modulator::waveSaw);
    EXPECT_EQ(m.table2, Modulator::wave100);
    EXPECT_EQ(m.tableShift, 16U);
    m.setTables(Modulator::waveSaw, Modulator::waveSaw, 1 << 24);
    EXPECT_EQ(m.tableShift, 0U);
    m.setTables(Modulator::waveSaw, Modulator::waveSaw, 0); // never gets there, and ends all the same
    EXPECT_EQ(m.tableShift, 0U);
}

TEST(Modulator, ASampleRateOfZeroIsIgnored) {
    Modulator m;
    m.setSamplerate(0.0F);
    EXPECT_EQ(m.samplerate, 48000.0F);
    EXPECT_EQ(m.phaseScale, 16777216.0F / 48000.0F);
    m.setSamplerate(44100.0F);
    EXPECT_EQ(m.samplerate, 44100.0F);
    EXPECT_EQ(m.phaseScale, 16777216.0F / 44100.0F);
}

TEST(Modulator, TheFrequencyStaysOneHertzBelowTheSampleRate) {
    Modulator m;
    m.setFrequency(48000.0F);
    EXPECT_EQ(m.getFrequency(), 47999.0F);
    m.setFrequency(47999.5F);
    EXPECT_EQ(m.getFrequency(), 47999.5F);
    m.setFrequency(-3.0F);
    EXPECT_EQ(m.getFrequency(), 0.0F);
}

TEST(Modulator, PhaseIsAFractionOfACycle) {
    Modulator m;
    m.setPhase(0.25F);
    EXPECT_EQ(m.phase, 4194304);
    EXPECT_EQ(m.getPhase(), 0.25F);
    m.setPhase(0.1F); // 1677721.625 units
    EXPECT_EQ(m.phase, 1677721);
    EXPECT_EQ(m.getPhase(), 1677721.0F / 16777216.0F);
    m.setPhase(-0.5F);
    EXPECT_EQ(m.phase, 0);
    m.setPhase(1000.0F);
    EXPECT_EQ(m.phase, 2147483647);
    m.lastValue = 3.0F;
    m.word4 = 1;
    m.word5 = 1;
    m.retrigger();
    EXPECT_EQ(m.phase, 0);
    EXPECT_EQ(m.lastValue, 0.0F);
    EXPECT_EQ(m.word4 + m.word5, 0U);
}

TEST(Modulator, SettingsAreStoredWithinTheirLimits) {
    Modulator m;
    m.setGain(-2.0F);
    EXPECT_EQ(m.getGain(), -1.0F);
    m.setGain(2.0F);
    EXPECT_EQ(m.getGain(), 1.0F);
    m.setShape(-1.0F);
    EXPECT_EQ(m.getShape(), 0.0F);
    m.setShape(2.0F);
    EXPECT_EQ(m.getShape(), 1.0F);
    m.setMode(7);
    EXPECT_EQ(m.getMode(), 7);
    m.setNumCycles(-4);
    EXPECT_EQ(m.getNumCycles(), -4);
}

TEST(NoiseOscillator, StartsWithItsDefaults) {
    const NoiseOscillator noise;
    EXPECT_EQ(noise.seed, 33333U);
    EXPECT_EQ(noise.frequency, 1.0F);
    EXPECT_EQ(noise.level, 1.0F);
    EXPECT_EQ(noise.word1, 0U);
    EXPECT_EQ(noise.samplerate, 44100.0F);
    EXPECT_EQ(noise.period, 44100.0F);
    for (const std::uint32_t word : noise.words) {
        EXPECT_EQ(word, 0U);
    }
}

TEST(NoiseOscillator, OnlyAChangeOfRateHoldsThePeriodFromOneSampleToOneSecond) {
    NoiseOscillator noise;
    noise.setFrequency(0.0F);
    EXPECT_EQ(noise.period, 0.0F);
    noise.setSamplerate(1000.0F);
    EXPECT_EQ(noise.period, 1.0F);
    noise.setFrequency(2.0F);
    EXPECT_EQ(noise.frequency, 1.0F);
    EXPECT_EQ(noise.period, 1000.0F);
    noise.setFrequency(-1.0F);
    EXPECT_EQ(noise.frequency, 0.0F);
    noise.setFrequency(0.5F);
    EXPECT_EQ(noise.period, 500.0F);
    noise.setSamplerate(0.5F); // at least one sample, and then not above the rate
    EXPECT_EQ(noise.period, 0.5F);
    noise.words[2] = 4;
    noise.init();
    EXPECT_EQ(noise.words[2], 0U);
}

} // namespace
