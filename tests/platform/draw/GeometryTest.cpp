#include "platform/draw/CGGeometry.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using namespace platform;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kFar = std::numeric_limits<double>::infinity();

TEST(Geometry, RectanglesAreEqualFieldByField) {
    EXPECT_TRUE(CGRectEqualToRect(CGRectMake(1, 2, 3, 4), CGRectMake(1, 2, 3, 4)));
    EXPECT_FALSE(CGRectEqualToRect(CGRectMake(1, 2, 3, 4), CGRectMake(1, 2, 3, 4.5)));
    EXPECT_FALSE(CGRectEqualToRect(CGRectMake(0, 0, 3, 4), CGRectMake(3, 4, -3, -4)));
    EXPECT_FALSE(CGRectEqualToRect(CGRectMake(kNaN, 0, 1, 1), CGRectMake(kNaN, 0, 1, 1)));
    EXPECT_TRUE(CGRectEqualToRect(CGRectMake(-0.0, 0, 0, 0), CGRectZero));
}

TEST(Geometry, StandardizingTurnsNegativeLengthsRound) {
    EXPECT_EQ(CGRectStandardize(CGRectMake(10, 20, -4, -6)), CGRectMake(6, 14, 4, 6));
    EXPECT_EQ(CGRectStandardize(CGRectMake(10, 20, 4, 6)), CGRectMake(10, 20, 4, 6));
}

TEST(Geometry, EdgesAreThoseOfTheStandardizedRectangle) {
    const CGRect rect = CGRectMake(10, 20, -4, -6);
    EXPECT_EQ(CGRectGetMinX(rect), 6.0);
    EXPECT_EQ(CGRectGetMaxX(rect), 10.0);
    EXPECT_EQ(CGRectGetMinY(rect), 14.0);
    EXPECT_EQ(CGRectGetMaxY(rect), 20.0);
    EXPECT_EQ(CGRectGetMidX(rect), 8.0);
    EXPECT_EQ(CGRectGetMidY(rect), 17.0);
    EXPECT_EQ(CGRectGetWidth(rect), 4.0);
    EXPECT_EQ(CGRectGetHeight(rect), 6.0);
}

TEST(Geometry, ContainsPointIsHalfOpen) {
    const CGRect rect = CGRectMake(39, 44, 90, 98);
    EXPECT_TRUE(CGRectContainsPoint(rect, {39, 44}));
    EXPECT_TRUE(CGRectContainsPoint(rect, {std::nextafter(129.0, 0.0), std::nextafter(142.0, 0.0)}));
    EXPECT_FALSE(CGRectContainsPoint(rect, {129, 100}));
    EXPECT_FALSE(CGRectContainsPoint(rect, {100, 142}));
    EXPECT_FALSE(CGRectContainsPoint(rect, {std::nextafter(39.0, 0.0), 100}));
    EXPECT_TRUE(CGRectContainsPoint(CGRectMake(10, 10, -10, -10), {0, 0}));
}

TEST(Geometry, NaNAndEmptyRectanglesContainNothing) {
    const CGRect rect = CGRectMake(0, 0, 10, 10);
    EXPECT_FALSE(CGRectContainsPoint(rect, {kNaN, 5}));
    EXPECT_FALSE(CGRectContainsPoint(rect, {5, kNaN}));
    EXPECT_FALSE(CGRectContainsPoint(rect, {kFar, 5}));
    EXPECT_FALSE(CGRectContainsPoint(CGRectMake(0, 0, kNaN, 10), {5, 5}));
    EXPECT_FALSE(CGRectContainsPoint(CGRectMake(5, 5, 0, 0), {5, 5}));
    EXPECT_TRUE(CGRectIsEmpty(CGRectMake(0, 0, kNaN, 1)));
    EXPECT_TRUE(CGRectIsEmpty(CGRectMake(0, 0, 0, 1)));
    EXPECT_FALSE(CGRectIsEmpty(CGRectMake(0, 0, -1, 1)));
}

TEST(Geometry, RectanglesThatOnlyTouchDoNotIntersect) {
    const CGRect rect = CGRectMake(0, 0, 10, 10);
    EXPECT_TRUE(CGRectIntersectsRect(rect, CGRectMake(9.5, 9.5, 10, 10)));
    EXPECT_FALSE(CGRectIntersectsRect(rect, CGRectMake(10, 0, 10, 10)));
    EXPECT_FALSE(CGRectIntersectsRect(rect, CGRectMake(0, 10, 10, 10)));
    EXPECT_FALSE(CGRectIntersectsRect(rect, CGRectMake(20, 20, 1, 1)));
    EXPECT_TRUE(CGRectIntersectsRect(rect, CGRectMake(20, 20, -15, -15)));
    EXPECT_FALSE(CGRectIntersectsRect(rect, CGRectMake(kNaN, 0, 10, 10)));
}

TEST(Geometry, TheIntersectionIsTheCommonArea) {
    EXPECT_EQ(CGRectIntersection(CGRectMake(0, 0, 10, 10), CGRectMake(5, 6, 10, 10)), CGRectMake(5, 6, 5, 4));
    EXPECT_EQ(CGRectIntersection(CGRectMake(0, 0, 10, 10), CGRectMake(50, 6, 10, 10)), CGRectZero);
}

TEST(Geometry, OffsetMovesAndInsetShrinks) {
    EXPECT_EQ(CGRectOffset(CGRectMake(1, 2, 3, 4), 10, -2), CGRectMake(11, 0, 3, 4));
    EXPECT_EQ(CGRectInset(CGRectMake(0, 0, 10, 10), 1, 2), CGRectMake(1, 2, 8, 6));
}

} // namespace
