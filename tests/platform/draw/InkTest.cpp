// What a context says of where it has drawn, and drawing over pixels that are there.
#include "platform/draw/NSStringDrawing.h"
#include "support/Pixels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

using namespace platform;

namespace {

constexpr int kSide = 64; // pixels

/// The pixels of a square canvas that are not clear, as a rectangle; empty for none.
CGRect drawnArea(const UIImage& image) {
    int left = kSide;
    int top = kSide;
    int right = 0;
    int bottom = 0;
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            if (image.pixel(x, y) != 0) {
                left = std::min(left, x);
                top = std::min(top, y);
                right = std::max(right, x + 1);
                bottom = std::max(bottom, y + 1);
            }
        }
    }
    return right > left ? CGRectMake(left, top, right - left, bottom - top) : CGRectZero;
}

bool lies(const CGRect& inner, const CGRect& outer) {
    return CGRectIsEmpty(inner) || (CGRectGetMinX(inner) >= std::floor(CGRectGetMinX(outer)) &&
                                    CGRectGetMinY(inner) >= std::floor(CGRectGetMinY(outer)) &&
                                    CGRectGetMaxX(inner) <= std::ceil(CGRectGetMaxX(outer)) &&
                                    CGRectGetMaxY(inner) <= std::ceil(CGRectGetMaxY(outer)));
}

/// Shapes of every kind under any map and clip.
class Scribbler {
public:
    explicit Scribbler(unsigned seed) : random_(seed) {}

    void scribble(CGContext& context) {
        context.saveGState();
        if (oneIn(2)) {
            context.clipToRect(CGRectMake(number(-10, 50), number(-10, 50), number(0, 40), number(0, 40)));
        }
        context.translateCTM(number(-20, 60), number(-20, 60));
        context.rotateCTM(number(-3, 3));
        context.scaleCTM(number(0.2, 2), number(-2, 2));
        UIColor::whiteColor().setFill();
        UIColor::whiteColor().setStroke();
        UIBezierPath path = shape();
        path.setLineWidth(number(0, 12));
        path.setLineCapStyle(static_cast<CGLineCap>(random_() % 3));
        path.setLineJoinStyle(static_cast<CGLineJoin>(random_() % 3));
        switch (random_() % 4) {
        case 0:
            path.fill();
            break;
        case 1: {
            NSStringAttributes attributes;
            attributes.foregroundColor = UIColor::whiteColor();
            drawInRect("gQ|", CGRectMake(0, 0, 40, 20), attributes);
            break;
        }
        case 2:
            UIImage(2, 2, 1.0, std::vector<std::uint32_t>(4, 0xFFFFFFFFU))
                .drawInRect(CGRectMake(number(-5, 5), number(-5, 5), number(0, 20), number(0, 20)));
            break;
        default:
            path.stroke();
            break;
        }
        context.restoreGState();
    }

private:
    double number(double from, double to) {
        return std::uniform_real_distribution<double>(from, to)(random_);
    }
    bool oneIn(unsigned times) { return random_() % times == 0; }
    UIBezierPath shape() {
        UIBezierPath path;
        path.moveToPoint({number(-20, 20), number(-20, 20)});
        for (int i = 0; i < 3; ++i) { // with sharp corners, and points upon one another
            if (oneIn(2)) {
                path.addLineToPoint({number(-20, 20), number(-20, 20)});
            } else {
                path.addCurveToPoint({number(-20, 20), number(-20, 20)}, {number(-30, 30), number(-30, 30)},
                                     {number(-30, 30), number(-30, 30)});
            }
        }
        if (oneIn(2)) {
            path.closePath();
        }
        return path;
    }

    std::minstd_rand random_;
};

TEST(Ink, NothingIsDrawnOutsideOfWhatTheContextTells) {
    int inked = 0;
    int tight = 0;
    for (unsigned seed = 1; seed <= 3000; ++seed) {
        auto made = BitmapContext::make({kSide, kSide});
        ASSERT_TRUE(made);
        BitmapContext& context = *made.value();
        EXPECT_TRUE(CGRectIsEmpty(context.inked()));
        const GraphicsScope scope(context);
        Scribbler(seed).scribble(context);
        const CGRect drawn = drawnArea(context.image());
        ASSERT_TRUE(lies(drawn, context.inked())) << seed;
        inked += CGRectIsEmpty(drawn) ? 0 : 1;
        tight += context.inked().size.width * context.inked().size.height < kSide * kSide / 2.0 ? 1 : 0;
    }
    EXPECT_GT(inked, 1000) << "the shapes miss the canvas";
    EXPECT_GT(tight, 1000) << "a rectangle around everything tells nothing";
}

TEST(Ink, KeepsToTheClipAndGrowsWithEveryShape) {
    auto made = BitmapContext::make({kSide, kSide});
    ASSERT_TRUE(made);
    BitmapContext& context = *made.value();
    const GraphicsScope scope(context);
    UIColor::whiteColor().setFill();
    context.saveGState();
    context.clipToRect(CGRectMake(8, 8, 4, 4));
    UIBezierPath::bezierPathWithRect(CGRectMake(0, 0, 64, 64)).fill();
    context.restoreGState();
    EXPECT_EQ(context.inked(), CGRectMake(8, 8, 4, 4));
    UIBezierPath::bezierPathWithRect(CGRectMake(40, 40, 2, 2)).fill();
    EXPECT_EQ(context.inked(), CGRectMake(8, 8, 35, 35)) << "with a pixel for the soft edge";
}

TEST(BitmapContext, DrawsOverPixelsThatAreThere) {
    std::vector<std::uint32_t> pixels(5 * 4, 0xFF0000FFU);
    {
        auto made = BitmapContext::over(pixels, 5, 4);
        ASSERT_TRUE(made);
        EXPECT_EQ(made.value()->pixelWidth(), 5);
        EXPECT_EQ(made.value()->pixelHeight(), 4);
        const GraphicsScope scope(*made.value());
        UIColor(1.0, 0.0, 0.0, 1.0).setFill();
        UIBezierPath::bezierPathWithRect(CGRectMake(1, 2, 3, 1)).fill();
    }
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        EXPECT_EQ(pixels[i], i >= 11 && i <= 13 ? 0xFFFF0000U : 0xFF0000FFU) << i;
    }
}

TEST(BitmapContext, DrawsOverNothingThatIsNotThere) {
    std::vector<std::uint32_t> pixels(20);
    EXPECT_FALSE(BitmapContext::over(pixels, 5, 5));
    EXPECT_FALSE(BitmapContext::over(pixels, 0, 4));
    EXPECT_FALSE(BitmapContext::over(pixels, 5, -1));
    EXPECT_FALSE(BitmapContext::over(pixels, BitmapContext::kLargestSide + 1, 0));
}

} // namespace
