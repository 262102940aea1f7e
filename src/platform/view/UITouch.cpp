#include "platform/view/UITouch.h"

#include "platform/view/UIView.h"

#include <utility>

namespace platform {

UITouch::UITouch(const CGPoint& location, Ref<UIView> view, double timestamp)
    : location_(location), view_(std::move(view)), timestamp_(timestamp) {}

CGPoint UITouch::locationInView(const UIView* view) const {
    return view == nullptr ? location_ : view->convertPointFromWindow(location_);
}

void UITouch::update(UITouchPhase phase, const CGPoint& location, double timestamp) noexcept {
    phase_ = phase;
    location_ = location;
    timestamp_ = timestamp;
}

} // namespace platform
