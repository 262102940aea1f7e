#include "platform/draw/CGAffineTransform.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>

using namespace platform;

namespace {

void expectNear(const CGPoint& actual, const CGPoint& expected) {
    EXPECT_NEAR(actual.x, expected.x, 1e-12);
    EXPECT_NEAR(actual.y, expected.y, 1e-12);
}

TEST(AffineTransform, ScalingAMapScalesBeforeIt) {
    const CGAffineTransform map = CGAffineTransformScale(CGAffineTransformMakeTranslation(10, 20), 2, 3);
    EXPECT_EQ(CGPointApplyAffineTransform({1, 1}, map), CGPointMake(12, 23));
    EXPECT_EQ(CGAffineTransformScale(CGAffineTransformIdentity, 0.5, 0.5),
              CGAffineTransformMakeScale(0.5, 0.5));
}

TEST(AffineTransform, ConcatAppliesTheFirstMapFirst) {
    const CGAffineTransform map =
        CGAffineTransformConcat(CGAffineTransformMakeTranslation(1, 0), CGAffineTransformMakeScale(2, 2));
    EXPECT_EQ(CGPointApplyAffineTransform({0, 0}, map), CGPointMake(2, 0));
}

TEST(AffineTransform, APositiveAngleTurnsClockwiseOnTheScreen) {
    const CGAffineTransform quarter = CGAffineTransformMakeRotation(std::numbers::pi / 2.0);
    expectNear(CGPointApplyAffineTransform({0, -1}, quarter), {1, 0}); // up becomes right
}

TEST(AffineTransform, TheInverseUndoesTheMap) {
    const CGAffineTransform map =
        CGAffineTransformRotate(CGAffineTransformScale(CGAffineTransformMakeTranslation(3, 4), 2, 5), 0.3);
    const CGPoint there = CGPointApplyAffineTransform({7, -2}, map);
    expectNear(CGPointApplyAffineTransform(there, CGAffineTransformInvert(map)), {7, -2});
}

TEST(AffineTransform, FlatAndNonFiniteMapsHaveNoInverse) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const CGAffineTransform flat = CGAffineTransformMakeScale(0, 1);
    EXPECT_FALSE(CGAffineTransformIsInvertible(flat));
    EXPECT_EQ(CGAffineTransformInvert(flat), flat);
    EXPECT_FALSE(CGAffineTransformIsInvertible(CGAffineTransformMakeScale(nan, 1)));
    EXPECT_FALSE(CGAffineTransformIsInvertible(CGAffineTransformMakeTranslation(nan, 1)));
    EXPECT_FALSE(CGAffineTransformIsInvertible(CGAffineTransformMakeScale(1e200, 1e200)));
    EXPECT_TRUE(CGAffineTransformIsInvertible(CGAffineTransformIdentity));
}

TEST(AffineTransform, ARectangleMapsToTheOneAroundIt) {
    EXPECT_EQ(CGRectApplyAffineTransform(CGRectMake(1, 2, 3, 4), CGAffineTransformMakeScale(-2, 0.5)),
              CGRectMake(-8, 1, 6, 2));
    const CGRect turned = CGRectApplyAffineTransform(CGRectMake(0, 0, 2, 1),
                                                     CGAffineTransformMakeRotation(std::numbers::pi / 2.0));
    EXPECT_NEAR(turned.origin.x, -1, 1e-12);
    EXPECT_NEAR(turned.origin.y, 0, 1e-12);
    EXPECT_NEAR(turned.size.width, 1, 1e-12);
    EXPECT_NEAR(turned.size.height, 2, 1e-12);
}

TEST(AffineTransform, ScalingARectangleAboutItsCentreKeepsTheCentre) {
    const CGRect frame = CGRectMake(0, 50, 512, 340);
    CGRect result = CGRectApplyAffineTransform(frame, CGAffineTransformMakeTranslation(-256, -220));
    result = CGRectApplyAffineTransform(result, CGAffineTransformMakeScale(0.25, 0.25));
    result = CGRectApplyAffineTransform(result, CGAffineTransformMakeTranslation(256, 220));
    EXPECT_EQ(result, CGRectMake(192, 177.5, 128, 85)); // the width is one exact product
}

} // namespace
