#include "platform/view/UILongPressGestureRecognizer.h"

#include "platform/view/UITouch.h"

#include <cmath>

namespace platform {

using State = UIGestureRecognizerState;

UILongPressGestureRecognizer::~UILongPressGestureRecognizer() {
    stopTimer();
}

void UILongPressGestureRecognizer::touchesBegan(const UITouchSet& touches, const UIEvent& /*event*/) {
    if (finger_ || touches.size() != 1) {
        if (!isRunning()) {
            stopTimer();
            setState(State::failed); // a second finger
        }
        return;
    }
    finger_ = touches.front();
    start_ = finger_->locationInWindow();
    setLocation(start_);
    setHitView(touches);
    stopTimer();
    timer_ = NSTimer::scheduledTimerWithTimeInterval(
        minimumPressDuration, false, [weak = Weak<UIGestureRecognizer>(weak_from_this())](NSTimer&) {
            if (const auto self = weak.lock()) {
                static_cast<UILongPressGestureRecognizer&>(*self).held();
            }
        });
}

void UILongPressGestureRecognizer::held() {
    timer_.reset();
    if (finger_ && state() == State::possible) {
        setState(mayBegin() ? State::began : State::failed);
    }
}

void UILongPressGestureRecognizer::touchesMoved(const UITouchSet& touches, const UIEvent& /*event*/) {
    if (touches.empty() || touches.front() != finger_) {
        return;
    }
    const CGPoint& here = finger_->locationInWindow();
    if (isRunning()) {
        setLocation(here);
        setState(State::changed);
    } else if (state() == State::possible &&
               std::hypot(here.x - start_.x, here.y - start_.y) > allowableMovement) {
        stopTimer();
        setState(State::failed);
    }
}

void UILongPressGestureRecognizer::touchesEnded(const UITouchSet& touches, const UIEvent& /*event*/) {
    if (touches.empty() || touches.front() != finger_) {
        return;
    }
    finger_.reset();
    stopTimer();
    setState(isRunning() ? State::ended : State::failed);
}

void UILongPressGestureRecognizer::touchesCancelled(const UITouchSet& touches, const UIEvent& event) {
    if (!touches.empty() && touches.front() == finger_) {
        finger_.reset();
        stopTimer();
        UIGestureRecognizer::touchesCancelled(touches, event);
    }
}

void UILongPressGestureRecognizer::stopTimer() {
    if (timer_) {
        timer_->invalidate();
        timer_.reset();
    }
}

void UILongPressGestureRecognizer::reset() {
    finger_.reset();
    stopTimer();
}

} // namespace platform
