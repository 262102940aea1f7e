#include "platform/view/ViewStyle.h"

#include "platform/draw/CGContext.h"
#include "platform/draw/NSStringDrawing.h"
#include "platform/draw/UIBezierPath.h"

namespace platform::style {

void drawBox(const CGRect& rect, const UIColor& inside, const UIColor& line, double width) {
    UIBezierPath box =
        UIBezierPath::bezierPathWithRoundedRect(CGRectInset(rect, width / 2.0, width / 2.0), kCorner);
    if (inside.alpha() > 0.0) {
        inside.setFill();
        box.fill();
    }
    if (line.alpha() > 0.0) {
        line.setStroke();
        box.setLineWidth(width);
        box.stroke();
    }
}

void drawText(std::string_view text, const CGRect& rect, const UIFont& font, const UIColor& color,
              NSTextAlignment alignment, NSLineBreakMode lines) {
    CGContext* context = UIGraphicsGetCurrentContext();
    if (context == nullptr || text.empty() || CGRectIsEmpty(rect)) {
        return;
    }
    NSStringAttributes attributes{.font = font, .foregroundColor = color, .paragraphStyle = {}};
    attributes.paragraphStyle.setAlignment(alignment);
    attributes.paragraphStyle.setLineBreakMode(lines);
    const double height =
        boundingRectWithSize(text, rect.size, NSStringDrawingUsesLineFragmentOrigin, attributes).size.height;
    context->saveGState();
    context->clipToRect(rect);
    drawInRect(
        text,
        CGRectMake(rect.origin.x, rect.origin.y + (rect.size.height - height) / 2.0, rect.size.width, height),
        attributes);
    context->restoreGState();
}

} // namespace platform::style
