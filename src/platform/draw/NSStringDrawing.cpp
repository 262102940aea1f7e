#include "platform/draw/NSStringDrawing.h"

#include "platform/draw/CGContext.h"
#include "platform/draw/TextBlock.h"

#include <limits>

namespace platform {

namespace {

TextBlockKey keyOf(std::string_view text, double width, const NSStringAttributes& attributes) {
    return {.text = text,
            .font = attributes.font,
            .width = width,
            .alignment = attributes.paragraphStyle.alignment(),
            .lineBreakMode = attributes.paragraphStyle.lineBreakMode()};
}

} // namespace

CGRect boundingRectWithSize(std::string_view text, const CGSize& size, std::int64_t options,
                            const NSStringAttributes& attributes, const CGContext* /*context*/) {
    const bool severalLines = (options & NSStringDrawingUsesLineFragmentOrigin) != 0;
    const double width = severalLines ? size.width : std::numeric_limits<double>::infinity();
    return {.origin = {}, .size = laidOut(keyOf(text, width, attributes)).size()};
}

void drawInRect(std::string_view text, const CGRect& rect, const NSStringAttributes& attributes) {
    if (CGContext* context = UIGraphicsGetCurrentContext()) {
        context->drawText(laidOut(keyOf(text, CGRectGetWidth(rect), attributes)),
                          {.x = CGRectGetMinX(rect), .y = CGRectGetMinY(rect)}, attributes.foregroundColor);
    }
}

} // namespace platform
