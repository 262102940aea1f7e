// The needles' view: takes the meters' values and asks for redraws.
#pragma once

#include "interface/QORDynamicsDisplayViewBase.h"
#include "platform/view/View.h"

namespace qor {

/// Lies over the panel with the same bounds. Main thread only.
class QORDynamicsDisplayView : public UIControl {
public:
    explicit QORDynamicsDisplayView(const CGRect& frame = CGRectZero) : UIControl(frame) {}

    Ref<QORDynamicsDisplayViewBase> baseClass = makeRef<QORDynamicsDisplayViewBase>();

    /// Only asks for a redraw, whatever the argument.
    virtual void setFocus(bool focus);
    /// A grey level from 0 to 1; lines take 1 minus it.
    virtual void setContrast(double contrast);
    /// Stores the value; no redraw, and nothing shows it.
    virtual void setThresholdValue(float value);
    /// The needles, 0 to 1; 1 is no reduction. A pair that is stored already asks for no redraw.
    virtual void setCompressionValues(float value1, float value2);
    /// The dots, 0 to 1; likewise.
    virtual void setOutputValues(float value3, float value4);
    /// Needles back to rest; the dots stay.
    virtual void resetDisplay();

    void draw(const CGRect& rect) override;
};

} // namespace qor
