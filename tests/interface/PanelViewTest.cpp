#include "EditorFixture.h"

#include "interface/PanelCanvas.h"
#include "interface/PanelView.h"

#include <array>

namespace {

using namespace qor; // NOLINT(google-build-using-namespace): the system under test

/// The area around a view in the coordinates of another.
CGRect areaIn(const UIView& view, const UIView& other) {
    return view.convertRectToView(view.bounds(), other);
}

void expectNear(const CGRect& actual, const CGRect& expected) {
    EXPECT_NEAR(actual.origin.x, expected.origin.x, 1e-9);
    EXPECT_NEAR(actual.origin.y, expected.origin.y, 1e-9);
    EXPECT_NEAR(actual.size.width, expected.size.width, 1e-9);
    EXPECT_NEAR(actual.size.height, expected.size.height, 1e-9);
}

class PanelOfAnEditor : public test::Editor {};

TEST(PanelView, ShowsFramesInCanvasUnitsAtItsOwnSize) {
    const auto panel = makeRef<PanelView>(CGRectMake(0.0, 0.0, 512.0, 340.0));
    const auto child = makeRef<UIView>(CGRectMake(20.0, 30.0, 100.0, 40.0));
    panel->addSubview(child);
    for (const double scale : {1.0, 0.25, 3.0, 1.0}) { // the frame isn't used up by a pass
        panel->setFrame(CGRectMake(7.0, 9.0, 512.0 * scale, 340.0 * scale));
        panel->layoutIfNeeded();
        expectNear(child->frame(), CGRectMake(20.0 * scale, 30.0 * scale, 100.0 * scale, 40.0 * scale));
        EXPECT_EQ(child->bounds().size, CGSizeMake(100.0, 40.0));
    }
}

TEST(PanelView, LeavesConstrainedSubviewsToTheirConstraints) {
    const auto panel = makeRef<PanelView>(CGRectMake(0.0, 0.0, 1024.0, 680.0));
    const auto child = makeRef<UIView>();
    panel->addSubview(child);
    NSLayoutConstraint::activateConstraints(
        {child->leadingAnchor().constraintEqualToAnchor(panel->leadingAnchor()),
         child->trailingAnchor().constraintEqualToAnchor(panel->trailingAnchor())});
    panel->layoutIfNeeded();
    EXPECT_EQ(child->transform(), CGAffineTransformIdentity);
    EXPECT_EQ(child->frame().size.width, 1024.0);
}

TEST_F(PanelOfAnEditor, ItsControlsStayAboveThePanelsFrameLineAtEverySize) {
    load();
    for (const CGSize size :
         {CGSizeMake(512, 340), CGSizeMake(128, 85), CGSizeMake(300, 300), CGSizeMake(1536, 1020)}) {
        headless.resize(size);
        UIView& panel = *controller->pluginView;
        const double scale = panel.bounds().size.width / kPanelCanvas.size.width;
        const CGRect contrast = areaIn(*controller->contrastButton, panel);
        const CGRect slider = areaIn(*controller->brightnessSlider, panel);
        const CGRect freeze = areaIn(*controller->freezeButton, panel);
        for (const CGRect& area : {contrast, slider, freeze}) {
            EXPECT_GE(CGRectGetMinY(area), 2.0 * scale - 1e-9);  // on the plate
            EXPECT_LE(CGRectGetMaxY(area), 18.0 * scale + 1e-9); // the line's upper edge
        }
        EXPECT_LT(CGRectGetMaxX(contrast), CGRectGetMinX(slider));
        EXPECT_LT(CGRectGetMaxX(slider), CGRectGetMinX(freeze));
        EXPECT_NEAR(CGRectGetMinX(contrast), CGRectGetWidth(panel.bounds()) - CGRectGetMaxX(freeze), 1e-9);
    }
}

TEST_F(PanelOfAnEditor, TheBannerStandsInTheMiddleAndGrowsWithThePanel) {
    load();
    controller->infoView->setHidden(false);
    for (const double scale : {1.0, 0.5, 2.0}) {
        headless.resize(CGSizeMake(512.0 * scale, 340.0 * scale));
        expectNear(areaIn(*controller->infoView, *controller->pluginView),
                   CGRectMake(96.0 * scale, 148.0 * scale, 320.0 * scale, 44.0 * scale));
    }
}

TEST_F(PanelOfAnEditor, TheBannersPlaceTakesNoTouches) {
    connect();
    headless.down({.x = 256.0, .y = 170.0});
    EXPECT_TRUE(controller->touchesLocked); // by the dial below it
    headless.up({.x = 256.0, .y = 170.0});
}

} // namespace
