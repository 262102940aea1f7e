#include "interface/TextInRect.h"

#include "platform/core/Core.h"

#include <cmath>
#include <limits>

namespace qor {

void drawTextInRect(CGContext& context, std::string_view text, const CGRect& rect, const UIFont& font,
                    const UIColor& color) {
    NSMutableParagraphStyle style;
    style.setAlignment(NSTextAlignment::center);
    const NSStringAttributes attributes{.font = font, .foregroundColor = color, .paragraphStyle = style};
    const CGSize available = CGSizeMake(CGRectGetWidth(rect), std::numeric_limits<double>::infinity());
    const double textHeight =
        boundingRectWithSize(text, available, NSStringDrawingUsesLineFragmentOrigin, attributes, nullptr)
            .size.height;
    CGContextSaveGState(context);
    CGContextClipToRect(context, rect);
    drawInRect(text,
               CGRectMake(CGRectGetMinX(rect),
                          CGRectGetMinY(rect) + (CGRectGetHeight(rect) - textHeight) / 2.0,
                          CGRectGetWidth(rect), textHeight),
               attributes);
    CGContextRestoreGState(context);
}

std::string knobValueText(double value) {
    constexpr double kEnd = 9223372036854775808.0; // 2^63
    const double rounded = std::round(value * 100.0);
    if (!std::isfinite(rounded)) {
        fatalError("Double value cannot be converted to Int because it is either infinite or NaN");
    }
    if (rounded >= kEnd) {
        fatalError(
            "Double value cannot be converted to Int because the result would be greater than Int.max");
    }
    if (rounded < -kEnd) {
        fatalError("Double value cannot be converted to Int because the result would be less than Int.min");
    }
    return platform::text(static_cast<std::int64_t>(rounded));
}

} // namespace qor
