// How a finger on the surface becomes a value.
#include "interface/AudioUnitViewController.h"
#include "interface/LimiterElements.h"
#include "interface/QORLimiterView.h"

namespace qor {

namespace {

/// Compared the way a clamp is written out: a NaN passes.
template <class T>
T clamped(T value, T low, T high) {
    if (value < low) {
        return low;
    }
    return value > high ? high : value;
}

} // namespace

bool QORLimiterView::hitTest(const CGPoint& location, const UIBezierPath& path) const {
    return path.containsPoint(location);
}

void QORLimiterView::setHotspotMode(const CGPoint& location) {
    hotspotMode = "";
    for (const LimiterElement& element : kLimiterElements) {
        if (hitTest(location, (*baseClass).*element.path)) {
            hotspotMode = element.mode;
            break;
        }
    }
    print(hotspotMode);
}

CGPoint QORLimiterView::canvasLocation(const UITouchSet& touches) const {
    const Ref<UITouch> first = touches.empty() ? nullptr : touches.front();
    const CGPoint location = unwrap(first).locationInView(this);
    return {.x = location.x / baseClass->viewScale.width, .y = location.y / baseClass->viewScale.height};
}

void QORLimiterView::touchesBegan(const UITouchSet& touches, UIEvent* /*event*/) {
    if (!viewController_ || !delegate) {
        return;
    }
    startLocation = canvasLocation(touches);
    setHotspotMode(startLocation);
    if (hotspotMode.empty()) {
        unwrapImplicit(viewController_).touchesLocked = false;
        return;
    }
    unwrapImplicit(viewController_).touchesLocked = true;
    const LimiterElement& element = unwrap(limiterElement(hotspotMode));
    if (element.kind == LimiterElementKind::knob) {
        savedValue = (*baseClass).*element.value;
        (*baseClass).*element.active = true;
    } else if (element.kind == LimiterElementKind::button) {
        (*baseClass).*element.active = true;
        bool& selected = (*baseClass).*element.selected;
        selected = !selected;
        unwrapImplicit(delegate).onQORLimiterViewParameter(element.address, selected ? 1.0F : 0.0F);
    }
    setNeedsDisplay();
    sendActionsForControlEvents(UIControlEventTouchDown);
}

void QORLimiterView::touchesMoved(const UITouchSet& touches, UIEvent* /*event*/) {
    if (!viewController_ || !delegate || hotspotMode.empty()) {
        return;
    }
    const CGPoint here = canvasLocation(touches);
    // Divided by the scale once more: a knob's travel on the screen grows with the square of the scale.
    const double dx = (here.x - startLocation.x) / baseClass->viewScale.width * scaler;
    const double dy = (here.y - startLocation.y) / baseClass->viewScale.height * scaler;
    const LimiterElement& element = unwrap(limiterElement(hotspotMode));
    if (element.kind == LimiterElementKind::knob) {
        auto d = static_cast<float>(dy - dx);
        d = d / 2.0F;
        d = d / 100.0F;
        d = clamped(d, -1.0F, 1.0F);
        const double value = clamped(savedValue - static_cast<double>(d), 0.0, 1.0);
        (*baseClass).*element.value = value;
        unwrapImplicit(delegate).onQORLimiterViewParameter(element.address, static_cast<float>(value));
    }
    setNeedsDisplay();
    sendActionsForControlEvents(UIControlEventValueChanged);
}

void QORLimiterView::release() {
    const LimiterElement* element = limiterElement(hotspotMode);
    if (element != nullptr && element->active != nullptr) {
        (*baseClass).*element->active = false;
    }
}

void QORLimiterView::touchesEnded(const UITouchSet& touches, UIEvent* event) {
    if (!viewController_) {
        return;
    }
    touchesMoved(touches, event);
    release();
    hotspotMode = "";
    unwrapImplicit(viewController_).touchesLocked = false;
    setNeedsDisplay();
    // The canvas's point of touch down against the view's bounds: not the point of release.
    const bool inside = CGRectContainsPoint(bounds(), startLocation);
    sendActionsForControlEvents(inside ? UIControlEventTouchUpInside : UIControlEventTouchUpOutside);
}

void QORLimiterView::touchesCancelled(const UITouchSet& /*touches*/, UIEvent* /*event*/) {
    if (!viewController_) {
        return;
    }
    viewController_->touchesLocked = false;
    release();
    setNeedsDisplay();
    sendActionsForControlEvents(UIControlEventTouchCancel);
}

} // namespace qor
