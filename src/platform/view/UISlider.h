// A value between two ends, moved along a line.
#pragma once

#include "platform/view/UIControl.h"

namespace platform {

/// Jumps to the touch and follows it. The wheel moves it by a hundredth of its range, with shift by a
/// thousandth; so do the arrow keys. Sends value changed on each change.
class UISlider : public UIControl {
public:
    explicit UISlider(const CGRect& frame = CGRectZero);

    float minimumValue() const noexcept { return minimum_; }
    float maximumValue() const noexcept { return maximum_; }
    /// An upside-down range becomes its lower end alone.
    void setRange(float minimum, float maximum);
    float value() const noexcept { return value_; }
    /// Cut to the range; sends nothing. NaN is ignored.
    void setValue(float value);
    /// Where the value lies in the range, 0 to 1.
    double fraction() const noexcept;
    /// Whether a touch moves it, between touch down and touch up.
    bool isTracking() const noexcept { return tracking_; }
    bool focusable = true;

    void draw(const CGRect& rect) override;
    void touchesBegan(const UITouchSet& touches, UIEvent* event) override;
    void touchesMoved(const UITouchSet& touches, UIEvent* event) override;
    void touchesEnded(const UITouchSet& touches, UIEvent* event) override;
    void touchesCancelled(const UITouchSet& touches, UIEvent* event) override;
    bool gestureRecognizerShouldBegin(const UIGestureRecognizer& recognizer) const override;
    bool scrollWheel(const UIWheelEvent& event) override;
    bool keyDown(const UIKeyEvent& event) override;
    bool canBecomeFirstResponder() const override { return focusable && isEnabled(); }

private:
    void follow(const UITouchSet& touches);
    void moveTo(float value);

    float minimum_ = 0.0f;
    float maximum_ = 1.0f;
    float value_ = 0.0f;
    bool tracking_ = false;
};

} // namespace platform
