// Small helpers on views and colours.
#pragma once

#include "platform/draw/UIColor.h"
#include "platform/view/UIView.h"

namespace qor {

/// Switches the view's autoresizing off and pins its top, leading, bottom and trailing edges to its
/// superview's. Without a superview nothing happens. Main thread.
void pinToSuperviewEdges(platform::UIView& view);

/// A colour by its components, as the platform's image processing sees it.
class CIColor {
public:
    explicit CIColor(const platform::UIColor& color)
        : red(color.red()), green(color.green()), blue(color.blue()), alpha(color.alpha()) {}

    double red;
    double green;
    double blue;
    double alpha;
};

// The components from 0 to 1.
inline double redValue(const platform::UIColor& color) {
    return CIColor(color).red;
}
inline double greenValue(const platform::UIColor& color) {
    return CIColor(color).green;
}
inline double blueValue(const platform::UIColor& color) {
    return CIColor(color).blue;
}
inline double alphaValue(const platform::UIColor& color) {
    return CIColor(color).alpha;
}

} // namespace qor
