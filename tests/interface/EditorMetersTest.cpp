// When the needles are fed, and with what.
#include "EditorFixture.h"

namespace {

using namespace qor; // NOLINT(google-build-using-namespace): the system under test

class EditorMeters : public test::Editor {};

} // namespace

TEST_F(EditorMeters, TheMetersAreReadEveryFortyMillisecondsUnscaled) {
    connect();
    controller->displayView->baseClass->value1 = 0.25;
    controller->displayView->baseClass->value3 = 0.75;
    headless.run(0.045);
    EXPECT_EQ(controller->displayView->baseClass->value1, static_cast<double>(unit->getDynamicsValue1()));
    EXPECT_EQ(controller->displayView->baseClass->value2, static_cast<double>(unit->getDynamicsValue2()));
    EXPECT_EQ(controller->displayView->baseClass->value3, static_cast<double>(unit->getPeakValue1()));
    EXPECT_EQ(controller->displayView->baseClass->value4, static_cast<double>(unit->getPeakValue2()));
}

TEST_F(EditorMeters, BypassFreezesTheMetersAndLetsThemGoOn) {
    connect();
    const auto tick = [&] {
        controller->displayView->baseClass->value3 = 0.75;
        headless.run(0.05);
        return controller->displayView->baseClass->value3 != 0.75;
    };
    EXPECT_TRUE(tick());
    unit->setParameter(7, 1.0F);
    EXPECT_FALSE(tick());
    unit->setParameter(7, 0.5F);
    EXPECT_FALSE(tick());
    unit->setParameter(7, 0.0F);
    EXPECT_TRUE(tick());
    unit->setShouldBypassEffect(true);
    EXPECT_FALSE(tick());
    unit->setShouldBypassEffect(false);
    EXPECT_TRUE(tick());
}

TEST_F(EditorMeters, AMovedAwayOrHiddenEditorStopsItsMeters) {
    connect();
    const auto tick = [&] {
        controller->displayView->baseClass->value3 = 0.75;
        headless.run(0.05);
        return controller->displayView->baseClass->value3 != 0.75;
    };
    controller->pluginView->setFrame(CGRectMake(512.0, 0.0, 512.0, 340.0));
    EXPECT_FALSE(tick());
    controller->pluginView->setFrame(CGRectMake(511.0, 0.0, 512.0, 340.0));
    EXPECT_TRUE(tick());
    controller->pluginView->setHidden(true);
    EXPECT_FALSE(tick());
    controller->pluginView->setHidden(false);
    headless.window().setHidden(true); // the topmost view's own flag isn't looked at
    EXPECT_TRUE(tick());
    headless.window().setHidden(false);
    headless.window().setRootView(nullptr);
    EXPECT_FALSE(tick());
}

TEST_F(EditorMeters, ASilentEditorDrawsNothingAndMusicDrawsTheNeedlesAlone) {
    connect();
    headless.run(1.0);
    const auto surface = controller->mainView->drawCount();
    const auto plate = controller->pluginFrame->drawCount();
    const auto needles = controller->displayView->drawCount();
    const auto passes = headless.displayPasses();
    headless.run(10.0);
    EXPECT_EQ(headless.displayPasses(), passes);
    EXPECT_EQ(controller->displayView->drawCount(), needles);
    controller->displayView->setOutputValues(0.5F, 0.25F); // a reading that the next tick replaces
    headless.settle();
    headless.run(0.05);
    EXPECT_EQ(controller->displayView->drawCount(), needles + 2);
    EXPECT_EQ(controller->mainView->drawCount(), surface);
    EXPECT_EQ(controller->pluginFrame->drawCount(), plate);
}
