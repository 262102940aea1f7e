// What the brightness slider does to the colours of panel and needles.
#pragma once

#include "platform/draw/Draw.h"

namespace qor {

/// `contrast` is the plate's grey level, 0 to 1; lines and texts take 1 minus it.
template <class DrawingHalf>
void applyContrast(DrawingHalf& base, double contrast) {
    const double inverse = 1.0 - contrast;
    base.colorContrast = UIColor(inverse, inverse, inverse, 1.0);
    base.colorContrastInverted = UIColor(contrast, contrast, contrast, 1.0);
    base.colorMain = base.colorContrast;
}

} // namespace qor
