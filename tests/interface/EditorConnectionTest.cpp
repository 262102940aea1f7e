// Who holds whom between controller, views and unit, and what a connection leaves alone.
#include "EditorFixture.h"

namespace {

using namespace qor; // NOLINT(google-build-using-namespace): the system under test
using Peer = AudioUnitViewControllerPeer;

class EditorConnection : public test::Editor {};

/// As if the layout had the panel hidden.
class HiddenPanelController : public AudioUnitViewController {
public:
    using AudioUnitViewController::AudioUnitViewController;
    void loadView() override {
        AudioUnitViewController::loadView();
        pluginView->setHidden(true);
    }
};

} // namespace

TEST_F(EditorConnection, SurfaceAndDrawingHalfGiveTheControllersUnit) {
    EXPECT_EQ(QORLimiterViewBase().audioUnit(), nullptr);
    load();
    EXPECT_EQ(controller->mainView->baseClass->audioUnit(), nullptr);
    unit = makeUnit();
    controller->setAudioUnit(unit);
    EXPECT_EQ(controller->mainView->baseClass->audioUnit(), unit);
    EXPECT_EQ(controller->mainView->audioUnit(), unit);
    headless.settle();
}

TEST_F(EditorConnection, LoadingMakesAHiddenPanelVisible) {
    controller = makeRef<HiddenPanelController>(test::editorLayout());
    controller->view();
    EXPECT_FALSE(controller->pluginView->isHidden());
}

TEST_F(EditorConnection, TheMeterTimerAloneKeepsTheController) {
    load();
    const Weak<AudioUnitViewController> weak = controller;
    const Ref<NSTimer> timer = Peer::timer(*controller);
    controller->mainView->delegate = nullptr;
    controller->mainView->setViewController(nullptr);
    headless.window().setRootView(nullptr);
    controller = makeRef<AudioUnitViewController>();
    headless.run(1.0);
    EXPECT_FALSE(weak.expired());
    timer->invalidate();
    EXPECT_TRUE(weak.expired());
}

TEST_F(EditorConnection, TheQueuedTaskKeepsTheControllerUntilItHasRun) {
    const Weak<AudioUnitViewController> weak = controller;
    controller->setAudioUnit(makeUnit());
    controller = makeRef<AudioUnitViewController>();
    EXPECT_FALSE(weak.expired());
    log.clear();
    headless.settle();
    EXPECT_TRUE(logged("AU Diagnostics: WARNING: Plugin view is not loaded."));
    EXPECT_TRUE(weak.expired());
}

TEST_F(EditorConnection, AnUnknownAddressLeavesEveryParameterAlone) {
    connect();
    const auto values = [&] {
        std::vector<float> all;
        for (const Ref<AUParameter>& parameter : unit->parameterTree()->allParameters()) {
            all.push_back(parameter->value());
        }
        return all;
    };
    const std::vector<float> before = values();
    controller->setParameter(12, 0.375F);
    EXPECT_EQ(values(), before);
    EXPECT_EQ(lines(), std::vector<std::string>{
                           "AudioUnitViewController: ERROR: The parameter address 12 is not available."});
}

TEST_F(EditorConnection, AFailingUnitLeavesTheOldOneInPlace) {
    connect();
    AudioComponentDescription nameless = kQORLimiterComponent;
    nameless.componentType = 0;
    const auto made = controller->createAudioUnit(nameless);
    ASSERT_FALSE(made);
    EXPECT_EQ(made.error().code, kAudioUnitErr_FailedInitialization);
    EXPECT_EQ(controller->audioUnit(), unit);
    EXPECT_FALSE(logged("AU Diagnostics: AUAudioUnit::didSet()"));
}
