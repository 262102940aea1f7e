// One finger, or the held mouse button.
#pragma once

#include "platform/core/Ref.h"
#include "platform/draw/CGGeometry.h"

#include <cstdint>

namespace platform {

class UIView;

enum class UITouchPhase : std::uint8_t { began = 0, moved = 1, stationary = 2, ended = 3, cancelled = 4 };

/// The same object from touch down to the end. Its view is the one that was hit at touch down and stays so.
class UITouch {
public:
    /// `location` in the coordinates of the window, in points.
    explicit UITouch(const CGPoint& location, Ref<UIView> view = nullptr, double timestamp = 0.0);

    /// In a view's own coordinates; in the window's for no view.
    CGPoint locationInView(const UIView* view) const;
    const CGPoint& locationInWindow() const noexcept { return location_; }
    const Ref<UIView>& view() const noexcept { return view_; }
    UITouchPhase phase() const noexcept { return phase_; }
    /// Taps in quick succession at one place, this one included.
    int tapCount() const noexcept { return tapCount_; }
    /// Seconds of the run loop's clock.
    double timestamp() const noexcept { return timestamp_; }

    /// Used by whoever delivers touches.
    void update(UITouchPhase phase, const CGPoint& location, double timestamp) noexcept;
    void setTapCount(int count) noexcept { tapCount_ = count; }

private:
    CGPoint location_;
    Ref<UIView> view_;
    double timestamp_;
    UITouchPhase phase_ = UITouchPhase::began;
    int tapCount_ = 1;
};

} // namespace platform
