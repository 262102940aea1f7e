// The canvas that panel and needles share, and the dial's place on it.
#pragma once

#include "platform/draw/Draw.h"

namespace qor {

/// In canvas units; a view shows it fitted to its bounds.
inline constexpr CGRect kPanelCanvas = CGRectMake(0.0, 0.0, 512.0, 340.0);
inline constexpr CGRect kDialCanvas = CGRectMake(0.0, 0.0, 206.0, 106.0);

/// Runs `draw` with the dial's top left corner as origin, clipped to the dial. Both halves of the dial go
/// through here, so that the needles land on the arc.
template <class Draw>
void drawOnDial(CGContext& context, Draw draw) {
    constexpr CGPoint kFoot{.x = 153.0, .y = 242.0}; // the dial stands on its lower left corner
    constexpr CGRect kSymbol = CGRectMake(0.0, -106.0, 206.0, 106.0);
    CGContextSaveGState(context);
    CGContextTranslateCTM(context, kFoot.x, kFoot.y);
    CGContextSaveGState(context);
    CGContextClipToRect(context, kSymbol);
    CGContextTranslateCTM(context, CGRectGetMinX(kSymbol), CGRectGetMinY(kSymbol));
    draw(kDialCanvas);
    CGContextRestoreGState(context);
    CGContextRestoreGState(context);
}

} // namespace qor
