#include "platform/draw/CGAffineTransform.h"

#include <algorithm>
#include <cmath>

namespace platform {

CGAffineTransform CGAffineTransformMakeRotation(double angle) {
    const double sine = std::sin(angle);
    const double cosine = std::cos(angle);
    return {.a = cosine, .b = sine, .c = -sine, .d = cosine, .tx = 0.0, .ty = 0.0};
}

CGAffineTransform CGAffineTransformRotate(const CGAffineTransform& map, double angle) {
    return CGAffineTransformConcat(CGAffineTransformMakeRotation(angle), map);
}

bool CGAffineTransformIsInvertible(const CGAffineTransform& map) {
    const double determinant = map.a * map.d - map.b * map.c;
    return std::isfinite(determinant) && determinant != 0.0 && std::isfinite(map.a) && std::isfinite(map.b) &&
           std::isfinite(map.c) && std::isfinite(map.d) && std::isfinite(map.tx) && std::isfinite(map.ty);
}

CGAffineTransform CGAffineTransformInvert(const CGAffineTransform& map) {
    if (!CGAffineTransformIsInvertible(map)) {
        return map;
    }
    const double determinant = map.a * map.d - map.b * map.c;
    return {.a = map.d / determinant,
            .b = -map.b / determinant,
            .c = -map.c / determinant,
            .d = map.a / determinant,
            .tx = (map.c * map.ty - map.d * map.tx) / determinant,
            .ty = (map.b * map.tx - map.a * map.ty) / determinant};
}

CGRect CGRectApplyAffineTransform(const CGRect& rect, const CGAffineTransform& map) {
    const CGRect area = CGRectStandardize(rect);
    // A map without rotation keeps the lengths as single products, so that they don't pick up the rounding of
    // the edges.
    if (map.b == 0.0 && map.c == 0.0) {
        return CGRectStandardize(CGRectMake(map.a * area.origin.x + map.tx, map.d * area.origin.y + map.ty,
                                            map.a * area.size.width, map.d * area.size.height));
    }
    const double left = CGRectGetMinX(area);
    const double right = CGRectGetMaxX(area);
    const double top = CGRectGetMinY(area);
    const double bottom = CGRectGetMaxY(area);
    const CGPoint corners[] = {
        CGPointApplyAffineTransform({.x = left, .y = top}, map),
        CGPointApplyAffineTransform({.x = right, .y = top}, map),
        CGPointApplyAffineTransform({.x = left, .y = bottom}, map),
        CGPointApplyAffineTransform({.x = right, .y = bottom}, map),
    };
    const auto [minX, maxX] = std::minmax({corners[0].x, corners[1].x, corners[2].x, corners[3].x});
    const auto [minY, maxY] = std::minmax({corners[0].y, corners[1].y, corners[2].y, corners[3].y});
    return CGRectMake(minX, minY, maxX - minX, maxY - minY);
}

} // namespace platform
