// An editor in a headless window, with or without a unit.
#pragma once

#include "interface/AudioUnitViewController.h"
#include "platform/files/Files.h"
#include "platform/view/HeadlessWindow.h"
#include "support/CapturedLog.h"
#include "unit/UnitComponent.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace qor {

/// The tests' way to what is private.
struct AudioUnitViewControllerPeer {
    static bool& lockAutoLayout(AudioUnitViewController& c) { return c.lockAutoLayout; }
    static CGRect& controlFrame(AudioUnitViewController& c) { return c.controlFrame; }
    static Ref<UIView>& currentView(AudioUnitViewController& c) { return c.currentView; }
    static Ref<AUParameterTree>& parameterTree(AudioUnitViewController& c) { return c.parameterTree; }
    static std::vector<Ref<AUParameter>>& parameters(AudioUnitViewController& c) { return c.parameters; }
    static Ref<NSTimer>& timer(AudioUnitViewController& c) { return c.timer; }
    static const std::string& startFolderForSegue(AudioUnitViewController& c) {
        return c.startFolderForSegue;
    }
    static void extract(AudioUnitViewController& c, const AUParameterGroup* group) {
        c.extractParameters("", group, 0);
    }
};

} // namespace qor

namespace test {

using namespace qor; // NOLINT(google-build-using-namespace): the system under test

inline Ref<const LayoutResource> editorLayout() {
    const auto resources = Bundle::main().resourceURL();
    if (!resources) {
        ADD_FAILURE() << "there are no resources";
        return nullptr;
    }
    auto loaded = LayoutResource::load(resources->appendingPathComponent("EditorLayout.plist"));
    if (!loaded) {
        ADD_FAILURE() << loaded.error().localizedDescription();
        return nullptr;
    }
    return makeRef<const LayoutResource>(loaded.value());
}

/// Everything runs on the window's loop; what the unit logs on the way is kept out of `lines`.
class Editor : public testing::Test {
protected:
    explicit Editor(const CGSize& size = {.width = 512.0, .height = 340.0}) : headless(size) {}

    ~Editor() override {
        // Ends the cycles that the controller makes: its timer and tasks go with the loop, the rest here.
        if (controller->mainView) {
            controller->mainView->delegate = nullptr;
            controller->mainView->setViewController(nullptr);
        }
        if (const auto tree = AudioUnitViewControllerPeer::parameterTree(*controller)) {
            tree->removeParameterObserver(controller->parameterObserverToken());
        }
    }

    void load() { headless.show(controller->view()); }
    Ref<QOR_Limiter_Extension_AudioUnit> makeUnit() {
        auto made = QOR_Limiter_Extension_AudioUnit::init(kQORLimiterComponent, {});
        EXPECT_TRUE(made);
        return made.value();
    }
    /// Loads the view, then assigns a unit, and lets the connection happen.
    void connect() {
        load();
        unit = makeUnit();
        controller->setAudioUnit(unit);
        headless.settle();
        log.clear();
    }
    /// The editor's own lines: those of the unit and the kernel are left out.
    std::vector<std::string> lines() const {
        std::vector<std::string> found = log.lines();
        std::erase_if(found, [](const std::string& line) {
            return line.starts_with("AUExtension") || line.starts_with("unit received parameter");
        });
        return found;
    }
    bool logged(const std::string& line) const {
        const auto all = log.lines();
        return std::find(all.begin(), all.end(), line) != all.end();
    }
    std::size_t count(const std::string& line) const {
        const auto all = log.lines();
        return static_cast<std::size_t>(std::count(all.begin(), all.end(), line));
    }

    CapturedLog log;
    HeadlessWindow headless;
    RunLoop::Scope scope{headless.loop()};
    Ref<AudioUnitViewController> controller = makeRef<AudioUnitViewController>(editorLayout());
    Ref<QOR_Limiter_Extension_AudioUnit> unit;
};

} // namespace test
