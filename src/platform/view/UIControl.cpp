#include "platform/view/UIControl.h"

#include <utility>

namespace platform {

void UIControl::addAction(UIControlEvents events, Block<void(UIControl&)> action) {
    targets_.push_back({.events = events, .action = std::move(action)});
}

void UIControl::sendActionsForControlEvents(UIControlEvents events) {
    const Ref<UIView> keep = weak_from_this().lock();
    const std::vector<Target> targets = targets_; // an action may add others
    for (const Target& target : targets) {
        if ((target.events & events) != 0) {
            target.action(*this);
        }
    }
}

void UIControl::setEnabled(bool enabled) {
    if (enabled != enabled_) {
        enabled_ = enabled;
        setNeedsDisplay();
    }
}

void UIControl::setHighlighted(bool highlighted) {
    if (highlighted != highlighted_) {
        highlighted_ = highlighted;
        setNeedsDisplay();
    }
}

bool UIControl::pointInside(const CGPoint& point, const UIEvent* event) const {
    return enabled_ && UIView::pointInside(point, event);
}

} // namespace platform
