#include "platform/view/UIGestureRecognizer.h"

#include "platform/view/UITouch.h"
#include "platform/view/UIView.h"
#include "platform/view/UIWindow.h"

namespace platform {

using State = UIGestureRecognizerState;

void UIGestureRecognizer::setEnabled(bool enabled) {
    if (enabled == enabled_) {
        return;
    }
    enabled_ = enabled;
    if (!enabled && isRunning()) {
        setState(State::cancelled);
    }
    if (!enabled) {
        setState(State::possible);
        reset();
    }
}

CGPoint UIGestureRecognizer::locationInView(const UIView* view) const {
    return view == nullptr ? location_ : view->convertPointFromWindow(location_);
}

void UIGestureRecognizer::touchesCancelled(const UITouchSet& /*touches*/, const UIEvent& /*event*/) {
    if (isRunning()) {
        setState(State::cancelled);
    } else {
        setState(State::failed);
    }
}

bool UIGestureRecognizer::wheelTurned(const UIWheelEvent& /*event*/) {
    return false;
}

void UIGestureRecognizer::allTouchesEnded() {
    if (state_ != State::possible && !isRunning()) {
        setState(State::possible);
        reset();
    }
}

void UIGestureRecognizer::attach(UIView* view) {
    view_ = view;
}

bool UIGestureRecognizer::isRunning() const noexcept {
    return state_ == State::began || state_ == State::changed;
}

void UIGestureRecognizer::setState(State state) {
    state_ = state;
    if (state == State::possible || state == State::failed) {
        return;
    }
    const auto keep = weak_from_this().lock();
    const std::vector<Block<void(UIGestureRecognizer&)>> actions = actions_;
    for (const auto& action : actions) {
        action(*this);
    }
    const bool recognised = state == State::began || state == State::ended;
    if (recognised && cancelsTouchesInView && view_ != nullptr && view_->window() != nullptr) {
        view_->window()->cancelTouchesInViews(*this);
    }
}

void UIGestureRecognizer::setHitView(const UITouchSet& touches) {
    if (!touches.empty()) {
        hitView_ = touches.front()->view();
    }
}

bool UIGestureRecognizer::mayBegin() const {
    const Ref<UIView> hit = hitView_.lock();
    return !hit || hit->gestureRecognizerShouldBegin(*this);
}

} // namespace platform
