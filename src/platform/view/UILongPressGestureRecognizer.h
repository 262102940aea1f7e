// A touch that is held.
#pragma once

#include "platform/core/NSTimer.h"
#include "platform/view/UIGestureRecognizer.h"

namespace platform {

/// Begins when the touch has rested for `minimumPressDuration`, changes with its moves, ends with it.
class UILongPressGestureRecognizer : public UIGestureRecognizer {
public:
    double minimumPressDuration = 0.5; // seconds
    double allowableMovement = 10.0;   // points, before it has begun

    ~UILongPressGestureRecognizer() override;

    void touchesBegan(const UITouchSet& touches, const UIEvent& event) override;
    void touchesMoved(const UITouchSet& touches, const UIEvent& event) override;
    void touchesEnded(const UITouchSet& touches, const UIEvent& event) override;
    void touchesCancelled(const UITouchSet& touches, const UIEvent& event) override;

protected:
    void reset() override;

private:
    void held();
    void stopTimer();

    Ref<UITouch> finger_;
    CGPoint start_;
    Ref<NSTimer> timer_;
};

} // namespace platform
