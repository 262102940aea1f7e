// Loading of the editor, and what the surface asks for.
#include "interface/AudioUnitViewController.h"

#include "interface/PanelView.h"

#include <utility>

namespace qor {

AudioUnitViewController::AudioUnitViewController(Ref<const LayoutResource> layout)
    : layout_(std::move(layout)) {}

Ref<AudioUnitViewController> AudioUnitViewController::self() {
    return std::static_pointer_cast<AudioUnitViewController>(shared_from_this());
}

Result<void> AudioUnitViewController::checkLayout(const LayoutResource& layout) {
    const auto trial = makeRef<AudioUnitViewController>();
    const auto made = layout.instantiate(kLayoutKey, trial->layoutBindings());
    if (!made) {
        return made.error();
    }
    return {};
}

LayoutBindings AudioUnitViewController::layoutBindings() {
    LayoutBindings bindings;
    bindings.viewClass<PanelView>("PanelView");
    bindings.viewClass<PluginFrameEx>("PluginFrameEx");
    bindings.viewClass<QORDynamicsDisplayView>("QORDynamicsDisplayView");
    bindings.viewClass<QORLimiterView>("QORLimiterView");
    bindings.outlet("pluginFrame", pluginFrame);
    bindings.outlet("pluginView", pluginView);
    bindings.outlet("displayView", displayView);
    bindings.outlet("mainView", mainView);
    bindings.outlet("infoView", infoView);
    bindings.outlet("infoMessage", infoMessage);
    bindings.outlet("contrastButton", contrastButton);
    bindings.outlet("brightnessSlider", brightnessSlider);
    bindings.outlet("freezeButton", freezeButton);
    bindings.outlet("panGesture", panGesture);
    bindings.outlet("pinchGesture", pinchGesture);
    bindings.outlet("doubleTapGesture", doubleTapGesture);
    bindings.outlet("tapGesture", tapGesture);
    bindings.outlet("longPressGesture", longPressGesture);

    // The views belong to this object, so that their actions must not keep it.
    const Weak<UIViewController> weak = weak_from_this();
    const auto action = [&]<class Sender>(std::string name,
                                          void (AudioUnitViewController::*handler)(Sender&)) {
        const auto call = [weak, handler](auto& sender) {
            if (const auto strong = weak.lock()) {
                (static_cast<AudioUnitViewController&>(*strong).*handler)(dynamic_cast<Sender&>(sender));
            }
        };
        if constexpr (std::is_base_of_v<UIControl, Sender>) {
            bindings.controlAction(std::move(name), Block<void(UIControl&)>(call));
        } else {
            bindings.gestureAction(std::move(name), Block<void(UIGestureRecognizer&)>(call));
        }
    };
    action("onContrastButton", &AudioUnitViewController::onContrastButton);
    action("onBrightnessSlider", &AudioUnitViewController::onBrightnessSlider);
    action("onFreezeButton", &AudioUnitViewController::onFreezeButton);
    action("onPanGesture", &AudioUnitViewController::onPanGesture);
    action("onPinchGesture", &AudioUnitViewController::onPinchGesture);
    action("onDoubleTapGesture", &AudioUnitViewController::onDoubleTapGesture);
    action("onTapGesture", &AudioUnitViewController::onTapGesture);
    action("onlongPressGesture", &AudioUnitViewController::onlongPressGesture);
    return bindings;
}

void AudioUnitViewController::loadView() {
    if (!layout_) {
        AUViewController::loadView();
        return;
    }
    auto made = layout_->instantiate(kLayoutKey, layoutBindings());
    if (!made) {
        fatalError(made.error().localizedDescription());
    }
    setView(made.value());
}

void AudioUnitViewController::viewDidLoad() {
    AUViewController::viewDidLoad();
    unwrapImplicit(mainView).delegate = self();
    unwrapImplicit(mainView).setViewController(self());
    currentView = pluginView;
    unwrapImplicit(currentView).setHidden(false);
    timer = NSTimer::scheduledTimerWithTimeInterval(
        0.04, true, [strong = self()](NSTimer& instance) { strong->onTimer(&instance); });
    if (!audioUnit_) {
        print("AudioUnitViewController: WARNING: The audio unit plugin is nil (yet?).");
    }
}

void AudioUnitViewController::onQORLimiterViewParameter(std::int64_t address, float value) {
    if (audioUnit_) {
        audioUnit_->setParameter(static_cast<std::int32_t>(address), value);
    }
}

void AudioUnitViewController::onQORLimiterViewOption(std::int64_t /*address*/, float /*value*/) {}

} // namespace qor
