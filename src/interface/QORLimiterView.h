// The editor's one interactive surface: six knobs, two buttons, and three areas that only take touches.
#pragma once

#include "interface/QORLimiterViewBase.h"
#include "interface/QORLimiterViewDelegate.h"
#include "platform/view/View.h"

#include <cstdint>
#include <string>

namespace qor {

class QOR_Limiter_Extension_AudioUnit;

/// One finger at a time; knobs are relative: up or to the right raises, from the value at touch down. Without
/// controller or delegate the touch handlers stop at their first guard. Main thread only.
class QORLimiterView : public UIControl {
public:
    explicit QORLimiterView(const CGRect& frame = CGRectZero);

    const Ref<AudioUnitViewController>& viewController() const noexcept { return viewController_; }
    /// Also gives it to the drawing half.
    virtual void setViewController(Ref<AudioUnitViewController> controller);
    /// The controller's unit; absent without a controller.
    virtual Ref<QOR_Limiter_Extension_AudioUnit> audioUnit() const;
    Ref<QORLimiterViewDelegate> delegate;
    Ref<QORLimiterViewBase> baseClass = makeRef<QORLimiterViewBase>();

    /// Only asks for a redraw, whatever the argument.
    virtual void setFocus(bool focus);
    /// A grey level from 0 to 1; lines and texts take 1 minus it.
    virtual void setContrast(double contrast);
    /// What a parameter of the unit has become. Logs and redraws whatever the address.
    virtual void setParameter(std::int64_t address, float value);

    /// Remembers which element lies under a point in canvas units, and writes its name to the log.
    virtual void setHotspotMode(const CGPoint& location);
    using UIView::hitTest;
    virtual bool hitTest(const CGPoint& location, const UIBezierPath& path) const;

    void draw(const CGRect& rect) override;
    /// An empty set of touches stops the process, here and in the next.
    void touchesBegan(const UITouchSet& touches, UIEvent* event) override;
    void touchesMoved(const UITouchSet& touches, UIEvent* event) override;
    void touchesEnded(const UITouchSet& touches, UIEvent* event) override;
    void touchesCancelled(const UITouchSet& touches, UIEvent* event) override;

private:
    friend struct QORLimiterViewPeer; // tests

    CGPoint canvasLocation(const UITouchSet& touches) const;
    void release();

    Ref<AudioUnitViewController> viewController_;
    std::string hotspotMode;    // the touched element; empty: none
    CGPoint startLocation;      // of touch down, in canvas units
    double startValue = 0.0;    // reserved
    double scaler = 1.0;        // of a drag
    double savedValue = 0.0;    // the element's at touch down
    std::int64_t lastIndex = 0; // reserved
};

} // namespace qor
