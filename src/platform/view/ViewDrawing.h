// Helpers of those who draw views.
#pragma once

#include "platform/draw/CGAffineTransform.h"

namespace platform {

class CGContext;
class UIView;

/// Puts a map of moves, turns and scales before a context's matrix; a shear is left out.
void applyMap(CGContext& context, const CGAffineTransform& map);
/// Fills the background and calls `draw`, without subviews.
void drawWithBackground(UIView& view, CGContext& context);

} // namespace platform
