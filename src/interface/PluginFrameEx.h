// The plate's view: the panel's background, in the grey that the brightness slider sets.
#pragma once

#include "interface/PluginFrameBaseEx.h"
#include "platform/view/View.h"

namespace qor {

/// Lies behind the panel. Main thread only.
class PluginFrameEx : public UIControl {
public:
    explicit PluginFrameEx(const CGRect& frame = CGRectZero) : UIControl(frame) {}

    /// Grey level, 0 black, 1 white. Shows at the next drawing; whoever sets it asks for that.
    float contrast = 0.15F;
    UIColor mainColor = UIColor::lightGrayColor();

    /// Fills the rectangle as it stands, whatever the bounds.
    void draw(const CGRect& rect) override;

private:
    friend struct PluginFramePeer; // tests

    Ref<PluginFrameBaseEx> baseClass = makeRef<PluginFrameBaseEx>();
};

} // namespace qor
