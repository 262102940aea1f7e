#include "platform/draw/UIBezierPath.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using namespace platform;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(BezierPath, AnEmptyPathContainsNothing) {
    EXPECT_TRUE(UIBezierPath().isEmpty());
    EXPECT_FALSE(UIBezierPath().containsPoint({0, 0}));
    EXPECT_EQ(UIBezierPath().bounds(), CGRectZero);
}

TEST(BezierPath, ARectangleContainsPointsHalfOpenAndExactly) {
    const UIBezierPath path = UIBezierPath::bezierPathWithRect(CGRectMake(39, 44, 90, 98));
    for (const double x : {std::nextafter(39.0, 0.0), 39.0, 84.0, std::nextafter(129.0, 0.0), 129.0}) {
        for (const double y : {std::nextafter(44.0, 0.0), 44.0, 90.0, std::nextafter(142.0, 0.0), 142.0}) {
            EXPECT_EQ(path.containsPoint({x, y}), CGRectContainsPoint(CGRectMake(39, 44, 90, 98), {x, y}))
                << x << " " << y;
        }
    }
}

TEST(BezierPath, NaNAndInfinityAreOutside) {
    const UIBezierPath path = UIBezierPath::bezierPathWithRect(CGRectMake(0, 0, 10, 10));
    EXPECT_FALSE(path.containsPoint({kNaN, 5}));
    EXPECT_FALSE(path.containsPoint({5, kNaN}));
    EXPECT_FALSE(path.containsPoint({std::numeric_limits<double>::infinity(), 5}));
    EXPECT_FALSE(path.containsPoint({-std::numeric_limits<double>::infinity(), 5}));
    EXPECT_FALSE(UIBezierPath::bezierPathWithRect(CGRectMake(kNaN, 0, 10, 10)).containsPoint({5, 5}));
}

TEST(BezierPath, AnOvalContainsItsInsideOnly) {
    const UIBezierPath oval = UIBezierPath::bezierPathWithOvalInRect(CGRectMake(0, 0, 20, 10));
    EXPECT_TRUE(oval.containsPoint({10, 5}));
    EXPECT_TRUE(oval.containsPoint({0.1, 5}));
    EXPECT_FALSE(oval.containsPoint({1, 1}));
    EXPECT_FALSE(oval.containsPoint({19, 9}));
}

TEST(BezierPath, AnOvalIsRoundWithinAThousandth) {
    const UIBezierPath oval = UIBezierPath::bezierPathWithOvalInRect(CGRectMake(-25, -25, 50, 50));
    for (int degrees = 0; degrees < 360; degrees += 7) {
        const double angle = degrees * 0.017453292519943295;
        EXPECT_TRUE(oval.containsPoint({24.97 * std::cos(angle), 24.97 * std::sin(angle)})) << degrees;
        EXPECT_FALSE(oval.containsPoint({25.03 * std::cos(angle), 25.03 * std::sin(angle)})) << degrees;
    }
}

TEST(BezierPath, ARoundedRectangleLeavesItsCornersOut) {
    const UIBezierPath path = UIBezierPath::bezierPathWithRoundedRect(CGRectMake(0, 0, 100, 50), 10);
    EXPECT_FALSE(path.containsPoint({1, 1}));
    EXPECT_TRUE(path.containsPoint({3.5, 3.5}));
    EXPECT_TRUE(path.containsPoint({0, 25}));
    EXPECT_EQ(path.bounds(), CGRectMake(0, 0, 100, 50));
}

TEST(BezierPath, TheCornerRadiusIsLimitedToHalfTheShorterSide) {
    const UIBezierPath path = UIBezierPath::bezierPathWithRoundedRect(CGRectMake(0, 0, 20, 20), 1000);
    EXPECT_EQ(path.bounds(), CGRectMake(0, 0, 20, 20));
    EXPECT_FALSE(path.containsPoint({2, 2}));
}

TEST(BezierPath, ARoundedRectangleWithoutAreaIsEmpty) {
    EXPECT_TRUE(UIBezierPath::bezierPathWithRoundedRect(CGRectMake(2, 2, -3, 10), 4).isEmpty());
    EXPECT_TRUE(UIBezierPath::bezierPathWithRoundedRect(CGRectMake(2, 2, 10, 0), 4).isEmpty());
    EXPECT_TRUE(UIBezierPath::bezierPathWithRoundedRect(CGRectMake(2, 2, kNaN, 10), 4).isEmpty());
}

TEST(BezierPath, LinesAndCurvesNeedACurrentPoint) {
    UIBezierPath path;
    path.addLineToPoint({1, 1});
    path.addCurveToPoint({1, 1}, {0, 0}, {0, 0});
    path.closePath();
    EXPECT_TRUE(path.isEmpty());
    path.moveToPoint({0, 0});
    path.addLineToPoint({10, 0});
    path.addLineToPoint({10, 10});
    EXPECT_TRUE(path.containsPoint({9, 5})); // an open path is closed for the test
    EXPECT_FALSE(path.containsPoint({1, 5}));
}

TEST(BezierPath, OppositeWindingsMakeAHole) {
    UIBezierPath path;
    for (const auto& [x, y] : {std::pair{0.0, 0.0}, {10.0, 0.0}, {10.0, 10.0}, {0.0, 10.0}}) {
        path.isEmpty() ? path.moveToPoint({x, y}) : path.addLineToPoint({x, y});
    }
    path.closePath();
    path.moveToPoint({3, 3});
    path.addLineToPoint({3, 7});
    path.addLineToPoint({7, 7});
    path.addLineToPoint({7, 3});
    path.closePath();
    EXPECT_TRUE(path.containsPoint({1, 5}));
    EXPECT_FALSE(path.containsPoint({5, 5}));
}

TEST(BezierPath, LineSettingsStartPlain) {
    const UIBezierPath path;
    EXPECT_EQ(path.lineWidth(), 1.0);
    EXPECT_EQ(path.lineCapStyle(), CGLineCap::butt);
    EXPECT_EQ(path.lineJoinStyle(), CGLineJoin::miter);
}

TEST(BezierPath, AReadyMadeShapeIsDescribedByItsRequestUntilItIsEdited) {
    UIBezierPath path = UIBezierPath::bezierPathWithRoundedRect(CGRectMake(16.5, 19.5, 480, 300), 10);
    EXPECT_EQ(path.description(), "roundedRect 16.5 19.5 480 300 radius 10");
    EXPECT_EQ(UIBezierPath::bezierPathWithOvalInRect(CGRectMake(1, 2, 3, 4)).description(), "oval 1 2 3 4");
    path.removeAllPoints();
    path.moveToPoint({0, -18});
    path.addLineToPoint({0, 0});
    path.addCurveToPoint({5, 6}, {1, 2}, {3, 4});
    path.closePath();
    EXPECT_EQ(path.description(), "path move 0 -18 line 0 0 curve 5 6 controls 1 2 3 4 close");
}

} // namespace
