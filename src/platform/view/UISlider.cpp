#include "platform/view/UISlider.h"

#include "platform/draw/UIBezierPath.h"
#include "platform/view/ViewStyle.h"

#include <algorithm>
#include <cmath>

namespace platform {

namespace {
constexpr double kThumb = 5.0; // points, radius
} // namespace

UISlider::UISlider(const CGRect& frame) : UIControl(frame) {}

void UISlider::setRange(float minimum, float maximum) {
    minimum_ = minimum;
    maximum_ = std::max(minimum, maximum);
    setValue(value_);
}

void UISlider::setValue(float value) {
    const float cut = std::clamp(value, minimum_, maximum_);
    if (cut != value_ && !std::isnan(value)) {
        value_ = cut;
        setNeedsDisplay();
    }
}

double UISlider::fraction() const noexcept {
    const double range = static_cast<double>(maximum_) - static_cast<double>(minimum_);
    return range > 0.0 ? (static_cast<double>(value_) - static_cast<double>(minimum_)) / range : 0.0;
}

void UISlider::draw(const CGRect& rect) {
    const double middle = rect.origin.y + rect.size.height / 2.0;
    const double left = rect.origin.x + kThumb;
    const double length = std::max(0.0, rect.size.width - 2.0 * kThumb);
    const double here = left + length * fraction();
    const auto line = [middle](double from, double to, const UIColor& color) {
        UIBezierPath path;
        path.moveToPoint({.x = from, .y = middle});
        path.addLineToPoint({.x = to, .y = middle});
        path.setLineWidth(2.0);
        path.setLineCapStyle(CGLineCap::round);
        color.setStroke();
        path.stroke();
    };
    line(left, left + length, style::kLine);
    line(left, here, style::kText);
    const double radius = tracking_ ? kThumb : kThumb - 1.0;
    (isFirstResponder() ? style::kFocus : style::kText).setFill();
    UIBezierPath::bezierPathWithOvalInRect(
        CGRectMake(here - radius, middle - radius, 2.0 * radius, 2.0 * radius))
        .fill();
}

void UISlider::follow(const UITouchSet& touches) {
    const double length = bounds().size.width - 2.0 * kThumb;
    if (touches.empty() || length <= 0.0) {
        return;
    }
    const double part = std::clamp((touches.front()->locationInView(this).x - kThumb) / length, 0.0, 1.0);
    const auto low = static_cast<double>(minimum_);
    moveTo(static_cast<float>(low + part * (static_cast<double>(maximum_) - low)));
}

void UISlider::moveTo(float value) {
    const float before = value_;
    setValue(value);
    if (value_ != before) {
        sendActionsForControlEvents(UIControlEventValueChanged);
    }
}

void UISlider::touchesBegan(const UITouchSet& touches, UIEvent* /*event*/) {
    tracking_ = true;
    setNeedsDisplay();
    sendActionsForControlEvents(UIControlEventTouchDown);
    follow(touches);
}

void UISlider::touchesMoved(const UITouchSet& touches, UIEvent* /*event*/) {
    follow(touches);
}

void UISlider::touchesEnded(const UITouchSet& touches, UIEvent* /*event*/) {
    follow(touches);
    tracking_ = false;
    setNeedsDisplay();
    const bool inside = !touches.empty() && pointInside(touches.front()->locationInView(this), nullptr);
    sendActionsForControlEvents(inside ? UIControlEventTouchUpInside : UIControlEventTouchUpOutside);
}

void UISlider::touchesCancelled(const UITouchSet& /*touches*/, UIEvent* /*event*/) {
    tracking_ = false;
    setNeedsDisplay();
    sendActionsForControlEvents(UIControlEventTouchCancel);
}

bool UISlider::gestureRecognizerShouldBegin(const UIGestureRecognizer& /*recognizer*/) const {
    return false;
}

bool UISlider::scrollWheel(const UIWheelEvent& event) {
    if (UIControl::scrollWheel(event)) {
        return true;
    }
    const double step = event.has(UIKeyModifierShift) ? 0.001 : 0.01;
    const double range = static_cast<double>(maximum_) - static_cast<double>(minimum_);
    moveTo(static_cast<float>(static_cast<double>(value_) + (event.deltaY + event.deltaX) * step * range));
    return true;
}

bool UISlider::keyDown(const UIKeyEvent& event) {
    const bool up = event.key == UIKey::right || event.key == UIKey::up;
    const bool down = event.key == UIKey::left || event.key == UIKey::down;
    if (!up && !down) {
        return false;
    }
    return scrollWheel({.locationInWindow = {},
                        .deltaX = 0.0,
                        .deltaY = up ? 1.0 : -1.0,
                        .modifierFlags = event.modifierFlags,
                        .timestamp = 0.0});
}

} // namespace platform
