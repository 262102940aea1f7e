#include "interface/PluginFrameEx.h"

namespace qor {

void PluginFrameEx::draw(const CGRect& rect) {
    baseClass->contrast = contrast;
    baseClass->mainColor = mainColor;
    baseClass->draw(rect, PluginFrameBaseEx::ResizingBehavior::aspectFit);
}

} // namespace qor
