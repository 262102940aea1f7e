#include "EditorFixture.h"

#include <thread>

namespace {

using namespace qor; // NOLINT(google-build-using-namespace): the system under test
using Peer = AudioUnitViewControllerPeer;

class EditorController : public test::Editor {
protected:
    std::size_t observers() const { return unit->parameterTree()->parameterObserverCount(); }
    void forgetFirstObserver(AUParameterObserverToken token) {
        unit->parameterTree()->removeParameterObserver(token);
    }
};

constexpr auto kNil = "WARNING: The Audio unit is not initialized.";
constexpr auto kImplicit = "Unexpectedly found nil while implicitly unwrapping an Optional value";

} // namespace

TEST_F(EditorController, StartsWithTheInitialValuesOfItsFields) {
    EXPECT_EQ(controller->audioUnit(), nullptr);
    EXPECT_TRUE(controller->useObservers);
    EXPECT_FALSE(controller->touchesLocked);
    EXPECT_TRUE(controller->isSizeable);
    EXPECT_FALSE(Peer::lockAutoLayout(*controller));
    EXPECT_EQ(Peer::controlFrame(*controller), CGRectZero);
    EXPECT_EQ(controller->ratio, 340.0 / 512.0);
    EXPECT_TRUE(controller->fitToHeight);
    EXPECT_EQ(controller->reasonForQuestion, "");
    EXPECT_EQ(controller->reasonForImport, "");
    EXPECT_EQ(controller->parameterObserverToken(), 0u);
}

TEST_F(EditorController, LoadsItsViewAndWarnsOnceOfAMissingUnit) {
    load();
    EXPECT_EQ(lines(), std::vector<std::string>{
                           "AudioUnitViewController: WARNING: The audio unit plugin is nil (yet?)."});
    EXPECT_EQ(controller->mainView->delegate, controller);
    EXPECT_EQ(controller->mainView->viewController(), controller);
    EXPECT_EQ(Peer::currentView(*controller), controller->pluginView);
    EXPECT_FALSE(controller->pluginView->isHidden());
    EXPECT_EQ(Peer::timer(*controller)->timeInterval(), 0.04);
}

TEST_F(EditorController, RepeatsTheMissingUnitTwentyFiveTimesASecondUntilItComes) {
    load();
    log.clear();
    headless.run(1.02);
    EXPECT_EQ(count(kNil), 25u);
    controller->setAudioUnit(makeUnit());
    log.clear();
    headless.run(1.0);
    EXPECT_EQ(count(kNil), 0u);
}

TEST_F(EditorController, AUnitThatComesAfterTheViewIsConnectedOnce) {
    load();
    unit = makeUnit();
    headless.settle();
    log.clear();
    controller->setAudioUnit(unit);
    EXPECT_EQ(lines(), std::vector<std::string>{"AU Diagnostics: AUAudioUnit::didSet()"});
    EXPECT_EQ(observers(), 0u);
    headless.settle();
    EXPECT_EQ(observers(), 1u);
    const auto all = lines();
    ASSERT_GT(all.size(), 6u);
    EXPECT_EQ(all[1], "AU Diagnostics: We are about to connect the audio unit to its view controller.");
    EXPECT_TRUE(all[2].starts_with("Audio Unit's documents path is: /"));
    EXPECT_TRUE(all[3].starts_with("Audio Unit's resources path is: /"));
    EXPECT_EQ(all[4], "AU Diagnostics: Retriving parameters from the audio unit: ");
    EXPECT_EQ(all[5], "ExtensionViewController: Extracting at the parameter tree: ");
    EXPECT_EQ(count("AU Diagnostics: Connected parameters to the plugins interface."), 1u);
    EXPECT_EQ(Peer::parameters(*controller).size(), 12u); // the diagnostic pass doesn't count
    EXPECT_EQ(controller->mainView->baseClass->valueThreshold, static_cast<double>(0.8F));
    EXPECT_EQ(controller->mainView->baseClass->valueMix, 1.0);
    EXPECT_EQ(all.back(), "editor received parameter : address: 11, value: 1.0");
}

TEST_F(EditorController, AUnitThatComesBeforeTheViewIsConnectedIfTheViewLoadsBeforeTheTaskRuns) {
    unit = makeUnit();
    controller->setAudioUnit(unit);
    log.clear();
    controller->view();
    EXPECT_EQ(lines(), std::vector<std::string>{}); // the unit is there: no warning
    headless.show(controller->view());
    EXPECT_EQ(observers(), 1u);
}

TEST_F(EditorController, AUnitWhoseTaskRunsBeforeTheViewLoadsStaysUnconnected) {
    unit = makeUnit();
    controller->setAudioUnit(unit);
    headless.settle();
    EXPECT_TRUE(logged("AU Diagnostics: WARNING: Plugin view is not loaded."));
    load();
    headless.run(1.0);
    EXPECT_EQ(observers(), 0u);
    EXPECT_FALSE(logged("AU Diagnostics: We are about to connect the audio unit to its view controller."));
}

TEST_F(EditorController, AUnitAssignedTwiceIsObservedTwiceAndTheFirstTokenIsLost) {
    connect();
    const AUParameterObserverToken first = controller->parameterObserverToken();
    controller->setAudioUnit(unit);
    headless.settle();
    EXPECT_EQ(observers(), 2u);
    EXPECT_NE(controller->parameterObserverToken(), first);
    log.clear();
    unit->parameterTree()->parameterWithAddress(2)->setValue(0.25F);
    headless.settle();
    EXPECT_EQ(count("editor received parameter : address: 2, value: 0.25"), 2u);
    forgetFirstObserver(first);
}

TEST_F(EditorController, CreatesTheUnitAsTheHostsFactory) {
    load();
    auto made = controller->createAudioUnit(kQORLimiterComponent);
    ASSERT_TRUE(made);
    unit = controller->audioUnit();
    EXPECT_EQ(made.value(), unit);
    headless.settle();
    EXPECT_EQ(observers(), 1u);
}

TEST_F(EditorController, AParameterChangeReachesTheSurfaceByTheMainQueueFromAnyThread) {
    connect();
    std::thread([&] { unit->parameterTree()->parameterWithAddress(0)->setValue(0.75F); }).join();
    EXPECT_EQ(controller->mainView->baseClass->valueAttack, static_cast<double>(0.1F));
    headless.settle();
    EXPECT_EQ(controller->mainView->baseClass->valueAttack, 0.75);
}

TEST_F(EditorController, AChangeOfTheModeOnlyLogsOnTheSurface) {
    connect();
    const auto before = headless.recordedOperations();
    unit->parameterTree()->parameterWithAddress(6)->setValue(2.0F);
    headless.settle();
    EXPECT_EQ(lines(), std::vector<std::string>{"editor received parameter : address: 6, value: 2.0"});
    EXPECT_EQ(headless.recordedOperations(), before);
}

TEST_F(EditorController, ADragOnAKnobReachesTheUnitAndComesBack) {
    connect();
    unit->parameterTree()->parameterWithAddress(2)->setValue(0.5F);
    headless.settle();
    log.clear();
    headless.down({.x = 329.0, .y = 94.0});
    headless.move({.x = 329.0, .y = 74.0});
    EXPECT_EQ(unit->getParameter(2), static_cast<float>(0.5 - static_cast<double>(-20.0F / 2.0F / 100.0F)));
    headless.up({.x = 329.0, .y = 74.0});
    const std::string back = "editor received parameter : address: 2, value: " + text(unit->getParameter(2));
    EXPECT_EQ(lines(), (std::vector<std::string>{"threshold", back}));
}

TEST_F(EditorController, WithoutAUnitTheSurfacesChangesGoNowhere) {
    load();
    log.clear();
    controller->onQORLimiterViewParameter(2, 0.5F);
    controller->onQORLimiterViewOption(2, 0.5F);
    controller->updateView();
    EXPECT_TRUE(lines().empty());
}

TEST_F(EditorController, AnObserverWhoseControllerIsGoneSaysSo) {
    connect();
    const auto tree = unit->parameterTree();
    const AUParameterObserverToken token = controller->parameterObserverToken();
    const Weak<AudioUnitViewController> weak = controller;
    Peer::timer(*controller)->invalidate();
    controller->mainView->delegate = nullptr;
    controller->mainView->setViewController(nullptr);
    headless.window().setRootView(nullptr);
    controller = makeRef<AudioUnitViewController>();
    ASSERT_TRUE(weak.expired());
    log.clear();
    tree->parameterWithAddress(2)->setValue(0.5F);
    EXPECT_EQ(lines(), std::vector<std::string>{"AU Diagnostics: The strong self shit is nil."});
    tree->removeParameterObserver(token);
}

TEST_F(EditorController, ReadsAndWritesParametersByAddressAndLogsUnknownOnes) {
    EXPECT_EQ(controller->getParameter(2), 0.0F);
    connect();
    EXPECT_EQ(controller->getParameter(2), 0.8F);
    controller->setParameter(2, 0.25F);
    EXPECT_EQ(controller->getParameter(2), 0.25F);
    headless.settle();
    log.clear();
    EXPECT_EQ(controller->getParameter(99), 0.0F);
    controller->setParameter(-1, 0.5F);
    EXPECT_EQ(lines(), (std::vector<std::string>{
                           "AudioUnitViewController: ERROR: The parameter address 99 is not available.",
                           "AudioUnitViewController: ERROR: The parameter address -1 is not available."}));
}

TEST_F(EditorController, TheMetersAreReadEveryFortyMillisecondsUnscaled) {
    connect();
    controller->displayView->baseClass->value1 = 0.25;
    controller->displayView->baseClass->value3 = 0.75;
    headless.run(0.045);
    EXPECT_EQ(controller->displayView->baseClass->value1, static_cast<double>(unit->getDynamicsValue1()));
    EXPECT_EQ(controller->displayView->baseClass->value2, static_cast<double>(unit->getDynamicsValue2()));
    EXPECT_EQ(controller->displayView->baseClass->value3, static_cast<double>(unit->getPeakValue1()));
    EXPECT_EQ(controller->displayView->baseClass->value4, static_cast<double>(unit->getPeakValue2()));
}

TEST_F(EditorController, BypassFreezesTheMetersAndLetsThemGoOn) {
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

TEST_F(EditorController, AMovedAwayOrHiddenEditorStopsItsMeters) {
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

TEST_F(EditorController, ASilentEditorDrawsNothingAndMusicDrawsTheNeedlesAlone) {
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

TEST_F(EditorController, TheContrastButtonShowsTheSliderAndLocksTheGestures) {
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

TEST_F(EditorController, TheBrightnessSliderColoursAllThreeLayers) {
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

TEST_F(EditorController, TheFreezeButtonIsBrightWhenFrozen) {
    load();
    UIButton& button = *controller->freezeButton;
    controller->onFreezeButton(button);
    EXPECT_FALSE(controller->isSizeable);
    EXPECT_EQ(button.alpha(), 1.0);
    controller->onFreezeButton(button);
    EXPECT_TRUE(controller->isSizeable);
    EXPECT_EQ(button.alpha(), 0.5);
}

TEST_F(EditorController, TheBannerGrowsAndGoesAgain) {
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

TEST_F(EditorController, WithoutAUnitThePathsAreNotLooked) {
    controller->setPaths();
    EXPECT_EQ(lines(), std::vector<std::string>{"Error: could not set paths, audio unit is nil."});
}

TEST_F(EditorController, ItsLayoutIsSound) {
    const auto layout = test::editorLayout();
    const auto checked = AudioUnitViewController::checkLayout(*layout);
    EXPECT_TRUE(checked) << checked.error().localizedDescription();
    const LayoutResource broken("Broken.plist", PropertyListDictionary{{"panel", PropertyListDictionary{}}});
    EXPECT_FALSE(AudioUnitViewController::checkLayout(broken));
}

using EditorControllerDeathTest = EditorController;

TEST_F(EditorControllerDeathTest, AbsentOutletsAndTreesEndTheProcess) {
    EXPECT_DEATH(controller->setParameter(0, 0.5F),
                 "Unexpectedly found nil while unwrapping an Optional value");
    EXPECT_DEATH(controller->showInfo("x"), kImplicit);
    EXPECT_DEATH(makeRef<AudioUnitViewController>()->view(), kImplicit);
    connect();
    controller->displayView = nullptr;
    EXPECT_DEATH(controller->onTimer(nullptr), kImplicit);
    const Ref<QORLimiterView> surface = controller->mainView;
    controller->mainView = nullptr;
    EXPECT_DEATH(controller->updateView(), kImplicit);
    controller->mainView = surface;
}
