// Input as it reaches the views: keys, wheel, and the touches of one moment.
#pragma once

#include "platform/core/Ref.h"
#include "platform/draw/CGGeometry.h"

#include <cstdint>
#include <string>
#include <vector>

namespace platform {

class UITouch;
using UITouchSet = std::vector<Ref<UITouch>>;

/// Bits of the modifier keys that are held.
enum UIKeyModifierFlags : std::uint32_t {
    UIKeyModifierNone = 0,
    UIKeyModifierShift = 1U << 17U,
    UIKeyModifierControl = 1U << 18U,
    UIKeyModifierAlternate = 1U << 19U,
};

/// A moment of touch input.
struct UIEvent {
    UITouchSet allTouches;
    std::uint32_t modifierFlags = UIKeyModifierNone;
    double timestamp = 0.0; // seconds of the run loop's clock
};

/// Keys that mean something by themselves; everything else is text.
enum class UIKey : std::uint8_t {
    text,
    tab,
    enter,
    escape,
    backspace,
    deleteForward,
    left,
    right,
    up,
    down,
    pageUp,
    pageDown,
    home,
    end,
};

struct UIKeyEvent {
    UIKey key = UIKey::text;
    std::string text; // UTF-8, for `UIKey::text`
    std::uint32_t modifierFlags = UIKeyModifierNone;

    bool has(UIKeyModifierFlags flag) const noexcept { return (modifierFlags & flag) != 0; }
};

/// A turn of the wheel, or the same from a touch pad.
struct UIWheelEvent {
    CGPoint locationInWindow;
    double deltaX = 0.0; // notches, to the right
    double deltaY = 0.0; // notches, up (away from the user)
    std::uint32_t modifierFlags = UIKeyModifierNone;
    double timestamp = 0.0;

    bool has(UIKeyModifierFlags flag) const noexcept { return (modifierFlags & flag) != 0; }
};

} // namespace platform
