// The drawing half of the panel's background: a rounded plate in a shade of grey.
#pragma once

#include "interface/Resizing.h"
#include "platform/core/Core.h"
#include "platform/draw/Draw.h"

#include <cstdint>
#include <optional>

namespace qor {

/// Fills the frame with a plate that leaves a rim of 2 points open. Main thread only.
class PluginFrameBaseEx {
public:
    using ResizingBehavior = resizing::ViewBehavior<PluginFrameBaseEx>;

    PluginFrameBaseEx() = default;
    PluginFrameBaseEx(const PluginFrameBaseEx&) = delete;
    PluginFrameBaseEx& operator=(const PluginFrameBaseEx&) = delete;
    virtual ~PluginFrameBaseEx() = default;

    /// Without a current graphics context it stops the process. A frame without area draws nothing.
    virtual void draw(const CGRect& frame = CGRectZero,
                      ResizingBehavior resizing = ResizingBehavior::aspectFit);

private:
    friend class PluginFrameEx;
    friend class PanelScene;
    friend ResizingBehavior;       // stores the scale
    friend struct PluginFramePeer; // tests

    double contrast = 0.25;                        // grey level of the plate, 0 black, 1 white
    UIColor mainColor = UIColor::lightGrayColor(); // kept in step with the view; not drawn with
    CGSize viewScale{.width = 1.0, .height = 1.0}; // the last factors of `apply`
};

} // namespace qor
