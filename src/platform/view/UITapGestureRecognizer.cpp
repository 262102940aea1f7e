#include "platform/view/UITapGestureRecognizer.h"

#include "platform/view/UITouch.h"

#include <algorithm>
#include <cmath>

namespace platform {

using State = UIGestureRecognizerState;

void UITapGestureRecognizer::touchesBegan(const UITouchSet& touches, const UIEvent& event) {
    if (finger_ || touches.size() != 1) {
        setState(State::failed); // a second finger
        return;
    }
    finger_ = touches.front();
    start_ = finger_->locationInWindow();
    startTime_ = event.timestamp;
    setHitView(touches);
}

void UITapGestureRecognizer::touchesMoved(const UITouchSet& touches, const UIEvent& /*event*/) {
    if (touches.empty() || touches.front() != finger_) {
        return;
    }
    const CGPoint& here = finger_->locationInWindow();
    if (std::hypot(here.x - start_.x, here.y - start_.y) > allowableMovement) {
        setState(State::failed);
    }
}

void UITapGestureRecognizer::touchesEnded(const UITouchSet& touches, const UIEvent& event) {
    if (touches.empty() || touches.front() != finger_ || state() != State::possible) {
        return;
    }
    const int required = std::max(1, numberOfTapsRequired);
    const bool enough = finger_->tapCount() % required == 0;
    setLocation(finger_->locationInWindow());
    if (enough && event.timestamp - startTime_ <= maximumDuration && mayBegin()) {
        setState(State::ended);
    } else {
        setState(State::failed);
    }
}

void UITapGestureRecognizer::reset() {
    finger_.reset();
}

} // namespace platform
