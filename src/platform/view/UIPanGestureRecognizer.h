// One finger that moves.
#pragma once

#include "platform/view/UIGestureRecognizer.h"

namespace platform {

/// Begins once the touch has moved by `minimumDistance`; a second touch doesn't end it, the first one leads.
class UIPanGestureRecognizer : public UIGestureRecognizer {
public:
    double minimumDistance = 10.0; // points

    /// From touch down to now, in a view's coordinates (the window's for none).
    CGPoint translationInView(const UIView* view) const;

    void touchesBegan(const UITouchSet& touches, const UIEvent& event) override;
    void touchesMoved(const UITouchSet& touches, const UIEvent& event) override;
    void touchesEnded(const UITouchSet& touches, const UIEvent& event) override;
    void touchesCancelled(const UITouchSet& touches, const UIEvent& event) override;

protected:
    void reset() override;

private:
    bool leads(const UITouchSet& touches) const;

    Ref<UITouch> leader_;
    CGPoint start_;
};

} // namespace platform
