// Contrast, brightness, freezing, and the banner.
#include "EditorFixture.h"

#include <cmath>

namespace {

using namespace qor; // NOLINT(google-build-using-namespace): the system under test

class EditorAppearance : public test::Editor {};

} // namespace

TEST_F(EditorAppearance, TheContrastButtonShowsTheSliderAndLocksTheGestures) {
    load();
    UIButton& button = *controller->contrastButton;
    controller->onContrastButton(button);
    EXPECT_FALSE(controller->brightnessSlider->isHidden());
    EXPECT_EQ(button.alpha(), 1.0);
    EXPECT_TRUE(controller->touchesLocked);
    controller->onContrastButton(button);
    EXPECT_TRUE(controller->brightnessSlider->isHidden());
    EXPECT_EQ(button.alpha(), 0.5);
    EXPECT_FALSE(controller->touchesLocked);
}

TEST_F(EditorAppearance, TheBrightnessSliderColoursAllThreeLayers) {
    load();
    controller->brightnessSlider->setValue(0.25F);
    headless.settle();
    controller->onBrightnessSlider(*controller->brightnessSlider);
    EXPECT_TRUE(controller->touchesLocked);
    EXPECT_EQ(controller->pluginFrame->contrast, 0.25F);
    EXPECT_TRUE(controller->pluginFrame->needsDisplay());
    EXPECT_EQ(controller->mainView->baseClass->colorMain, UIColor(0.75, 0.75, 0.75, 1.0));
    EXPECT_EQ(controller->displayView->baseClass->colorMain, UIColor(0.75, 0.75, 0.75, 1.0));
}

TEST_F(EditorAppearance, TheFreezeButtonIsBrightWhenFrozen) {
    load();
    UIButton& button = *controller->freezeButton;
    controller->onFreezeButton(button);
    EXPECT_FALSE(controller->isSizeable);
    EXPECT_EQ(button.alpha(), 1.0);
    controller->onFreezeButton(button);
    EXPECT_TRUE(controller->isSizeable);
    EXPECT_EQ(button.alpha(), 0.5);
}

TEST_F(EditorAppearance, TheBannerGrowsAndGoesAgain) {
    connect();
    const double frame = static_cast<double>(0.009F);
    controller->showInfo("Hello");
    EXPECT_EQ(controller->infoMessage->text(), "Hello");
    EXPECT_FALSE(controller->infoView->isHidden());
    EXPECT_EQ(controller->infoView->alpha(), 0.0);
    headless.run(32.5 * frame); // the 32nd tick shows the value of frame 31
    const double v = static_cast<double>(1.0F - powf(2.0F, -10.0F * (31.0F / 320.0F)));
    EXPECT_EQ(controller->infoView->alpha(), v);
    EXPECT_EQ(controller->infoView->transform(), CGAffineTransformMakeScale(v, v));
    headless.run(289.0 * frame); // 321 ticks in all
    EXPECT_GT(controller->infoView->alpha(), 0.99);
    headless.run(109.0 * frame); // the 109th tick shows frame 108 of the 120 back
    const float from = 1.0F - powf(2.0F, -10.0F * (319.0F / 320.0F)); // the last frame shown
    const double back =
        static_cast<double>(from + (0.0F - from) * powf(2.0F, 10.0F * (108.0F / 120.0F - 1.0F)));
    EXPECT_NEAR(controller->infoView->alpha(), back, 1e-6);
    EXPECT_EQ(controller->infoView->transform(),
              CGAffineTransformMakeScale(controller->infoView->alpha(), controller->infoView->alpha()));
    headless.run(10.0 * frame);
    EXPECT_FALSE(controller->infoView->isHidden());
    EXPECT_EQ(controller->infoMessage->text(), "Hello");
    headless.run(3.0 * frame);
    EXPECT_TRUE(controller->infoView->isHidden());
    EXPECT_EQ(controller->infoMessage->text(), "");
    EXPECT_EQ(headless.loop().timerCount(), 1u); // the meters' alone
}
