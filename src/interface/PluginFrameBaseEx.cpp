#include "interface/PluginFrameBaseEx.h"

namespace qor {

void PluginFrameBaseEx::draw(const CGRect& frame, ResizingBehavior resizing) {
    CGContext& context = unwrap(UIGraphicsGetCurrentContext());
    CGContextSaveGState(context);
    const CGRect canvas = CGRectMake(0.0, 0.0, CGRectGetWidth(frame), CGRectGetHeight(frame));
    resizing::fit(context, canvas.size, resizing.apply(canvas, frame, *this));
    UIColor(contrast, contrast, contrast, 1.0).setFill();
    UIBezierPath::bezierPathWithRoundedRect(
        CGRectMake(2.0, 2.0, CGRectGetWidth(frame) - 4.0, CGRectGetHeight(frame) - 4.0), 4.0)
        .fill();
    CGContextRestoreGState(context);
}

} // namespace qor
