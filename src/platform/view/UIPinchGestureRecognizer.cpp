#include "platform/view/UIPinchGestureRecognizer.h"

#include "platform/view/UITouch.h"

#include <algorithm>
#include <cmath>

namespace platform {

using State = UIGestureRecognizerState;

UIPinchGestureRecognizer::~UIPinchGestureRecognizer() {
    if (timer_) {
        timer_->invalidate();
    }
}

double UIPinchGestureRecognizer::distance() const {
    const CGPoint& a = fingers_[0]->locationInWindow();
    const CGPoint& b = fingers_[1]->locationInWindow();
    return std::max(1.0, std::hypot(a.x - b.x, a.y - b.y));
}

void UIPinchGestureRecognizer::touchesBegan(const UITouchSet& touches, const UIEvent& /*event*/) {
    for (const Ref<UITouch>& touch : touches) {
        if (fingers_.size() < 2) {
            fingers_.push_back(touch);
        }
    }
    if (fingers_.size() == 2 && state() == State::possible) {
        startDistance_ = distance();
        scale_ = 1.0;
    }
}

void UIPinchGestureRecognizer::touchesMoved(const UITouchSet& touches, const UIEvent& /*event*/) {
    if (fingers_.size() != 2 || byWheel_ || touches.empty() ||
        std::find(fingers_.begin(), fingers_.end(), touches.front()) == fingers_.end()) {
        return;
    }
    const CGPoint& a = fingers_[0]->locationInWindow();
    const CGPoint& b = fingers_[1]->locationInWindow();
    setLocation({.x = (a.x + b.x) / 2.0, .y = (a.y + b.y) / 2.0});
    if (isRunning()) {
        scale_ = distance() / startDistance_;
        setState(State::changed);
    } else if (state() == State::possible && std::abs(distance() - startDistance_) >= minimumDistance) {
        setState(State::began);
        scale_ = distance() / startDistance_;
        setState(State::changed);
    }
}

void UIPinchGestureRecognizer::touchesEnded(const UITouchSet& touches, const UIEvent& /*event*/) {
    for (const Ref<UITouch>& touch : touches) {
        if (std::erase(fingers_, touch) > 0 && isRunning() && !byWheel_) {
            setState(State::ended);
        }
    }
}

void UIPinchGestureRecognizer::touchesCancelled(const UITouchSet& touches, const UIEvent& /*event*/) {
    for (const Ref<UITouch>& touch : touches) {
        if (std::erase(fingers_, touch) > 0 && isRunning() && !byWheel_) {
            setState(State::cancelled);
        }
    }
}

bool UIPinchGestureRecognizer::wheelTurned(const UIWheelEvent& event) {
    constexpr double kNotch = 1.1;
    if (!event.has(UIKeyModifierControl) || (isRunning() && !byWheel_)) {
        return false;
    }
    setLocation(event.locationInWindow);
    if (!byWheel_) {
        byWheel_ = true;
        scale_ = 1.0;
        setState(State::began);
    }
    scale_ *= std::pow(kNotch, event.deltaY);
    setState(State::changed);
    if (timer_) {
        timer_->invalidate();
    }
    timer_ = NSTimer::scheduledTimerWithTimeInterval(
        wheelPause, false, [weak = Weak<UIGestureRecognizer>(weak_from_this())](NSTimer&) {
            if (const auto self = weak.lock()) {
                static_cast<UIPinchGestureRecognizer&>(*self).endWheel();
            }
        });
    return true;
}

void UIPinchGestureRecognizer::endWheel() {
    if (byWheel_) {
        byWheel_ = false;
        timer_.reset();
        setState(State::ended);
        setState(State::possible);
    }
}

void UIPinchGestureRecognizer::allTouchesEnded() {
    fingers_.clear();
    if (!byWheel_) {
        UIGestureRecognizer::allTouchesEnded();
    }
}

void UIPinchGestureRecognizer::reset() {
    fingers_.clear();
    byWheel_ = false;
    if (timer_) {
        timer_->invalidate();
        timer_.reset();
    }
}

} // namespace platform
