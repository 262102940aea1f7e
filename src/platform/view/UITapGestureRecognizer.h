// Touches that go down and up again at one place.
#pragma once

#include "platform/view/UIGestureRecognizer.h"

namespace platform {

/// Ends (is recognised) when the last of the required taps goes up; more taps in a row count anew.
class UITapGestureRecognizer : public UIGestureRecognizer {
public:
    int numberOfTapsRequired = 1;
    double maximumDuration = 0.75;   // seconds that a tap may be held
    double allowableMovement = 10.0; // points

    void touchesBegan(const UITouchSet& touches, const UIEvent& event) override;
    void touchesMoved(const UITouchSet& touches, const UIEvent& event) override;
    void touchesEnded(const UITouchSet& touches, const UIEvent& event) override;

protected:
    void reset() override;

private:
    Ref<UITouch> finger_;
    CGPoint start_;
    double startTime_ = 0.0;
};

} // namespace platform
