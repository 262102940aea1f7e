#include "platform/view/UIPanGestureRecognizer.h"

#include "platform/view/UIView.h"

#include <cmath>

namespace platform {

using State = UIGestureRecognizerState;

CGPoint UIPanGestureRecognizer::translationInView(const UIView* view) const {
    const CGPoint& end = windowLocation();
    if (view == nullptr) {
        return {.x = end.x - start_.x, .y = end.y - start_.y};
    }
    const CGPoint from = view->convertPointFromWindow(start_);
    const CGPoint to = view->convertPointFromWindow(end);
    return {.x = to.x - from.x, .y = to.y - from.y};
}

bool UIPanGestureRecognizer::leads(const UITouchSet& touches) const {
    return leader_ != nullptr && !touches.empty() && touches.front() == leader_;
}

void UIPanGestureRecognizer::touchesBegan(const UITouchSet& touches, const UIEvent& /*event*/) {
    if (leader_ || touches.empty() || state() != State::possible) {
        return;
    }
    leader_ = touches.front();
    start_ = leader_->locationInWindow();
    setLocation(start_);
    setHitView(touches);
}

void UIPanGestureRecognizer::touchesMoved(const UITouchSet& touches, const UIEvent& /*event*/) {
    if (!leads(touches)) {
        return;
    }
    const CGPoint& here = leader_->locationInWindow();
    setLocation(here);
    if (isRunning()) {
        setState(State::changed);
    } else if (state() == State::possible &&
               std::hypot(here.x - start_.x, here.y - start_.y) >= minimumDistance) {
        if (!mayBegin()) {
            setState(State::failed);
            return;
        }
        setState(State::began);
        if (state() == State::began) {
            setState(State::changed);
        }
    }
}

void UIPanGestureRecognizer::touchesEnded(const UITouchSet& touches, const UIEvent& /*event*/) {
    if (!leads(touches)) {
        return;
    }
    setLocation(leader_->locationInWindow());
    leader_.reset();
    setState(isRunning() ? State::ended : State::failed);
}

void UIPanGestureRecognizer::touchesCancelled(const UITouchSet& touches, const UIEvent& event) {
    if (leads(touches)) {
        leader_.reset();
        UIGestureRecognizer::touchesCancelled(touches, event);
    }
}

void UIPanGestureRecognizer::reset() {
    leader_.reset();
}

} // namespace platform
