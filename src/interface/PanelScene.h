// The whole picture of the editor without its views: plate, panel and needles, as the editor stacks them.
#pragma once

#include "interface/PluginFrameBaseEx.h"
#include "interface/QORDynamicsDisplayViewBase.h"
#include "interface/QORLimiterViewBase.h"

namespace qor {

/// For pictures that are made without a display. Starts with what a new editor shows.
class PanelScene {
public:
    PanelScene();

    QORLimiterViewBase panel;
    QORDynamicsDisplayViewBase needles;

    /// What the brightness slider does: the plate takes the grey level, lines and texts take 1 minus it.
    void setContrast(float contrast);
    /// Two compression values (1 is no reduction) and two output peaks, each 0 to 1.
    void setMeters(double compression1, double compression2, double peak1, double peak2);

    /// Draws all three layers into the current context, as large as they fit into the bounds, in the middle.
    void draw(const CGRect& bounds);

private:
    PluginFrameBaseEx plate_;
};

} // namespace qor
