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
