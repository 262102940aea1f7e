#include "kernel/StraightFall.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <random>

namespace {

using qor::StraightFall;

double oneByOne(int steps, double value, double step) {
    for (int i = 0; i < steps; ++i) {
        value -= step;
    }
    return value;
}

TEST(StraightFall, FallsAtOnceAreSingleFallsBitForBit) {
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    int told = 0;
    for (int i = 0; i < 200000; ++i) {
        const double step = std::exp2(-4.0 - 24.0 * unit(random));
        StraightFall fall(step);
        double value = 2.0 * unit(random);
        for (int call = 0; call < 4; ++call) { // the later calls reuse what the first worked out
            const double end = fall.after(value);
            if (end != 0.0) {
                ++told;
                ASSERT_EQ(std::bit_cast<std::uint64_t>(end),
                          std::bit_cast<std::uint64_t>(oneByOne(8, value, step)))
                    << value << " by " << step;
            }
            value += (unit(random) - 0.4) * 16.0 * step;
        }
    }
    EXPECT_GT(told, 400000); // the rest crosses a power of two
}

TEST(StraightFall, AFallThatReachesAPowerOfTwoIsNotTold) {
    StraightFall fall(0x1p-10);
    EXPECT_EQ(fall.after(0.5 + 0x1.8p-7), 0.5 + 0x1p-8);
    EXPECT_EQ(fall.after(0.5 + 0x1p-7), 0.0);
    EXPECT_EQ(fall.after(0.5), 0.0);
    EXPECT_EQ(fall.after(0.5 - 0x1p-53), 0.5 - 0x1p-53 - 0x1p-7);
}

TEST(StraightFall, WhatIsWorkedOutCloseToAPowerOfTwoHoldsUpToTheNext) {
    constexpr double kStep = 1.0 / 24000.0;
    StraightFall fall(kStep);
    EXPECT_EQ(fall.after(0.5 + 0.5 * kStep), 0.0); // the first step already leaves
    EXPECT_EQ(fall.after(0.9), oneByOne(8, 0.9, kStep));
    EXPECT_EQ(fall.after(0.501), oneByOne(8, 0.501, kStep));
}

TEST(StraightFall, AStepHalfWayBetweenTwoPlacesIsNotTold) {
    constexpr double kPlace = 0x1p-53; // of the doubles from 0.5 to 1.0
    for (const double places : {0.5, 1.5, 1000.5}) {
        EXPECT_EQ(StraightFall(places * kPlace).after(0.75), 0.0) << places;
    }
    EXPECT_EQ(StraightFall(1000.25 * kPlace).after(0.75), 0.75 - 8000.0 * kPlace);
    EXPECT_EQ(StraightFall(1000.75 * kPlace).after(0.75), 0.75 - 8008.0 * kPlace);
}

TEST(StraightFall, NoStepIsNoFall) {
    EXPECT_EQ(StraightFall(0.0).after(0.75), 0.75);
}

TEST(StraightFall, OneSampleAtTheLimitOrWithoutANumberIsEnough) {
    constexpr double kLimit = 0.7;
    const auto highestBelow = std::nextafter(static_cast<float>(kLimit), 0.0F);
    for (std::size_t place = 0; place < 8; ++place) {
        std::array<float, 8> samples;
        samples.fill(-highestBelow);
        EXPECT_TRUE(StraightFall::allBelow(samples.data(), kLimit));
        for (const float reached :
             {std::nextafter(highestBelow, 1.0F), -1.0F, -std::numeric_limits<float>::infinity(),
              -std::numeric_limits<float>::quiet_NaN()}) {
            samples[place] = reached;
            EXPECT_FALSE(StraightFall::allBelow(samples.data(), kLimit)) << reached << " at " << place;
        }
    }
}

TEST(StraightFall, NothingIsBelowZero) {
    const std::array<float, 8> silence{};
    EXPECT_FALSE(StraightFall::allBelow(silence.data(), 0.0));
    EXPECT_TRUE(StraightFall::allBelow(silence.data(), std::numeric_limits<float>::denorm_min()));
}

TEST(StraightFall, ValuesWithoutAnEvenGridAreNotTold) {
    using Limits = std::numeric_limits<double>;
    for (const double value : {0.0, -0.0, -0.75, Limits::denorm_min(), Limits::min(), Limits::infinity(),
                               -Limits::infinity(), Limits::quiet_NaN()}) {
        for (const double step : {0.0, 1.0 / 24000.0, 0.25, -0.001, Limits::quiet_NaN()}) {
            StraightFall fall(step);
            const double end = fall.after(value);
            EXPECT_TRUE(end == 0.0 || end == oneByOne(8, value, step)) << value << " by " << step;
        }
    }
    EXPECT_EQ(StraightFall(-0.001).after(0.75), 0.0);
    EXPECT_EQ(StraightFall(Limits::quiet_NaN()).after(0.75), 0.0);
}

} // namespace
