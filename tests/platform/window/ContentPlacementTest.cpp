#include "platform/window/ContentPlacement.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

ContentRules panelRules(double scale = 1.0) {
    return {.scale = scale, .minimum = {.width = 256.0, .height = 170.0}, .aspect = 512.0 / 340.0};
}

TEST(ContentPlacement, FillsAWindowOfItsAspect) {
    const ContentPlacement placed = placeContent(512, 340, panelRules());
    EXPECT_EQ(placed.x, 0);
    EXPECT_EQ(placed.y, 0);
    EXPECT_EQ(placed.points, (CGSize{512.0, 340.0}));
    EXPECT_EQ(placed.scale, 1.0);
}

TEST(ContentPlacement, HasPointsOfSeveralPixels) {
    const ContentPlacement placed = placeContent(1024, 680, panelRules(2.0));
    EXPECT_EQ(placed.points, (CGSize{512.0, 340.0}));
    EXPECT_EQ(placed.pointAt(100.0, 50.0), (CGPoint{50.0, 25.0}));
}

TEST(ContentPlacement, HasBarsAtTheSidesOfAWideWindow) {
    const ContentPlacement placed = placeContent(1000, 340, panelRules());
    EXPECT_EQ(placed.width, 512);
    EXPECT_EQ(placed.height, 340);
    EXPECT_EQ(placed.x, 244);
    EXPECT_EQ(placed.y, 0);
    EXPECT_EQ(placed.pointAt(244.0, 0.0), (CGPoint{0.0, 0.0}));
}

TEST(ContentPlacement, HasBarsAboveAndBelowInAHighWindow) {
    const ContentPlacement placed = placeContent(512, 600, panelRules());
    EXPECT_EQ(placed.width, 512);
    EXPECT_EQ(placed.height, 340);
    EXPECT_EQ(placed.y, 130);
}

TEST(ContentPlacement, HasNoBarsForTheRoundingOfASize) {
    for (int width = 300; width < 1200; ++width) {
        const int height = static_cast<int>(width * 340.0 / 512.0);
        const ContentPlacement placed = placeContent(width, height, panelRules());
        ASSERT_EQ(placed.width, width);
        ASSERT_EQ(placed.height, height);
    }
}

TEST(ContentPlacement, ShrinksBelowItsMinimumInsteadOfBeingCut) {
    const ContentPlacement placed = placeContent(128, 85, panelRules());
    EXPECT_EQ(placed.scale, 0.5);
    EXPECT_EQ(placed.points, (CGSize{256.0, 170.0}));
    EXPECT_EQ(placed.pointAt(64.0, 42.5), (CGPoint{128.0, 85.0}));
}

TEST(ContentPlacement, TakesAnyShapeWithoutAnAspect) {
    const ContentPlacement placed = placeContent(900, 100, {.scale = 1.0});
    EXPECT_EQ(placed.points, (CGSize{900.0, 100.0}));
}

TEST(ContentPlacement, SurvivesAWindowWithoutSize) {
    const ContentPlacement placed = placeContent(0, 0, panelRules());
    EXPECT_EQ(placed.width, 1);
    EXPECT_EQ(placed.height, 1);
    EXPECT_GT(placed.scale, 0.0);
}

} // namespace
} // namespace platform
