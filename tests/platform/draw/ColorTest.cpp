#include "platform/draw/UIColor.h"

#include "support/Pixels.h"

#include <gtest/gtest.h>
#include <limits>

using namespace platform;

namespace {

TEST(Color, ComponentsOutsideZeroToOneAreClipped) {
    const UIColor color(-0.5, 1.5, std::numeric_limits<double>::quiet_NaN(), 2.0);
    EXPECT_EQ(color, UIColor(0.0, 1.0, 0.0, 1.0));
    EXPECT_EQ(UIColor(std::numeric_limits<double>::infinity(), 0, 0, 1).red(), 1.0);
}

TEST(Color, AComponentWithinTheRangeIsKeptExactly) {
    const double widened = 0.15F;
    EXPECT_EQ(UIColor(widened, 0, 0, 1).red(), widened);
}

TEST(Color, ReplacingAlphaKeepsTheRest) {
    EXPECT_EQ(UIColor(0.1, 0.2, 0.3, 1.0).colorWithAlphaComponent(0.6), UIColor(0.1, 0.2, 0.3, 0.6));
}

TEST(Color, LightGrayIsTwoThirds) {
    EXPECT_EQ(UIColor::lightGrayColor(), UIColor(2.0 / 3.0, 2.0 / 3.0, 2.0 / 3.0, 1.0));
}

TEST(Color, SettingWithoutAContextDoesNothing) {
    ASSERT_EQ(UIGraphicsGetCurrentContext(), nullptr);
    UIColor::whiteColor().setStroke();
    UIColor::whiteColor().setFill();
    UIBezierPath::bezierPathWithRect(CGRectMake(0, 0, 1, 1)).fill();
    UIBezierPath::bezierPathWithRect(CGRectMake(0, 0, 1, 1)).stroke();
}

TEST(Color, StrokeAndFillColoursBelongToTheState) {
    const UIImage image = test::drawn({30, 10}, 1.0, [](CGContext& context) {
        UIColor(1, 0, 0, 1).setFill();
        context.saveGState();
        UIColor(0, 0, 1, 1).setFill();
        UIBezierPath::bezierPathWithRect(CGRectMake(0, 0, 10, 10)).fill();
        context.restoreGState();
        UIBezierPath::bezierPathWithRect(CGRectMake(10, 0, 10, 10)).fill();
    });
    EXPECT_EQ(test::pixelAt(image, {5, 5}), (test::Pixel{0, 0, 255, 255}));
    EXPECT_EQ(test::pixelAt(image, {15, 5}), (test::Pixel{255, 0, 0, 255}));
    EXPECT_EQ(test::pixelAt(image, {25, 5}), (test::Pixel{0, 0, 0, 0}));
}

} // namespace
