#include "interface/QORDynamicsDisplayViewBase.h"
#include "support/Pixels.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

using namespace qor;

namespace {

struct Surface {
    CGSize view;
    double scale;
};

const Surface kSurfaces[] = {{{512, 340}, 1.0}, {{512, 340}, 2.0},  {{1024, 680}, 1.0},
                             {{700, 700}, 1.5}, {{1024, 340}, 3.0}, {{640, 425}, 1.25}};

// A point at a distance from the needles' pivot, in canvas units, at the angle of a value.
CGPoint at(double value, double length, const CGPoint& pivot = {153.0 + 103.5, 136.0 + 97.5}) {
    const double angle = (2.0 * value - 1.0) * std::numbers::pi / 2.0;
    return {.x = pivot.x + length * std::sin(angle), .y = pivot.y - length * std::cos(angle)};
}

CGPoint inView(const CGSize& view, const CGPoint& canvas) {
    const double factor = std::min(view.width / 512.0, view.height / 340.0);
    return {.x = (view.width - 512.0 * factor) / 2.0 + canvas.x * factor,
            .y = (view.height - 340.0 * factor) / 2.0 + canvas.y * factor};
}

UIImage display(const Surface& surface, double value1, double value2, double value3, double value4) {
    QORDynamicsDisplayViewBase base;
    base.value1 = value1;
    base.value2 = value2;
    base.value3 = value3;
    base.value4 = value4;
    return test::drawn(surface.view, surface.scale,
                       [&](CGContext&) { base.drawMain({.origin = {}, .size = surface.view}); });
}

// Alpha 0.6, with the colours multiplied by it.
bool isFirst(const test::Pixel& pixel) {
    return std::abs(pixel.alpha - 153) <= 2 && pixel.red > 2 * pixel.blue;
}
bool isSecond(const test::Pixel& pixel) {
    return std::abs(pixel.alpha - 153) <= 2 && pixel.blue > 2 * pixel.red;
}

TEST(DynamicsDisplayPixels, NeedlesAndDotsStandWhereTheirValuesSayAtEverySizeAndScale) {
    const double values[] = {0.08, 0.2, 0.33, 0.5, 0.61, 0.75, 0.92};
    for (const Surface& surface : kSurfaces) {
        for (std::size_t i = 0; i < std::size(values); ++i) {
            const double first = values[i];
            const double second = values[(i + 3) % std::size(values)];
            const UIImage image = display(surface, first, second, first, second);
            const auto pixel = [&](const CGPoint& canvas) {
                return test::pixelAt(image, inView(surface.view, canvas));
            };
            EXPECT_TRUE(isFirst(pixel(at(first, 60)))) << first << " at scale " << surface.scale;
            EXPECT_TRUE(isSecond(pixel(at(second, 60)))) << second << " at scale " << surface.scale;
            EXPECT_TRUE(isFirst(pixel(at(first, 87, {153.0 + 103.0, 136.0 + 97.01})))) << first;
            EXPECT_TRUE(isSecond(pixel(at(second, 87, {153.0 + 103.0, 136.0 + 97.02})))) << second;
            EXPECT_EQ(pixel(at((first + second) / 2.0, 60)).alpha, 0) << first;
            EXPECT_EQ(pixel(at((first + second) / 2.0, 87)).alpha, 0) << first;
        }
    }
}

TEST(DynamicsDisplayPixels, RestingNeedlesLieFlatToTheRightAndSilentDotsFlatToTheLeft) {
    const UIImage image = display({{512, 340}, 4.0}, 1.0, 1.0, 0.0, 0.0);
    EXPECT_GT(test::pixelAt(image, {256.5 + 60.0, 233.5}).alpha, 150);
    EXPECT_EQ(test::pixelAt(image, {256.5 - 60.0, 233.5}).alpha, 0);
    EXPECT_GT(test::pixelAt(image, {256.0 - 87.0, 232.5}).alpha, 150);
    EXPECT_EQ(test::pixelAt(image, {256.0 + 87.0, 233.0}).alpha, 0);
}

TEST(DynamicsDisplayPixels, TheFirstNeedleLiesOnTop) {
    const test::Pixel both = test::pixelAt(display({{512, 340}, 2.0}, 0.5, 0.5, 0.0, 0.0), at(0.5, 60));
    EXPECT_GT(both.red, both.blue);
    EXPECT_GT(both.alpha, 200); // both show: 1 - 0.4 * 0.4
    EXPECT_LT(both.alpha, 225);
}

TEST(DynamicsDisplayPixels, AnIndicatorTurnedDownIsCutByTheClip) {
    const UIImage image = display({{512, 340}, 2.0}, 1.5, 0.0, 0.0, 0.0);
    EXPECT_GT(test::pixelAt(image, {256.5, 236.0}).alpha, 140); // below the hub, still within the dial
    EXPECT_GT(test::pixelAt(image, {256.5, 241.5}).alpha, 140);
    EXPECT_EQ(test::pixelAt(image, {256.5, 242.5}).alpha, 0);
    EXPECT_EQ(test::pixelAt(image, {256.5, 280.0}).alpha, 0);
}

TEST(DynamicsDisplayPixels, ThereIsNoBackground) {
    const UIImage image = display({{512, 340}, 1.0}, 1.0, 1.0, 0.0, 0.0);
    EXPECT_LT(test::inkedPixels(image), 800U);
    EXPECT_EQ(image.pixel(0, 0), 0U);
}

TEST(DynamicsDisplayPixels, ValuesThatAreNotFiniteHideTheirIndicatorOnly) {
    const double nan = std::nan("");
    const UIImage image = display({{512, 340}, 2.0}, nan, 0.25, INFINITY, 0.75);
    EXPECT_TRUE(isSecond(test::pixelAt(image, at(0.25, 60))));
    EXPECT_TRUE(isSecond(test::pixelAt(image, at(0.75, 87, {256.0, 233.02}))));
    const UIImage rest = display({{512, 340}, 2.0}, nan, nan, nan, nan);
    EXPECT_EQ(test::inkedPixels(rest), 0U);
}

} // namespace
