#include "interface/PluginFrameEx.h"
#include "platform/draw/RecordingContext.h"
#include "support/Pixels.h"

#include <bit>
#include <cmath>
#include <gtest/gtest.h>

namespace qor {

// The plate's fields belong to its view alone; tests look at them through this.
struct PluginFramePeer {
    static double contrast(const PluginFrameBaseEx& base) { return base.contrast; }
    static UIColor mainColor(const PluginFrameBaseEx& base) { return base.mainColor; }
    static CGSize viewScale(const PluginFrameBaseEx& base) { return base.viewScale; }
    static const PluginFrameBaseEx& baseClass(const PluginFrameEx& view) { return *view.baseClass; }
};

} // namespace qor

using namespace qor;
using Peer = PluginFramePeer;
using Behaviour = PluginFrameBaseEx::ResizingBehavior;

namespace {

template <class Draw>
std::vector<std::string> recorded(Draw draw) {
    RecordingContext context;
    const GraphicsScope scope(context);
    draw();
    EXPECT_EQ(context.stateDepth(), 0U);
    return context.lines();
}

TEST(PluginFrame, StartsWithTheDefaultsOfBothObjects) {
    const PluginFrameEx view;
    EXPECT_EQ(std::bit_cast<std::uint32_t>(view.contrast), 0x3E19999AU);
    EXPECT_EQ(view.mainColor, UIColor::lightGrayColor());
    const PluginFrameBaseEx base;
    EXPECT_EQ(Peer::contrast(base), 0.25);
    EXPECT_EQ(Peer::mainColor(base), UIColor::lightGrayColor());
    EXPECT_EQ(Peer::viewScale(base), CGSizeMake(1, 1));
}

TEST(PluginFrame, ThePlateHasTheWidenedContrastAsItsGrey) {
    PluginFrameEx view;
    const auto lines = recorded([&] { view.draw(CGRectMake(0, 0, 512, 340)); });
    const double grey = 0.15F;
    EXPECT_NE(grey, 0.15);
    const std::string digits = text(grey);
    EXPECT_EQ(lines[3],
              "fill roundedRect 2 2 508 336 radius 4 color " + digits + " " + digits + " " + digits + " 1");
    EXPECT_EQ(Peer::contrast(Peer::baseClass(view)), grey);
}

TEST(PluginFrame, DrawingHandsContrastAndColourToTheBase) {
    PluginFrameEx view;
    view.contrast = 0.75F;
    view.mainColor = UIColor(1, 0, 0, 1);
    EXPECT_EQ(Peer::contrast(Peer::baseClass(view)), 0.25); // not before the drawing
    const auto lines = recorded([&] { view.draw(CGRectMake(0, 0, 10, 10)); });
    EXPECT_EQ(Peer::contrast(Peer::baseClass(view)), 0.75);
    EXPECT_EQ(Peer::mainColor(Peer::baseClass(view)), UIColor(1, 0, 0, 1));
    EXPECT_TRUE(lines[3].ends_with("color 0.75 0.75 0.75 1")) << lines[3];
}

TEST(PluginFrame, ContrastOutsideZeroToOneIsClippedByTheColour) {
    PluginFrameEx view;
    view.contrast = 7.0F;
    EXPECT_TRUE(recorded([&] { view.draw(CGRectMake(0, 0, 10, 10)); })[3].ends_with("color 1 1 1 1"));
    view.contrast = -1.0F;
    EXPECT_TRUE(recorded([&] { view.draw(CGRectMake(0, 0, 10, 10)); })[3].ends_with("color 0 0 0 1"));
}

TEST(PluginFrame, AFrameAtTheOriginKeepsTheScale) {
    PluginFrameEx view;
    recorded([&] { view.draw(CGRectMake(0, 0, 300, 200)); });
    EXPECT_EQ(Peer::viewScale(Peer::baseClass(view)), CGSizeMake(1, 1));
}

TEST(PluginFrame, AFrameElsewhereIsDrawnInItsPlaceAtScaleOne) {
    PluginFrameEx view;
    const auto lines = recorded([&] { view.draw(CGRectMake(30, 40, 300, 200)); });
    EXPECT_EQ(lines[1], "translate 30 40");
    EXPECT_EQ(lines[2], "scale 1 1");
    EXPECT_EQ(Peer::viewScale(Peer::baseClass(view)), CGSizeMake(1, 1));
}

TEST(PluginFrame, ARimOfTwoPointsStaysOpen) {
    PluginFrameEx view;
    view.contrast = 1.0F;
    for (const double scale : {1.0, 2.0, 3.0}) {
        const UIImage image =
            test::drawn({40, 30}, scale, [&](CGContext&) { view.draw(CGRectMake(0, 0, 40, 30)); });
        EXPECT_EQ(test::pixelAt(image, {20, 1.9}).alpha, 0);
        EXPECT_EQ(test::pixelAt(image, {20, 2.1}).alpha, 255);
        EXPECT_EQ(test::pixelAt(image, {20, 27.9}).alpha, 255);
        EXPECT_EQ(test::pixelAt(image, {20, 28.1}).alpha, 0);
        EXPECT_EQ(test::pixelAt(image, {1.9, 15}).alpha, 0);
        EXPECT_EQ(test::pixelAt(image, {37.9, 15}).alpha, 255);
        EXPECT_EQ(test::pixelAt(image, {38.1, 15}).alpha, 0);
        EXPECT_LT(test::pixelAt(image, {2.1, 2.1}).alpha, 128); // the corner is round
    }
}

TEST(PluginFrame, AFrameWithoutAreaDividesByZeroAndDrawsNothing) {
    PluginFrameBaseEx base;
    for (const CGRect frame : {CGRectZero, CGRectMake(10, 10, 0, 20), CGRectMake(10, 10, 20, 0),
                               CGRectMake(5, 5, 0, 0), CGRectMake(0, 0, 4, 20), CGRectMake(0, 0, 3, 3)}) {
        const UIImage image = test::drawn({40, 40}, 1.0, [&](CGContext&) { base.draw(frame); });
        EXPECT_EQ(test::inkedPixels(image), 0U);
    }
    test::drawn({40, 40}, 1.0, [&](CGContext&) { base.draw(CGRectMake(10, 10, 0, 20)); });
    EXPECT_TRUE(std::isnan(Peer::viewScale(base).width)); // 0 over 0
}

TEST(PluginFrame, FittingFollowsTheTableOfCases) {
    PluginFrameBaseEx base;
    const CGRect canvas = CGRectMake(0, 0, 100, 50);
    const CGRect target = CGRectMake(10, 10, 200, 50);
    EXPECT_EQ(Behaviour(Behaviour::aspectFit).apply(canvas, target, base), CGRectMake(60, 10, 100, 50));
    EXPECT_EQ(Peer::viewScale(base), CGSizeMake(1, 1));
    EXPECT_EQ(Behaviour(Behaviour::aspectFill).apply(canvas, target, base), CGRectMake(10, -15, 200, 100));
    EXPECT_EQ(Peer::viewScale(base), CGSizeMake(2, 2));
    EXPECT_EQ(Behaviour(Behaviour::stretch).apply(canvas, target, base), target);
    EXPECT_EQ(Peer::viewScale(base), CGSizeMake(2, 1));
    EXPECT_EQ(Behaviour(Behaviour::center).apply(canvas, target, base), CGRectMake(60, 10, 100, 50));
    EXPECT_EQ(Peer::viewScale(base), CGSizeMake(1, 1));
    EXPECT_EQ(Behaviour(Behaviour::stretch).apply(canvas, CGRectZero, base), canvas);
    EXPECT_FALSE(Behaviour::initRawValue(-1));
    EXPECT_FALSE(Behaviour::initRawValue(4));
    EXPECT_EQ(Behaviour::initRawValue(2)->rawValue, Behaviour::stretch);
}

TEST(PluginFrameDeathTest, DrawingWithoutAContextEndsTheProcess) {
    PluginFrameBaseEx base;
    EXPECT_DEATH(base.draw(), "Unexpectedly found nil while unwrapping an Optional value");
}

} // namespace
