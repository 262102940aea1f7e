#include "interface/Resizing.h"

#include <algorithm>
#include <cmath>

namespace qor::resizing {

namespace {

CGSize factors(Case behaviour, const CGRect& rect, const CGRect& target) {
    const double w = std::abs(target.size.width / rect.size.width);
    const double h = std::abs(target.size.height / rect.size.height);
    switch (behaviour) {
    case aspectFit:
        return {.width = std::min(w, h), .height = std::min(w, h)};
    case aspectFill:
        return {.width = std::max(w, h), .height = std::max(w, h)};
    case stretch:
        return {.width = w, .height = h};
    case center:
        break;
    }
    return {.width = 1.0, .height = 1.0};
}

} // namespace

CGRect apply(Case behaviour, const CGRect& rect, const CGRect& target, CGSize& scale) {
    if (CGRectEqualToRect(rect, target) || CGRectEqualToRect(target, CGRectZero)) {
        return rect;
    }
    scale = factors(behaviour, rect, target);
    CGRect result = CGRectStandardize(rect);
    result.size.width *= scale.width;
    result.size.height *= scale.height;
    result.origin.x = CGRectGetMinX(target) + (CGRectGetWidth(target) - result.size.width) / 2.0;
    result.origin.y = CGRectGetMinY(target) + (CGRectGetHeight(target) - result.size.height) / 2.0;
    return result;
}

void fit(CGContext& context, const CGSize& canvas, const CGRect& fitted) {
    CGContextTranslateCTM(context, CGRectGetMinX(fitted), CGRectGetMinY(fitted));
    CGContextScaleCTM(context, CGRectGetWidth(fitted) / canvas.width,
                      CGRectGetHeight(fitted) / canvas.height);
}

} // namespace qor::resizing
