#include "interface/QORLimiterViewBase.h"
#include "platform/draw/TextBlock.h"
#include "support/Pixels.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

using namespace qor;

namespace {

// Canvas units to points of a view, by aspect fit.
struct Fit {
    CGSize view;
    CGPoint operator()(const CGPoint& canvas) const {
        const double factor = std::min(view.width / 512.0, view.height / 340.0);
        return {.x = (view.width - 512.0 * factor) / 2.0 + canvas.x * factor,
                .y = (view.height - 340.0 * factor) / 2.0 + canvas.y * factor};
    }
};

CGPoint turned(const CGPoint& pivot, double degrees, double length) {
    const double angle = degrees * std::numbers::pi / 180.0;
    return {.x = pivot.x + length * std::sin(angle), .y = pivot.y - length * std::cos(angle)};
}

// A point of a knob's canvas, with the knob at `centre`.
CGPoint onKnob(const CGPoint& centre, double scale, const CGPoint& canvas) {
    return {.x = centre.x + (canvas.x - 45.0) * scale, .y = centre.y + (canvas.y - 45.0) * scale};
}

UIImage panel(QORLimiterViewBase& base, const CGSize& view, double scale) {
    return test::drawn(view, scale, [&](CGContext&) { base.drawMain({.origin = {}, .size = view}); });
}

struct Surface {
    CGSize view;
    double scale;
};

const Surface kSurfaces[] = {{{512, 340}, 1.0},  {{512, 340}, 2.0}, {{1024, 680}, 1.0}, {{1024, 340}, 1.5},
                             {{700, 700}, 1.25}, {{640, 425}, 3.0}, {{900, 300}, 2.0}};

struct KnobCase {
    double QORLimiterViewBase::*value;
    bool QORLimiterViewBase::*active;
    CGPoint centre;
};

const KnobCase kKnobs[] = {
    {&QORLimiterViewBase::valueAttack, &QORLimiterViewBase::isAttackActive, {83, 94}},
    {&QORLimiterViewBase::valueRelease, &QORLimiterViewBase::isReleaseActive, {182, 94}},
    {&QORLimiterViewBase::valueThreshold, &QORLimiterViewBase::isThresholdActive, {329, 94}},
    {&QORLimiterViewBase::valueRatio, &QORLimiterViewBase::isRatioActive, {428, 94}},
    {&QORLimiterViewBase::valueGain, &QORLimiterViewBase::isGainActive, {83.5, 201.5}},
    {&QORLimiterViewBase::valueMix, &QORLimiterViewBase::isMixActive, {428.5, 201.5}},
};

TEST(LimiterViewPixels, EveryPointerPointsWhereItsValueSaysAtEverySizeAndScale) {
    const double values[] = {0.0, 0.1, 0.25, 0.5, 0.6, 0.85, 1.0};
    for (const Surface& surface : kSurfaces) {
        for (std::size_t round = 0; round < std::size(values); ++round) {
            QORLimiterViewBase base;
            std::size_t next = round;
            for (const KnobCase& knob : kKnobs) {
                base.*knob.value = values[next++ % std::size(values)];
            }
            const UIImage image = panel(base, surface.view, surface.scale);
            const Fit fit{surface.view};
            next = round;
            for (const KnobCase& knob : kKnobs) {
                const double degrees = (2.0 * values[next++ % std::size(values)] - 1.0) * 145.0;
                const CGPoint pivot = {46.0, 45.5};
                const CGPoint on = onKnob(knob.centre, 1.1, turned(pivot, degrees, 16.0));
                const CGPoint off = onKnob(knob.centre, 1.1, turned(pivot, degrees + 180.0, 10.0));
                EXPECT_GT(test::pixelAt(image, fit(on)).alpha, 200)
                    << degrees << " at scale " << surface.scale;
                EXPECT_EQ(test::pixelAt(image, fit(off)).alpha, 0)
                    << degrees << " at scale " << surface.scale;
            }
        }
    }
}

TEST(LimiterViewPixels, AnActiveKnobIsOneAndAHalfTimesItsSizeAboutItsCentre) {
    for (const KnobCase& knob : kKnobs) {
        for (const bool active : {false, true}) {
            QORLimiterViewBase base;
            base.*knob.active = active;
            const UIImage image = panel(base, {512, 340}, 2.0);
            const double scale = active ? 1.5 : 1.1;
            for (const double degrees : {90.0, 180.0, 270.0}) {
                const CGPoint ring = turned({46.0, 44.5}, degrees, 25.0);
                EXPECT_GT(test::pixelAt(image, onKnob(knob.centre, scale, ring)).alpha, 200) << degrees;
            }
            const CGPoint otherRing =
                onKnob(knob.centre, active ? 1.1 : 1.5, turned({46.0, 44.5}, 270.0, 25.0));
            EXPECT_EQ(test::pixelAt(image, otherRing).alpha, 0);
        }
    }
}

TEST(LimiterViewPixels, EndStopDotsLieBelowTheRing) {
    QORLimiterViewBase base;
    const UIImage image = panel(base, {1024, 680}, 1.0);
    const Fit fit{{1024, 680}};
    for (const KnobCase& knob : kKnobs) {
        EXPECT_EQ(test::pixelAt(image, fit(onKnob(knob.centre, 1.1, {26.0, 73.5}))).alpha, 255);
        EXPECT_EQ(test::pixelAt(image, fit(onKnob(knob.centre, 1.1, {66.0, 73.5}))).alpha, 255);
    }
}

TEST(LimiterViewPixels, TheThresholdNeedleFollowsItsValueOverHalfATurn) {
    for (const Surface& surface : kSurfaces) {
        for (const double value : {0.1, 0.25, 0.4, 0.5, 0.7, 0.9}) {
            QORLimiterViewBase base;
            base.valueThreshold = value;
            const UIImage image = panel(base, surface.view, surface.scale);
            const CGPoint pivot = {153.0 + 103.5, 136.0 + 97.5};
            const CGPoint on = turned(pivot, (2.0 * value - 1.0) * 90.0, 60.0);
            const CGPoint off = turned(pivot, (2.0 * value - 1.0) * 90.0 + 12.0, 60.0);
            const Fit fit{surface.view};
            EXPECT_NEAR(test::pixelAt(image, fit(on)).alpha, 51, 2) << value; // alpha 0.2
            EXPECT_EQ(test::pixelAt(image, fit(off)).alpha, 0) << value;
        }
    }
}

TEST(LimiterViewPixels, TheNeedleStaysWhileTheThresholdKnobIsActive) {
    QORLimiterViewBase base;
    base.valueThreshold = 0.35;
    const UIImage resting = panel(base, {512, 340}, 2.0);
    base.isThresholdActive = true;
    const UIImage active = panel(base, {512, 340}, 2.0);
    for (int y = 2 * 165; y < 2 * 240; ++y) { // the dial below the enlarged knob's reach
        for (int x = 2 * 153; x < 2 * 359; ++x) {
            ASSERT_EQ(resting.pixel(x, y), active.pixel(x, y)) << x << " " << y;
        }
    }
}

TEST(LimiterViewPixels, TheMeterValuesChangeNoPixel) {
    QORLimiterViewBase base;
    const UIImage before = panel(base, {512, 340}, 1.0);
    base.value1 = 0.2;
    base.value2 = -3.0;
    EXPECT_EQ(panel(base, {512, 340}, 1.0).pixels(), before.pixels());
}

TEST(LimiterViewPixels, TheFrameAndTheBaseLineAreSharpAtScaleOne) {
    QORLimiterViewBase base;
    const UIImage image = panel(base, {512, 340}, 1.0);
    const int frame[] = {0, 255, 255, 255,
                         0}; // rows 17 to 21 above the middle of the panel: 18 to 20 are the line
    for (int row = 0; row < 5; ++row) {
        EXPECT_EQ(test::pixelOf(image.pixel(256, 17 + row)).alpha, frame[row]) << row;
        EXPECT_EQ(test::pixelOf(image.pixel(14 + row, 170)).alpha, frame[row]) << row;
    }
    const int line[] = {0, 255, 255, 0}; // rows 237 to 240 right of the arc's foot
    for (int row = 0; row < 4; ++row) {
        EXPECT_EQ(test::pixelOf(image.pixel(354, 237 + row)).alpha, line[row]) << row;
    }
}

TEST(LimiterViewPixels, TheArcIsDashed) {
    QORLimiterViewBase base;
    const UIImage image = panel(base, {512, 340}, 3.0);
    int changes = 0;
    bool last = false;
    for (int step = 0; step <= 900; ++step) { // along the left flank, from the base line up
        const double t = 0.5 * step / 900.0;
        const double u = 1.0 - t;
        const CGPoint at = {
            153.0 + u * u * u * 9 + 3 * u * u * t * 9 + 3 * u * t * t * 35.55 + t * t * t * 72.55,
            136.0 + u * u * u * 103 + 3 * u * u * t * 59.31 + 3 * u * t * t * 22.16 + t * t * t * 8.55};
        const bool ink = test::pixelAt(image, at).alpha > 128;
        changes += step > 0 && ink != last ? 1 : 0;
        last = ink;
    }
    EXPECT_GT(changes, 15);
}

TEST(LimiterViewPixels, TheButtonsAreSqueezedToTheirFrames) {
    QORLimiterViewBase base;
    const UIImage image = panel(base, {512, 340}, 4.0);
    // The border's left edge at 3 of 86 units lies at 3 * 80 / 86 of the frame's 80.
    const double left = 87.9 + 1.1 * (-39.0 + 3.0 * 80.0 / 86.0);
    const double top = 283.86 + 1.1 * (-16.0 + 3.0 * 32.0 / 38.0);
    EXPECT_GT(test::pixelAt(image, {left, 283.86}).alpha, 200);
    EXPECT_GT(test::pixelAt(image, {87.9 - 30.0, top}).alpha, 200);
    EXPECT_EQ(test::pixelAt(image, {left - 2.0, 283.86}).alpha, 0);
    EXPECT_EQ(test::pixelAt(image, {87.9 - 30.0, top - 2.0}).alpha, 0);
}

// The ink of a text block that lies outside a height, centred on it.
double inkBeyond(std::string_view text, const UIFont& font, double height) {
    const TextBlock& block = laidOut({.text = text,
                                      .font = font,
                                      .width = 206.0,
                                      .alignment = NSTextAlignment::center,
                                      .lineBreakMode = NSLineBreakMode::wordWrapping});
    const CGRect ink = block.outline().bounds();
    const double top = CGRectGetMinY(ink) + (height - block.size().height) / 2.0;
    return std::max({0.0, -top, top + ink.size.height - height});
}

TEST(LimiterViewTexts, NoLabelOrValueIsCutAtItsRectangle) {
    for (const char* text :
         {"attack", "release", "threshold", "knee", "gain", "mix", "0", "50", "100", "-13"}) {
        EXPECT_LT(inkBeyond(text, UIFont::systemFontOfSize(10), 9.0), 0.05) << text;
    }
    EXPECT_EQ(inkBeyond("STEREO", *UIFont::fontWithName("HelveticaNeue-CondensedBold", 10), 23.0), 0.0);
    EXPECT_EQ(inkBeyond("QOR LIMITER", *UIFont::fontWithName("HelveticaNeue-CondensedBold", 22), 30.0), 0.0);
    EXPECT_EQ(inkBeyond("audition", *UIFont::fontWithName("HelveticaNeue", 12), 32.0), 0.0);
}

TEST(LimiterViewTexts, CaptionsStandInTheMiddleOfTheirRectangles) {
    QORLimiterViewBase base;
    const double scale = 4.0;
    const UIImage image = panel(base, {512, 340}, scale);
    struct Area {
        CGRect rect;
        int atLeast;        // alpha of the ink: the mode box has a ground of its own
        double withoutTail; // from here on no letter goes below the baseline: the Q does
    };
    for (const Area& area :
         {Area{CGRectMake(233, 66, 47, 19), 200, 0}, Area{CGRectMake(153, 267, 206, 30), 128, 213}}) {
        double left = 1e9, right = -1, top = 1e9, bottom = -1;
        for (int y = static_cast<int>(area.rect.origin.y * scale); y < CGRectGetMaxY(area.rect) * scale;
             ++y) {
            for (int x = static_cast<int>(area.rect.origin.x * scale); x < CGRectGetMaxX(area.rect) * scale;
                 ++x) {
                if (test::pixelOf(image.pixel(x, y)).alpha > area.atLeast) {
                    left = std::min<double>(left, x);
                    right = std::max<double>(right, x + 1);
                    if (x < area.withoutTail * scale) {
                        continue;
                    }
                    top = std::min<double>(top, y);
                    bottom = std::max<double>(bottom, y + 1);
                }
            }
        }
        EXPECT_NEAR((left + right) / 2.0 / scale, CGRectGetMidX(area.rect), 0.75);
        EXPECT_NEAR((top + bottom) / 2.0 / scale, CGRectGetMidY(area.rect), 0.75);
    }
}

TEST(LimiterViewPixels, AFrameWithoutAreaOrWithNaNDrawsNothingAndDoesNoHarm) {
    const double nan = std::nan("");
    QORLimiterViewBase base;
    for (const CGRect frame : {CGRectMake(0, 0, 0, 340), CGRectMake(0, 0, 512, 0), CGRectMake(0, 0, nan, nan),
                               CGRectMake(nan, 0, 512, 340), CGRectMake(5, 5, 0, 0)}) {
        const UIImage image = test::drawn({64, 64}, 1.0, [&](CGContext&) { base.drawMain(frame); });
        EXPECT_EQ(test::inkedPixels(image), 0U);
    }
}

} // namespace
