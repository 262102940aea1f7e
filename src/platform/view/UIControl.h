// A view that tells others what was done to it.
#pragma once

#include "platform/view/UIView.h"

#include <cstdint>
#include <vector>

namespace platform {

using UIControlEvents = std::uint32_t;
inline constexpr UIControlEvents UIControlEventTouchDown = 1U << 0U;
inline constexpr UIControlEvents UIControlEventTouchDragInside = 1U << 2U;
inline constexpr UIControlEvents UIControlEventTouchDragOutside = 1U << 3U;
inline constexpr UIControlEvents UIControlEventTouchUpInside = 1U << 6U;
inline constexpr UIControlEvents UIControlEventTouchUpOutside = 1U << 7U;
inline constexpr UIControlEvents UIControlEventTouchCancel = 1U << 8U;
inline constexpr UIControlEvents UIControlEventValueChanged = 1U << 12U;
inline constexpr UIControlEvents UIControlEventEditingDidBegin = 1U << 16U;
inline constexpr UIControlEvents UIControlEventEditingChanged = 1U << 17U;
inline constexpr UIControlEvents UIControlEventEditingDidEnd = 1U << 18U;
inline constexpr UIControlEvents UIControlEventEditingDidEndOnExit = 1U << 19U;
inline constexpr UIControlEvents UIControlEventAllEvents = 0xFFFFFFFFU;

/// Events go to the actions that were added for them, in the order of their adding.
class UIControl : public UIView {
public:
    using UIView::UIView;

    /// Calls the action whenever one of the events is sent. The control keeps the action.
    void addAction(UIControlEvents events, Block<void(UIControl&)> action);
    void removeAllActions() { targets_.clear(); }
    /// Calls the actions of every event in the mask, each action once.
    void sendActionsForControlEvents(UIControlEvents events);

    bool isEnabled() const noexcept { return enabled_; }
    /// A control that is not enabled takes no touches.
    void setEnabled(bool enabled);
    bool isHighlighted() const noexcept { return highlighted_; }
    void setHighlighted(bool highlighted);

    bool pointInside(const CGPoint& point, const UIEvent* event) const override;

private:
    struct Target {
        UIControlEvents events;
        Block<void(UIControl&)> action;
    };
    std::vector<Target> targets_;
    bool enabled_ = true;
    bool highlighted_ = false;
};

} // namespace platform
