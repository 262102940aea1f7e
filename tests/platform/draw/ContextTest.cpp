#include "platform/draw/CGContext.h"

#include "support/Pixels.h"

#include <gtest/gtest.h>
#include <limits>
#include <numbers>

using namespace platform;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kFar = std::numeric_limits<double>::infinity();

void fillSquare(double x, double y, double side) {
    UIColor::whiteColor().setFill();
    UIBezierPath::bezierPathWithRect(CGRectMake(x, y, side, side)).fill();
}

TEST(Context, TheCurrentContextIsTheInnermostOne) {
    EXPECT_EQ(UIGraphicsGetCurrentContext(), nullptr);
    auto outer = BitmapContext::make({1, 1});
    auto inner = BitmapContext::make({1, 1});
    ASSERT_TRUE(outer && inner);
    const GraphicsScope first(*outer.value());
    {
        const GraphicsScope second(*inner.value());
        EXPECT_EQ(UIGraphicsGetCurrentContext(), inner.value().get());
    }
    EXPECT_EQ(UIGraphicsGetCurrentContext(), outer.value().get());
}

TEST(Context, PoppingAnEmptyStackDoesNothing) {
    UIGraphicsPopContext();
    EXPECT_EQ(UIGraphicsGetCurrentContext(), nullptr);
}

TEST(Context, TheMatrixIsRestoredWithTheState) {
    auto made = BitmapContext::make({10, 10}, 2.0);
    ASSERT_TRUE(made);
    CGContext& context = *made.value();
    context.saveGState();
    context.translateCTM(3, 4);
    context.scaleCTM(2, 2);
    EXPECT_EQ(CGPointApplyAffineTransform({1, 1}, context.ctm()), CGPointMake(5, 6));
    context.restoreGState();
    EXPECT_EQ(context.ctm(), CGAffineTransformIdentity);
    context.restoreGState(); // one too many is ignored
    EXPECT_EQ(context.stateDepth(), 0U);
}

TEST(Context, DrawingFollowsTranslationScaleAndRotation) {
    const UIImage image = test::drawn({20, 20}, 1.0, [](CGContext& context) {
        context.translateCTM(10, 10);
        context.rotateCTM(std::numbers::pi / 2.0);
        context.scaleCTM(2, 2);
        fillSquare(0, -4, 2); // above the origin, so right of it once turned
    });
    EXPECT_EQ(test::pixelAt(image, {16, 12}).alpha, 255);
    EXPECT_EQ(test::pixelAt(image, {12, 4}).alpha, 0);
    EXPECT_EQ(test::inkedPixels(image), 16U);
}

struct Flattening {
    const char* name;
    void (*apply)(CGContext&);
};

class FlatMatrix : public testing::TestWithParam<Flattening> {};

TEST_P(FlatMatrix, DrawsNothingUntilTheRestoreAndLeavesTheContextWhole) {
    const UIImage image = test::drawn({20, 20}, 1.0, [](CGContext& context) {
        context.saveGState();
        GetParam().apply(context);
        fillSquare(0, 0, 20);
        UIBezierPath line = UIBezierPath::bezierPathWithOvalInRect(CGRectMake(2, 2, 10, 10));
        UIColor::whiteColor().setStroke();
        line.stroke();
        context.saveGState();
        context.clipToRect(CGRectMake(0, 0, 5, 5));
        context.scaleCTM(1e300, 1e300);
        context.rotateCTM(1.0);
        fillSquare(0, 0, 20);
        context.restoreGState();
        context.restoreGState();
        fillSquare(5, 5, 10);
    });
    EXPECT_EQ(test::inkedPixels(image), 100U);
    EXPECT_EQ(test::pixelAt(image, {10, 10}).alpha, 255);
}

INSTANTIATE_TEST_SUITE_P(
    Context, FlatMatrix,
    testing::Values(Flattening{"ZeroScale", [](CGContext& c) { c.scaleCTM(0, 0); }},
                    Flattening{"ZeroHeight", [](CGContext& c) { c.scaleCTM(1, 0); }},
                    Flattening{"NaNScale", [](CGContext& c) { c.scaleCTM(kNaN, kNaN); }},
                    Flattening{"InfiniteScale", [](CGContext& c) { c.scaleCTM(kFar, kFar); }},
                    Flattening{"HugeScale", [](CGContext& c) { c.scaleCTM(1e200, 1e200); }},
                    Flattening{"TinyScale", [](CGContext& c) { c.scaleCTM(1e-200, 1e-200); }},
                    Flattening{"DenormalScale", [](CGContext& c) { c.scaleCTM(1e-310, 1); }},
                    Flattening{"NaNAngle", [](CGContext& c) { c.rotateCTM(kNaN); }},
                    Flattening{"InfiniteAngle", [](CGContext& c) { c.rotateCTM(kFar); }},
                    Flattening{"NaNTranslation", [](CGContext& c) { c.translateCTM(kNaN, 0); }},
                    Flattening{"InfiniteTranslation", [](CGContext& c) { c.translateCTM(kFar, 0); }},
                    Flattening{"EmptyClip", [](CGContext& c) { c.clipToRect(CGRectZero); }},
                    Flattening{"NaNClip", [](CGContext& c) { c.clipToRect(CGRectMake(kNaN, 0, 5, 5)); }}),
    [](const auto& flattening) { return std::string(flattening.param.name); });

TEST(Context, AClipThroughAFlatMatrixLeavesNothingEvenIfTheMatrixIsReplacedLater) {
    const UIImage image = test::drawn({4, 4}, 1.0, [](CGContext& context) {
        context.saveGState();
        context.scaleCTM(0, 0);
        context.clipToRect(CGRectMake(0, 0, 4, 4));
        fillSquare(0, 0, 4);
        context.restoreGState();
    });
    EXPECT_EQ(test::inkedPixels(image), 0U);
}

TEST(Context, ClipsIntersect) {
    const UIImage image = test::drawn({20, 20}, 1.0, [](CGContext& context) {
        context.clipToRect(CGRectMake(0, 0, 10, 20));
        context.clipToRect(CGRectMake(15, 20, -10, -15)); // standardised: 5, 5, 10, 15
        fillSquare(0, 0, 20);
    });
    EXPECT_EQ(test::inkedPixels(image), 75U);
}

TEST(Context, PathsThatAreNotFiniteOrFarOffAreHarmless) {
    const UIImage image = test::drawn({20, 20}, 1.0, [](CGContext& context) {
        UIColor::whiteColor().setStroke();
        UIBezierPath broken;
        broken.moveToPoint({kNaN, 0});
        broken.addLineToPoint({20, 20});
        broken.stroke();
        broken.fill();
        UIBezierPath infinite;
        infinite.moveToPoint({0, 0});
        infinite.addLineToPoint({kFar, 10});
        infinite.stroke();
        UIBezierPath thin;
        thin.moveToPoint({0, 0});
        thin.addLineToPoint({20, 20});
        for (const double width : {0.0, -1.0, kNaN}) {
            thin.setLineWidth(width);
            thin.stroke();
        }
        EXPECT_EQ(context.stateDepth(), 0U);
    });
    EXPECT_EQ(test::inkedPixels(image), 0U);
    const UIImage covered = test::drawn({20, 20}, 1.0, [](CGContext&) { fillSquare(-1e30, -1e30, 2e30); });
    EXPECT_EQ(test::inkedPixels(covered), 400U);
    const UIImage broad = test::drawn({20, 20}, 1.0, [](CGContext&) {
        UIBezierPath line;
        line.moveToPoint({0, 10});
        line.addLineToPoint({20, 10});
        line.setLineWidth(1e30);
        line.setLineCapStyle(CGLineCap::round);
        UIColor::whiteColor().setStroke();
        line.stroke();
    });
    EXPECT_EQ(test::inkedPixels(broad), 400U);
}

TEST(Context, ADashLeavesGapsAndEndsWithItsState) {
    const auto row = [](std::vector<double> lengths) {
        return test::drawn({20, 4}, 1.0, [&](CGContext& context) {
            UIColor::whiteColor().setStroke();
            UIBezierPath line;
            line.moveToPoint({0, 1});
            line.addLineToPoint({20, 1});
            line.setLineWidth(2);
            context.saveGState();
            context.setLineDash(0, std::move(lengths));
            line.stroke();
            context.restoreGState();
            context.translateCTM(0, 2);
            line.stroke();
        });
    };
    const UIImage dashed = row({2, 3});
    for (int x = 0; x < 20; ++x) {
        EXPECT_EQ(test::pixelOf(dashed.pixel(x, 0)).alpha, x % 5 < 2 ? 255 : 0) << x;
        EXPECT_EQ(test::pixelOf(dashed.pixel(x, 3)).alpha, 255) << x;
    }
    // What can't be a dash is a solid line, and never an error of the surface.
    for (const auto& lengths : std::vector<std::vector<double>>{{}, {0, 0}, {-1, 2}, {kNaN}, {kFar, 1}}) {
        EXPECT_EQ(test::inkedPixels(row(lengths)), 80U);
    }
}

TEST(Context, CapsReachBeyondTheEndByHalfTheWidth) {
    const auto inkOf = [](CGLineCap cap) {
        return test::inkedPixels(test::drawn({20, 20}, 1.0, [&](CGContext&) {
            UIColor::whiteColor().setStroke();
            UIBezierPath line;
            line.moveToPoint({8, 10});
            line.addLineToPoint({12, 10});
            line.setLineWidth(4);
            line.setLineCapStyle(cap);
            line.stroke();
        }));
    };
    EXPECT_EQ(inkOf(CGLineCap::butt), 16U);
    EXPECT_EQ(inkOf(CGLineCap::square), 32U);
    EXPECT_GT(inkOf(CGLineCap::round), 16U);
    EXPECT_LE(inkOf(CGLineCap::round), 32U);
}

TEST(Context, JoinsDifferAtTheCorner) {
    const auto cornerOf = [](CGLineJoin join) {
        const UIImage image = test::drawn({20, 20}, 1.0, [&](CGContext&) {
            UIColor::whiteColor().setStroke();
            UIBezierPath corner;
            corner.moveToPoint({4, 16});
            corner.addLineToPoint({4, 4});
            corner.addLineToPoint({16, 4});
            corner.setLineWidth(8);
            corner.setLineJoinStyle(join);
            corner.stroke();
        });
        return test::pixelAt(image, {0.5, 0.5}).alpha + test::pixelAt(image, {1.5, 1.5}).alpha;
    };
    EXPECT_EQ(cornerOf(CGLineJoin::miter), 510);
    EXPECT_LT(cornerOf(CGLineJoin::bevel), cornerOf(CGLineJoin::round));
}

} // namespace
