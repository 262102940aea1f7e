#include "kernel/Limiter2.h"
#include "kernel/Samples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

namespace {

using qor::Limiter1;
using qor::Limiter2;
using qor::MidSideSplitter;
using test::Samples;
using test::wave;

class Limiter2Test : public testing::Test {
protected:
    static constexpr int kCount = 300;

    std::unique_ptr<Limiter2> limiter = std::make_unique<Limiter2>();
    Samples left = wave(kCount, 0.07F, 1.5F);
    Samples right = wave(kCount, 0.11F, 0.8F);
    const Samples leftIn = left;
    const Samples rightIn = right;
    const Samples sideLeft = wave(kCount, 0.19F, 0.5F);
    const Samples sideRight = wave(kCount, 0.23F, 0.6F);

    void makeTransparent() {
        for (Limiter1& element : limiter->limiters) {
            element.thresholdCoefficient = 0.0F;
            element.trimCoefficient = 1.0F;
        }
    }
};

TEST_F(Limiter2Test, ConstructionFillsTheElementsCoefficients) {
    EXPECT_EQ(limiter->samplerate, 48000.0F);
    for (const Limiter1& element : limiter->limiters) {
        EXPECT_FLOAT_EQ(element.attackCoefficient, 0.63095734F);
        EXPECT_EQ(element.gain, 1.0F);
    }
}

TEST_F(Limiter2Test, AChangeOfRateRecomputesAndKeepsTheGains) {
    limiter->limiters[0].gain = 0.5F;
    limiter->limiters[1].attack = 0.0F;
    limiter->splitter.mid[7] = 1.0F;
    limiter->setSamplerate(96000.0F);
    EXPECT_EQ(limiter->samplerate, 96000.0F);
    EXPECT_EQ(limiter->limiters[0].gain, 0.5F);
    EXPECT_EQ(limiter->limiters[1].attackCoefficient, 1.0F);
    EXPECT_EQ(limiter->splitter.mid[7], 0.0F);
}

TEST_F(Limiter2Test, SeparateChannelsKnowNothingOfEachOther) {
    Limiter1 first = limiter->limiters[0];
    Limiter1 second = limiter->limiters[1];
    limiter->processBuffers(left.data(), right.data(), kCount);
    Samples expectedLeft = leftIn;
    Samples expectedRight = rightIn;
    first.processBuffer(expectedLeft.data(), kCount);
    second.processBuffer(expectedRight.data(), kCount);
    EXPECT_EQ(left, expectedLeft);
    EXPECT_EQ(right, expectedRight);
}

TEST_F(Limiter2Test, LinkedStereoIsSequential) {
    limiter->limiters[0].mix = limiter->limiters[1].mix = 0.75F;
    float g1 = 1.0F;
    float g2 = 1.0F;
    limiter->processBuffersLinked(left.data(), right.data(), 1);
    g1 = limiter->limiters[0].gain;
    g2 = limiter->limiters[1].gain;
    const float t = limiter->limiters[0].trimCoefficient;
    const float l = (((leftIn[0] + rightIn[0]) * 1.0F) * t) * g1 * 0.75F + leftIn[0] * 0.25F;
    EXPECT_EQ(left[0], l);
    EXPECT_EQ(right[0], ((rightIn[0] + l) * t) * g2 * 0.75F + rightIn[0] * 0.25F);

    // Over a whole buffer the second pass reads a finished left.
    auto other = std::make_unique<Limiter2>();
    Samples a = leftIn;
    Samples b = rightIn;
    other->processBuffersLinked(a.data(), b.data(), kCount);
    Limiter1 first = Limiter2().limiters[0];
    Limiter1 second = first;
    Samples expectedLeft = leftIn;
    Samples expectedRight = rightIn;
    first.processBuffersLinked(expectedLeft.data(), rightIn.data(), kCount);
    second.processBuffersLinked(expectedRight.data(), expectedLeft.data(), kCount);
    EXPECT_EQ(a, expectedLeft);
    EXPECT_EQ(b, expectedRight);
}

TEST_F(Limiter2Test, LinkedWithSideChainsSoundsAsWithout) {
    auto other = std::make_unique<Limiter2>();
    Samples a = leftIn;
    Samples b = rightIn;
    other->processBuffersLinked(a.data(), b.data(), kCount);
    limiter->processBuffersSidechainLinked(left.data(), right.data(), sideLeft.data(), sideRight.data(),
                                           kCount);
    EXPECT_EQ(left, a);
    EXPECT_EQ(right, b);
}

TEST_F(Limiter2Test, TransparentMidSideGivesTheChannelsBackUpToRounding) {
    makeTransparent();
    limiter->processBuffersMidSide(left.data(), right.data(), kCount);
    for (std::size_t i = 0; i < left.size(); ++i) {
        EXPECT_NEAR(left[i], leftIn[i], 3e-7F);
        EXPECT_NEAR(right[i], rightIn[i], 3e-7F);
    }
    EXPECT_EQ(limiter->limiters[0].gain, 1.0F);
}

TEST_F(Limiter2Test, MidSideRunsOneElementOverEach) {
    limiter->limiters[1].setTrim(0.3F);
    Limiter1 first = limiter->limiters[0];
    Limiter1 second = limiter->limiters[1];
    limiter->processBuffersMidSide(left.data(), right.data(), kCount);
    Samples mid(left.size());
    Samples side(left.size());
    for (std::size_t i = 0; i < left.size(); ++i) {
        mid[i] = (leftIn[i] + rightIn[i]) * 0.5F;
        side[i] = (leftIn[i] - rightIn[i]) * 0.5F;
    }
    first.processBuffer(mid.data(), kCount);
    second.processBuffer(side.data(), kCount);
    for (std::size_t i = 0; i < left.size(); ++i) {
        EXPECT_EQ(left[i], mid[i] + side[i]);
        EXPECT_EQ(right[i], mid[i] - side[i]);
    }
}

TEST_F(Limiter2Test, MonoInputInMidSideLeavesSideSilentAndItsTargetAtFullGain) {
    right = left;
    limiter->limiters[1].gain = 0.5F;
    limiter->processBuffersMidSide(left.data(), right.data(), kCount);
    for (int i = 0; i < kCount; ++i) {
        EXPECT_EQ(limiter->splitter.getSide()[i], 0.0F);
    }
    EXPECT_EQ(limiter->limiters[1].gainTarget, 1.0F);
    EXPECT_GT(limiter->limiters[1].gain, 0.5F);
    EXPECT_EQ(left, right);
}

TEST_F(Limiter2Test, MidSideLinkedRunsBothElementsOverMidAndLeavesSide) {
    Samples mid(left.size());
    Samples side(left.size());
    for (std::size_t i = 0; i < left.size(); ++i) {
        mid[i] = (left[i] + right[i]) * 0.5F;
        side[i] = (left[i] - right[i]) * 0.5F;
    }
    Limiter1 first = limiter->limiters[0];
    Limiter1 second = limiter->limiters[1];
    limiter->processBuffersMidSideLinked(left.data(), right.data(), kCount);
    first.processBuffer(mid.data(), kCount);
    second.processBuffer(mid.data(), kCount);
    EXPECT_TRUE(std::equal(side.begin(), side.end(), limiter->splitter.getSide()));
    for (std::size_t i = 0; i < left.size(); ++i) {
        EXPECT_EQ(left[i], mid[i] + side[i]);
        EXPECT_EQ(right[i], mid[i] - side[i]);
    }
    // The second element's meter tells of the second pass over mid.
    EXPECT_EQ(limiter->limiters[1].gain, second.gain);
    EXPECT_EQ(limiter->limiters[1].getCompression(), second.getCompression());
}

TEST_F(Limiter2Test, ASideChainAtFullMixReplacesTheAudio) {
    Samples expectedLeft = sideLeft;
    Samples expectedRight = sideRight;
    Limiter1 first = limiter->limiters[0];
    Limiter1 second = limiter->limiters[1];
    limiter->processBuffersSidechain(left.data(), right.data(), sideLeft.data(), sideRight.data(), kCount);
    first.processBuffer(expectedLeft.data(), kCount);
    second.processBuffer(expectedRight.data(), kCount);
    EXPECT_EQ(left, expectedLeft);
    EXPECT_EQ(right, expectedRight);
}

TEST_F(Limiter2Test, SidechainMidSideDrivesEachElementFromItsOwn) {
    Limiter1 first = limiter->limiters[0];
    Limiter1 second = limiter->limiters[1];
    limiter->processBuffersSidechainMidSide(left.data(), right.data(), sideLeft.data(), sideRight.data(),
                                            kCount);
    Samples mid = sideLeft;
    Samples side = sideRight;
    first.processBuffer(mid.data(), kCount);
    second.processBuffer(side.data(), kCount);
    for (std::size_t i = 0; i < left.size(); ++i) {
        EXPECT_EQ(left[i], mid[i] + side[i]);
        EXPECT_EQ(right[i], mid[i] - side[i]);
    }
}

TEST_F(Limiter2Test, SidechainMidSideLinkedDrivesBothFromMidAndKeepsSidesDryShare) {
    for (Limiter1& element : limiter->limiters) {
        element.mix = 0.5F;
    }
    Limiter1 first = limiter->limiters[0];
    Limiter1 second = limiter->limiters[1];
    limiter->processBuffersSidechainMidSideLinked(left.data(), right.data(), sideLeft.data(), nullptr,
                                                  kCount);
    Samples mid(left.size());
    Samples side(left.size());
    for (std::size_t i = 0; i < left.size(); ++i) {
        mid[i] = (leftIn[i] + rightIn[i]) * 0.5F;
        side[i] = (leftIn[i] - rightIn[i]) * 0.5F;
    }
    first.processBufferSidechain(mid.data(), sideLeft.data(), kCount);
    second.processBufferSidechain(side.data(), sideLeft.data(), kCount);
    for (std::size_t i = 0; i < left.size(); ++i) {
        EXPECT_EQ(left[i], mid[i] + side[i]);
        EXPECT_EQ(right[i], mid[i] - side[i]);
    }
    EXPECT_EQ(limiter->limiters[1].gain, second.gain);
}

TEST_F(Limiter2Test, ACountOfZeroTouchesNothing) {
    limiter->splitter.mid[0] = 7.0F;
    limiter->splitter.side[0] = 7.0F;
    limiter->limiters[0].gainTarget = limiter->limiters[1].gainTarget = 7.0F;
    for (const auto operation : {&Limiter2::processBuffers, &Limiter2::processBuffersLinked,
                                 &Limiter2::processBuffersMidSide, &Limiter2::processBuffersMidSideLinked}) {
        ((*limiter).*operation)(left.data(), right.data(), 0);
    }
    for (const auto operation :
         {&Limiter2::processBuffersSidechain, &Limiter2::processBuffersSidechainLinked,
          &Limiter2::processBuffersSidechainMidSide, &Limiter2::processBuffersSidechainMidSideLinked}) {
        ((*limiter).*operation)(left.data(), right.data(), sideLeft.data(), sideRight.data(), 0);
    }
    EXPECT_EQ(left, leftIn);
    EXPECT_EQ(right, rightIn);
    EXPECT_EQ(limiter->splitter.mid[0], 7.0F);
    EXPECT_EQ(limiter->splitter.side[0], 7.0F);
    for (const Limiter1& element : limiter->limiters) {
        EXPECT_EQ(element.gainTarget, 7.0F);
        EXPECT_EQ(element.gain, 1.0F);
    }
}

TEST_F(Limiter2Test, ElementsTakeMoreThan4096Frames) {
    Samples longLeft(5000, 1.0F);
    Samples longRight(5000, 1.0F);
    Limiter1 element = limiter->limiters[0];
    Samples expected = longLeft;
    element.processBuffer(expected.data(), 5000);
    limiter->processBuffers(longLeft.data(), longRight.data(), 5000);
    EXPECT_EQ(longLeft, expected);
    EXPECT_NE(longLeft[4999], 1.0F);
}

TEST(MidSideSplitter, StartsClearAndClearsAllPlaces) {
    auto splitter = std::make_unique<MidSideSplitter>();
    const auto isZero = [](float x) { return x == 0.0F; };
    EXPECT_TRUE(std::all_of(splitter->mid, splitter->mid + 4096, isZero));
    std::fill_n(splitter->mid, 4096, 1.0F);
    std::fill_n(splitter->side, 4096, 1.0F);
    splitter->reset();
    EXPECT_TRUE(std::all_of(splitter->mid, splitter->mid + 4096, isZero));
    EXPECT_TRUE(std::all_of(splitter->side, splitter->side + 4096, isZero));
}

TEST(MidSideSplitter, OnlyTheFirst4096FramesAreSplitAndMixed) {
    auto splitter = std::make_unique<MidSideSplitter>();
    Samples a(5000, 3.0F);
    Samples b(5000, 1.0F);
    splitter->split(a.data(), b.data(), 5000);
    EXPECT_EQ(splitter->getMid()[4095], 2.0F);
    EXPECT_EQ(splitter->getSide()[4095], 1.0F);
    std::fill(a.begin(), a.end(), 9.0F);
    std::fill(b.begin(), b.end(), 9.0F);
    splitter->mix(a.data(), b.data(), 5000);
    EXPECT_EQ(a[4095], 3.0F);
    EXPECT_EQ(b[4095], 1.0F);
    EXPECT_EQ(a[4096], 9.0F);
    EXPECT_EQ(b[4096], 9.0F);
}

} // namespace
