// Two fingers that move apart or together, or the wheel with the control key.
#pragma once

#include "platform/core/NSTimer.h"
#include "platform/view/UIGestureRecognizer.h"

namespace platform {

/// With the wheel a notch scales by a tenth, and the gesture ends once the wheel has rested for `wheelPause`.
class UIPinchGestureRecognizer : public UIGestureRecognizer {
public:
    double minimumDistance = 4.0; // points by which the fingers' distance must change
    double wheelPause = 0.25;     // seconds

    ~UIPinchGestureRecognizer() override;

    /// The fingers' distance over the one at the beginning.
    double scale() const noexcept { return scale_; }

    void touchesBegan(const UITouchSet& touches, const UIEvent& event) override;
    void touchesMoved(const UITouchSet& touches, const UIEvent& event) override;
    void touchesEnded(const UITouchSet& touches, const UIEvent& event) override;
    void touchesCancelled(const UITouchSet& touches, const UIEvent& event) override;
    bool wheelTurned(const UIWheelEvent& event) override;
    void allTouchesEnded() override;

protected:
    void reset() override;

private:
    double distance() const;
    void endWheel();

    UITouchSet fingers_;
    double startDistance_ = 1.0;
    double scale_ = 1.0;
    bool byWheel_ = false;
    Ref<NSTimer> timer_;
};

} // namespace platform
