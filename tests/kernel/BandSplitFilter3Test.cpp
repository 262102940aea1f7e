#include "kernel/BandSplitFilter3.h"
#include "kernel/Samples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

namespace {

using qor::BandSplitFilter3;
using qor::SVFilter4Pole1;
using test::Samples;
using test::wave;

/// The four passes in their order, by the filters' own buffer operations.
void splitInPasses(BandSplitFilter3& f, const float* left, const float* right, int count) {
    f.highFilters[0].processBufferHP(left, f.highLeft, f.bandLeft, count);
    f.highFilters[1].processBufferHP(right, f.highRight, f.bandRight, count);
    f.lowFilters[0].processBufferLP(f.bandLeft, f.lowLeft, f.bandLeft, count);
    f.lowFilters[1].processBufferLP(f.bandRight, f.lowRight, f.bandRight, count);
}

void expectSame(const BandSplitFilter3& a, const BandSplitFilter3& b) {
    EXPECT_TRUE(std::equal(a.lowLeft, a.lowLeft + 4096, b.lowLeft));
    EXPECT_TRUE(std::equal(a.lowRight, a.lowRight + 4096, b.lowRight));
    EXPECT_TRUE(std::equal(a.highLeft, a.highLeft + 4096, b.highLeft));
    EXPECT_TRUE(std::equal(a.highRight, a.highRight + 4096, b.highRight));
    EXPECT_TRUE(std::equal(a.bandLeft, a.bandLeft + 4096, b.bandLeft));
    EXPECT_TRUE(std::equal(a.bandRight, a.bandRight + 4096, b.bandRight));
    for (int c = 0; c < 2; ++c) {
        for (const auto filters : {&BandSplitFilter3::lowFilters, &BandSplitFilter3::highFilters}) {
            const SVFilter4Pole1& x = (a.*filters)[c];
            const SVFilter4Pole1& y = (b.*filters)[c];
            EXPECT_EQ(x.band1, y.band1);
            EXPECT_EQ(x.low1, y.low1);
            EXPECT_EQ(x.band2, y.band2);
            EXPECT_EQ(x.low2, y.low2);
            EXPECT_EQ(x.band3, y.band3);
            EXPECT_EQ(x.low3, y.low3);
            EXPECT_EQ(x.band4, y.band4);
            EXPECT_EQ(x.low4, y.low4);
        }
    }
}

class BandSplitFilter3Test : public testing::Test {
protected:
    std::unique_ptr<BandSplitFilter3> filter = std::make_unique<BandSplitFilter3>();
    std::unique_ptr<BandSplitFilter3> twin = std::make_unique<BandSplitFilter3>();
    const Samples left = wave(1000, 0.07F);
    const Samples right = wave(1000, 0.31F);
};

TEST_F(BandSplitFilter3Test, StartsWithItsEdgesAtAThirdAndTwoThirds) {
    EXPECT_EQ(filter->scale1, 1.0F);
    EXPECT_EQ(filter->scale2, 1.0F);
    EXPECT_EQ(filter->scale3, 1.0F);
    EXPECT_EQ(filter->samplerate, 48000.0F);
    EXPECT_EQ(filter->cutoff1, 0.333F);
    EXPECT_EQ(filter->cutoff2, 0.666F);
    EXPECT_EQ(filter->lowFilters[1].cutoff, 0.333F);
    EXPECT_EQ(filter->highFilters[1].cutoff, 0.666F);
}

TEST_F(BandSplitFilter3Test, AnEdgeOutsideTheRangeChangesNothing) {
    for (const float c : {1.5F, -0.1F}) {
        filter->setCutoff1(c);
        filter->setCutoff2(c);
        EXPECT_EQ(filter->cutoff1, 0.333F);
        EXPECT_EQ(filter->cutoff2, 0.666F);
        EXPECT_EQ(filter->lowFilters[0].cutoff, 0.333F);
    }
}

TEST_F(BandSplitFilter3Test, AnEdgeThatIsNoNumberIsNeitherBelowNorAboveTheRange) {
    filter->setCutoff1(std::numeric_limits<float>::quiet_NaN());
    EXPECT_TRUE(std::isnan(filter->cutoff1));
    EXPECT_EQ(filter->lowFilters[1].frequency, 0.0012F);
    filter->setCutoff2(0.1F); // nothing is below it
    EXPECT_EQ(filter->cutoff2, 0.1F);
}

TEST_F(BandSplitFilter3Test, TheEndsOfTheRangeBelongToIt) {
    filter->setCutoff2(1.0F);
    EXPECT_EQ(filter->highFilters[0].cutoff, 1.0F);
    filter->setCutoff1(0.0F);
    EXPECT_EQ(filter->lowFilters[0].cutoff, 0.0F);
}

TEST_F(BandSplitFilter3Test, TheLowerEdgeStopsAtTheUpper) {
    filter->setCutoff2(0.5F);
    filter->setCutoff1(0.8F);
    EXPECT_EQ(filter->cutoff1, 0.5F);
    EXPECT_EQ(filter->lowFilters[0].cutoff, 0.5F);
}

TEST_F(BandSplitFilter3Test, TheUpperEdgeStopsAtTheLower) {
    filter->setCutoff1(0.3F);
    filter->setCutoff2(0.1F);
    EXPECT_EQ(filter->cutoff2, 0.3F);
    EXPECT_EQ(filter->highFilters[1].cutoff, 0.3F);
}

TEST_F(BandSplitFilter3Test, ResetClearsAndLeavesTheFiltersInTheMiddle) {
    filter->split(left.data(), right.data(), 1000);
    filter->reset();
    EXPECT_EQ(filter->cutoff1, 0.333F);
    EXPECT_EQ(filter->lowFilters[0].cutoff, 0.5F);
    EXPECT_EQ(filter->highFilters[1].cutoff, 0.5F);
    const auto isZero = [](float x) { return x == 0.0F; };
    for (const float* buffer : {filter->lowLeft, filter->lowRight, filter->highLeft, filter->highRight,
                                filter->bandLeft, filter->bandRight}) {
        EXPECT_TRUE(std::all_of(buffer, buffer + 4096, isZero));
    }
}

TEST_F(BandSplitFilter3Test, TheRateIsPassedOn) {
    filter->setSamplerate(96000.0F);
    EXPECT_EQ(filter->samplerate, 96000.0F);
    EXPECT_EQ(filter->lowFilters[0].samplerate, 96000.0F);
    EXPECT_EQ(filter->highFilters[1].samplerate, 96000.0F);
}

TEST_F(BandSplitFilter3Test, OnlyTheFirst4096FramesAreFiltered) {
    const Samples longLeft = wave(5000, 0.4F);
    const Samples longRight = wave(5000, 0.5F);
    filter->split(longLeft.data(), longRight.data(), 5000);
    twin->split(longLeft.data(), longRight.data(), 4096);
    expectSame(*filter, *twin);
    EXPECT_NE(filter->bandRight[4095], 0.0F);
}

TEST_F(BandSplitFilter3Test, ACountOfZeroOrLessTouchesNothing) {
    filter->split(left.data(), right.data(), 0);
    filter->split(left.data(), right.data(), -4);
    expectSame(*filter, *twin);
}

TEST_F(BandSplitFilter3Test, SilenceStaysSilence) {
    const Samples silence(4096, 0.0F);
    filter->split(silence.data(), silence.data(), 4096);
    expectSame(*filter, *twin);
}

TEST_F(BandSplitFilter3Test, AConstantSettlesAtThePassbandGain) {
    const float s = 0.5F;
    const Samples constant(4096, s);
    for (int block = 0; block < 40; ++block) {
        filter->split(constant.data(), constant.data(), 4096);
    }
    constexpr float kRounding = 1e-5F;
    EXPECT_NEAR(filter->highLeft[4095], 0.0F, kRounding);
    EXPECT_NEAR(filter->highRight[4095], 0.0F, kRounding);
    EXPECT_NEAR(filter->lowLeft[4095], 0.825F * s, kRounding);
    EXPECT_NEAR(filter->lowRight[4095], 0.825F * s, kRounding);
    EXPECT_NEAR(filter->bandLeft[4095], 0.175F * s, kRounding);
    EXPECT_NEAR(filter->bandRight[4095], 0.175F * s, kRounding);
}

TEST_F(BandSplitFilter3Test, ThePartsAreMadeByTheFourPassesInOrder) {
    filter->split(left.data(), right.data(), 1000);
    splitInPasses(*twin, left.data(), right.data(), 1000);
    expectSame(*filter, *twin);
    EXPECT_EQ(filter->getBPLeft(), filter->bandLeft);
    EXPECT_EQ(filter->getBPRight(), filter->bandRight);
}

TEST_F(BandSplitFilter3Test, StagesThatDifferAreRunEachForItself) {
    filter->highFilters[1].band2 = twin->highFilters[1].band2 = 0.25F;
    filter->lowFilters[0].poles = twin->lowFilters[0].poles = 4.0F;
    filter->lowFilters[0].low4 = twin->lowFilters[0].low4 = -0.25F;
    filter->split(left.data(), right.data(), 500);
    splitInPasses(*twin, left.data(), right.data(), 500);
    expectSame(*filter, *twin);
    EXPECT_NE(filter->highFilters[1].band2, filter->highFilters[1].band1);
}

TEST_F(BandSplitFilter3Test, AnInputThatIsOneOfItsOwnBuffersIsReadAsThePassesReadIt) {
    for (BandSplitFilter3* f : {filter.get(), twin.get()}) {
        std::copy(left.begin(), left.end(), f->bandLeft);
        std::copy(right.begin(), right.end(), f->highLeft);
    }
    filter->split(filter->bandLeft, filter->highLeft, 1000);
    splitInPasses(*twin, twin->bandLeft, twin->highLeft, 1000);
    expectSame(*filter, *twin);
}

TEST_F(BandSplitFilter3Test, ABlockCutAnywhereGivesTheSame) {
    filter->split(left.data(), right.data(), 100);
    for (int cut = 0; cut <= 100; cut += 7) {
        const auto other = std::make_unique<BandSplitFilter3>();
        other->split(left.data(), right.data(), cut);
        other->split(left.data() + cut, right.data() + cut, 100 - cut);
        EXPECT_TRUE(std::equal(filter->bandLeft + cut, filter->bandLeft + 100, other->bandLeft));
        EXPECT_EQ(filter->lowFilters[1].low3, other->lowFilters[1].low3);
    }
}

} // namespace
