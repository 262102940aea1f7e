#include "EditorFixture.h"

#include "interface/PanelScene.h"
#include "support/Pixels.h"

#include <cmath>

namespace {

using namespace qor; // NOLINT(google-build-using-namespace): the system under test
using Peer = AudioUnitViewControllerPeer;

class EditorLayout : public test::Editor {
protected:
    CGRect panel() const { return controller->pluginView->frame(); }
    void pinchTo(double scale) {
        // fingers 100 points apart, off the hotspots
        headless.down({.x = 200.0, .y = 10.0}, 1);
        headless.down({.x = 300.0, .y = 10.0}, 2);
        headless.move({.x = 200.0 + 100.0 * scale, .y = 10.0}, 2);
    }
    void release() {
        headless.up({.x = 300.0, .y = 10.0}, 2);
        headless.up({.x = 200.0, .y = 10.0}, 1);
    }
};

void expectRect(const CGRect& actual, const CGRect& expected) {
    EXPECT_NEAR(actual.origin.x, expected.origin.x, 1e-9);
    EXPECT_NEAR(actual.origin.y, expected.origin.y, 1e-9);
    EXPECT_NEAR(actual.size.width, expected.size.width, 1e-9);
    EXPECT_NEAR(actual.size.height, expected.size.height, 1e-9);
}

constexpr CGPoint kThreshold{.x = 329.0, .y = 94.0};
constexpr CGPoint kFree{.x = 5.0, .y = 5.0};

} // namespace

TEST_F(EditorLayout, AWindowOf512By340IsFilledExactly) {
    load();
    EXPECT_EQ(panel(), CGRectMake(0.0, 0.0, 512.0, 340.0));
}

TEST_F(EditorLayout, ThePanelTakesTouchesAtExactly512By340AndBackAgainFromAnotherSize) {
    load();
    EXPECT_EQ(controller->mainView->baseClass->viewScale, (CGSize{.width = 1.0, .height = 1.0}));
    headless.resize({.width = 1024.0, .height = 680.0});
    EXPECT_EQ(controller->mainView->baseClass->viewScale, (CGSize{.width = 2.0, .height = 2.0}));
    headless.resize({.width = 512.0, .height = 340.0});
    EXPECT_EQ(panel(), CGRectMake(0.0, 0.0, 512.0, 340.0));
    EXPECT_EQ(controller->mainView->baseClass->viewScale, (CGSize{.width = 1.0, .height = 1.0}));
    headless.down(kThreshold);
    EXPECT_TRUE(controller->mainView->baseClass->isThresholdActive);
}

TEST_F(EditorLayout, ASquareWindowTakesTheFullWidth) {
    load();
    headless.resize({.width = 300.0, .height = 300.0});
    EXPECT_EQ(panel(), CGRectMake(0.0, 50.390625, 300.0, 199.21875));
}

TEST_F(EditorLayout, AWideWindowTakesTheFullHeight) {
    load();
    headless.resize({.width = 400.0, .height = 100.0});
    const double width = 100.0 / 0.6640625;
    EXPECT_EQ(panel(), CGRectMake(200.0 - width * 0.5, 0.0, width, 100.0));
    EXPECT_NEAR(panel().origin.x, 124.705882, 1e-6);
    EXPECT_NEAR(panel().size.width, 150.588235, 1e-6);
}

TEST_F(EditorLayout, TheEditorsPictureIsThatOfTheScene) {
    load();
    PanelScene scene;
    for (const CGSize& size :
         {CGSizeMake(1024.0, 340.0), CGSizeMake(256.0, 400.0), CGSizeMake(512.0, 340.0)}) {
        headless.resize(size);
        const UIImage editor = headless.picture();
        const UIImage alone =
            test::drawn(size, 1.0, [&](CGContext&) { scene.draw({.origin = {}, .size = size}); });
        std::size_t different = 0;
        for (std::size_t i = 0; i < alone.pixels().size(); ++i) {
            const test::Pixel a = test::pixelOf(editor.pixels()[i]);
            const test::Pixel b = test::pixelOf(alone.pixels()[i]);
            // The editor joins layers of eight bits, and its surface is a thousandth of a point taller.
            const auto off = [](int x, int y) { return std::abs(x - y) > 8; };
            different += off(a.red, b.red) || off(a.blue, b.blue) || off(a.alpha, b.alpha) ? 1 : 0;
        }
        EXPECT_EQ(different, 0U) << size.width;
    }
}

TEST_F(EditorLayout, AWindowNotWideEnoughIsOverhungEquallyAtBothSides) {
    load();
    headless.resize({.width = 120.0, .height = 100.0});
    EXPECT_NEAR(panel().origin.x, -15.294117, 1e-6);
    EXPECT_NEAR(panel().origin.x + panel().size.width, 135.294117, 1e-6);
}

TEST_F(EditorLayout, InsetsFollowTheTableWithItsOmissions) {
    load();
    headless.resize({.width = 400.0, .height = 100.0});
    controller->resetpluginView(400.0, 100.0, 10.0);
    expectRect(panel(), CGRectMake(200.0 - (80.0 / 0.6640625) * 0.5 + 10.0, 10.0, 80.0 / 0.6640625, 80.0));
    controller->fitToHeight = false;
    controller->resetpluginView(400.0, 100.0, 10.0);
    expectRect(panel(), CGRectMake(10.0, 50.0 - 380.0 * 0.6640625 * 0.5, 380.0, 380.0 * 0.6640625));
    controller->fitToHeight = true;
    controller->resetpluginView(100.0, 400.0, 10.0); // the bounds stay those of the root view
    expectRect(panel(), CGRectMake(10.0, 50.0 - 80.0 * 0.6640625 * 0.5, 80.0, 80.0 * 0.6640625));
}

TEST_F(EditorLayout, APanOnFreeGroundMovesThePanelWithoutLimits) {
    load();
    headless.down(kFree);
    headless.move({.x = 105.0, .y = 25.0});
    EXPECT_TRUE(Peer::lockAutoLayout(*controller));
    EXPECT_EQ(panel(), CGRectMake(100.0, 20.0, 512.0, 340.0));
    controller->view()->setNeedsLayout(); // a pass during the pan doesn't refit
    headless.settle();
    EXPECT_EQ(panel().origin.x, 100.0);
    headless.move({.x = 2005.0, .y = 25.0});
    headless.up({.x = 2005.0, .y = 25.0});
    EXPECT_EQ(panel(), CGRectMake(2000.0, 20.0, 512.0, 340.0));
    EXPECT_FALSE(Peer::lockAutoLayout(*controller));
    EXPECT_EQ(Peer::controlFrame(*controller), panel());
}

TEST_F(EditorLayout, APanDuringAKnobDragDoesNothingAndAPinchScales) {
    connect();
    headless.down(kThreshold, 1);
    headless.move({.x = 329.0, .y = 60.0}, 1);
    EXPECT_EQ(panel(), CGRectMake(0.0, 0.0, 512.0, 340.0));
    EXPECT_TRUE(controller->touchesLocked);
    headless.wheel(kThreshold, -1.0, UIKeyModifierControl);
    EXPECT_FALSE(controller->touchesLocked);
    EXPECT_NEAR(panel().size.width, 512.0 / 1.1, 1e-9);
    headless.up({.x = 329.0, .y = 60.0}, 1);
}

TEST_F(EditorLayout, APanThatEndsWhileLockedDoesNothing) {
    load();
    headless.down(kFree);
    headless.move({.x = 55.0, .y = 5.0});
    const CGRect moved = panel();
    controller->touchesLocked = true;
    Peer::controlFrame(*controller) = CGRectMake(1.0, 2.0, 3.0, 4.0);
    headless.move({.x = 95.0, .y = 5.0});
    EXPECT_EQ(panel(), moved);
    controller->onPanGesture(*controller->panGesture);
    EXPECT_TRUE(Peer::lockAutoLayout(*controller));
    EXPECT_EQ(Peer::controlFrame(*controller), CGRectMake(1.0, 2.0, 3.0, 4.0));
}

TEST_F(EditorLayout, ACancelledPanUnlocksToo) {
    load();
    headless.down(kFree);
    headless.move({.x = 55.0, .y = 5.0});
    headless.cancel();
    EXPECT_FALSE(Peer::lockAutoLayout(*controller));
    EXPECT_EQ(Peer::controlFrame(*controller), panel());
}

TEST_F(EditorLayout, APinchScalesAboutTheCentreAndStopsAtItsLimits) {
    load();
    headless.resize({.width = 1024.0, .height = 680.0});
    pinchTo(0.5);
    expectRect(panel(), CGRectMake(256.0, 170.0, 512.0, 340.0));
    headless.move({.x = 200.0 + 12.5, .y = 10.0}, 2); // 128 wide
    EXPECT_EQ(panel().size.width, 128.0);
    headless.move({.x = 200.0 + 12.49, .y = 10.0}, 2); // 127.9 wide
    EXPECT_EQ(panel().size.width, 128.0);
    headless.move({.x = 400.0, .y = 10.0}, 2); // 2048 wide
    EXPECT_EQ(panel().size.width, 2048.0);
    headless.move({.x = 400.01, .y = 10.0}, 2);
    EXPECT_EQ(panel().size.width, 2048.0);
    headless.move({.x = 300.0, .y = 10.0}, 2);
    EXPECT_EQ(panel().size.width, 1024.0);
    release();
    EXPECT_FALSE(Peer::lockAutoLayout(*controller));
    EXPECT_EQ(Peer::controlFrame(*controller), panel());
}

TEST_F(EditorLayout, APinchTo127Point9StaysAndTo128Goes) {
    load();
    pinchTo(0.3);
    const CGRect accepted = panel();
    EXPECT_NEAR(accepted.size.width, 153.6, 1e-9);
    headless.move({.x = 200.0 + 100.0 * 127.9 / 512.0, .y = 10.0}, 2);
    EXPECT_EQ(panel(), accepted);
    headless.move({.x = 200.0 + 100.0 * 0.25, .y = 10.0}, 2);
    EXPECT_EQ(panel().size.width, 128.0);
}

TEST_F(EditorLayout, ACancelledPinchKeepsTheFrameItBeganFrom) {
    load();
    pinchTo(0.5);
    headless.cancel();
    EXPECT_FALSE(Peer::lockAutoLayout(*controller));
    EXPECT_EQ(Peer::controlFrame(*controller), CGRectMake(0.0, 0.0, 512.0, 340.0));
}

TEST_F(EditorLayout, ALayoutPassAfterAPanPutsThePanelBack) {
    load();
    headless.drag(kFree, {.x = 105.0, .y = 25.0});
    headless.settle();
    EXPECT_EQ(panel().origin.x, 100.0); // nothing asked for a pass
    controller->view()->setNeedsLayout();
    headless.settle();
    EXPECT_EQ(panel(), CGRectMake(0.0, 0.0, 512.0, 340.0));
    headless.drag(kFree, {.x = 105.0, .y = 25.0});
    headless.resize({.width = 340.0, .height = 512.0}); // turned
    EXPECT_EQ(panel().origin.x, 0.0);
}

TEST_F(EditorLayout, ADoubleTapWhileFrozenRefitsAndStaysFrozen) {
    load();
    headless.drag(kFree, {.x = 105.0, .y = 25.0});
    controller->isSizeable = false;
    controller->touchesLocked = true;
    headless.run(1.0);
    headless.doubleClick({.x = 300.0, .y = 25.0});
    EXPECT_EQ(panel(), CGRectMake(0.0, 0.0, 512.0, 340.0));
    EXPECT_FALSE(controller->isSizeable);
    EXPECT_FALSE(controller->touchesLocked);
}

TEST_F(EditorLayout, FrozenIgnoresPanAndPinch) {
    load();
    controller->isSizeable = false;
    controller->touchesLocked = true;
    pinchTo(0.5);
    release();
    EXPECT_EQ(panel(), CGRectMake(0.0, 0.0, 512.0, 340.0));
    controller->touchesLocked = false;
    headless.drag(kFree, {.x = 105.0, .y = 25.0});
    EXPECT_EQ(panel(), CGRectMake(0.0, 0.0, 512.0, 340.0));
    // A frozen pinch doesn't even release the lock.
    controller->touchesLocked = true;
    controller->onPinchGesture(*controller->pinchGesture);
    EXPECT_TRUE(controller->touchesLocked);
}

TEST_F(EditorLayout, ATapClearsAStuckLockAndRecordsTheFrame) {
    load();
    headless.down(kFree);
    controller->touchesLocked = true;
    headless.up(kFree);
    EXPECT_FALSE(controller->touchesLocked);
    EXPECT_EQ(Peer::controlFrame(*controller), panel());
}

TEST_F(EditorLayout, ALongPressShowsAndHidesTheAppearanceControls) {
    load();
    const auto press = [&] {
        headless.down(kFree);
        headless.run(1.0);
    };
    EXPECT_TRUE(controller->contrastButton->isHidden());
    press();
    EXPECT_FALSE(controller->contrastButton->isHidden());
    EXPECT_FALSE(controller->freezeButton->isHidden());
    EXPECT_TRUE(controller->brightnessSlider->isHidden());
    EXPECT_TRUE(controller->touchesLocked);
    headless.up(kFree);
    EXPECT_FALSE(controller->touchesLocked);
    EXPECT_EQ(controller->contrastButton->alpha(), 1.0);
    controller->brightnessSlider->setHidden(false);
    press();
    EXPECT_TRUE(controller->contrastButton->isHidden());
    EXPECT_TRUE(controller->freezeButton->isHidden());
    EXPECT_TRUE(controller->brightnessSlider->isHidden());
    EXPECT_FALSE(controller->touchesLocked);
    headless.up(kFree);
}

TEST_F(EditorLayout, TheSpareHelpersMoveAndScaleWithLimitsOfTheirOwn) {
    const auto view = makeRef<UIView>();
    controller->doTranslationTransform(*view, CGRectMake(1.0, 2.0, 30.0, 40.0), {.x = 5.0, .y = 6.0});
    EXPECT_EQ(view->frame(), CGRectMake(6.0, 8.0, 30.0, 40.0));
    const CGRect origin = CGRectMake(0.0, 0.0, 512.0, 340.0);
    controller->doScalingTransform(*view, origin, 0.5);
    EXPECT_EQ(view->frame(), CGRectMake(128.0, 85.0, 256.0, 170.0));
    controller->doScalingTransform(*view, origin, 0.49);
    EXPECT_EQ(view->frame().size.width, 256.0);
    controller->doScalingTransform(*view, origin, 4.0);
    EXPECT_EQ(view->frame().size.width, 2048.0);
    controller->doScalingTransform(*view, origin, 4.01);
    EXPECT_EQ(view->frame().size.width, 2048.0);
}

using EditorLayoutDeathTest = EditorLayout;

TEST_F(EditorLayoutDeathTest, AnAbsentPanelOrControlEndsTheProcess) {
    load();
    Peer::currentView(*controller) = nullptr;
    constexpr auto kMessage = "Unexpectedly found nil while implicitly unwrapping an Optional value";
    EXPECT_DEATH(controller->centerpluginView(), kMessage);
    EXPECT_DEATH(controller->onTapGesture(*controller->tapGesture), kMessage);
    controller->contrastButton = nullptr;
    EXPECT_DEATH(controller->onlongPressGesture(*controller->longPressGesture), kMessage);
}
