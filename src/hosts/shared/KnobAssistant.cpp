#include "hosts/shared/KnobAssistant.h"

namespace qor::host {

namespace {

constexpr double kValueTop = 78.0; // canvas units below a knob area's top, where its number stands
constexpr double kValueHeight = 18.0;

/// Where a knob's number stands, in canvas units.
CGRect numberArea(const CGRect& hotspot) {
    return CGRectMake(hotspot.origin.x, hotspot.origin.y + kValueTop, hotspot.size.width, kValueHeight);
}

} // namespace

KnobAssistant::KnobAssistant(EditorModel& model, HostStrip& strip, QORLimiterView& surface)
    : model_(model), strip_(strip), surface_(surface) {
    surface_.onScrollWheel = [this](UIView&, const UIWheelEvent& event) { return turn(event); };
    surface_.addAction(UIControlEventTouchDown | UIControlEventValueChanged, [this](UIControl&) { moved(); });
    const auto tap = makeRef<UITapGestureRecognizer>();
    tap->identifier = "value";
    tap->cancelsTouchesInView = false;
    tap->allowableMovement = 2.0; // a drag is no click
    tap->addAction([this](UIGestureRecognizer& sender) { tapped(sender.locationInView(&surface_)); });
    surface_.addGestureRecognizer(tap);
}

std::optional<CGPoint> KnobAssistant::canvasPoint(const CGPoint& at) const {
    const CGSize& scale = surface_.baseClass->viewScale;
    if (!(scale.width > 0.0 && scale.height > 0.0)) {
        return std::nullopt; // not drawn yet
    }
    return CGPoint{.x = at.x / scale.width, .y = at.y / scale.height};
}

const LimiterElement* KnobAssistant::knobAt(const CGPoint& canvas) const {
    for (const LimiterElement& element : kLimiterElements) {
        if (((*surface_.baseClass).*element.path).containsPoint(canvas)) {
            return element.kind == LimiterElementKind::knob ? &element : nullptr;
        }
    }
    return nullptr;
}

bool KnobAssistant::turn(const UIWheelEvent& event) {
    const auto canvas = canvasPoint(surface_.convertPointFromWindow(event.locationInWindow));
    const LimiterElement* knob = canvas ? knobAt(*canvas) : nullptr;
    if (knob == nullptr) {
        return false;
    }
    const double step = event.has(UIKeyModifierShift) ? 0.001 : 0.01;
    const auto address = static_cast<AUParameterAddress>(knob->address);
    const double turned =
        static_cast<double>(model_.parameter(address)) + (event.deltaY + event.deltaX) * step;
    strip_.set(address, static_cast<float>(turned));
    return true;
}

void KnobAssistant::tapped(const CGPoint& at) {
    const auto canvas = canvasPoint(at);
    const LimiterElement* knob = canvas ? knobAt(*canvas) : nullptr;
    if (knob == nullptr) {
        return;
    }
    const CGRect number = numberArea(((*surface_.baseClass).*knob->path).bounds());
    if (!CGRectContainsPoint(number, *canvas)) {
        return;
    }
    // The panel shows what lies on it in canvas units.
    strip_.enterValue(unwrap(surface_.superview()), number, static_cast<AUParameterAddress>(knob->address));
}

void KnobAssistant::moved() {
    for (const LimiterElement& element : kLimiterElements) {
        if (element.active != nullptr && (*surface_.baseClass).*element.active) {
            const auto address = static_cast<AUParameterAddress>(element.address);
            strip_.tellValue(address, model_.parameter(address));
            return;
        }
    }
}

} // namespace qor::host
