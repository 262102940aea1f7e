// Affine maps of the plane: x' = a x + c y + tx, y' = b x + d y + ty.
#pragma once

#include "platform/draw/CGGeometry.h"

namespace platform {

struct CGAffineTransform {
    double a = 1.0;
    double b = 0.0;
    double c = 0.0;
    double d = 1.0;
    double tx = 0.0;
    double ty = 0.0;
    friend bool operator==(const CGAffineTransform&, const CGAffineTransform&) = default;
};

inline constexpr CGAffineTransform CGAffineTransformIdentity{};

constexpr CGAffineTransform CGAffineTransformMakeTranslation(double tx, double ty) {
    return {.a = 1.0, .b = 0.0, .c = 0.0, .d = 1.0, .tx = tx, .ty = ty};
}
constexpr CGAffineTransform CGAffineTransformMakeScale(double sx, double sy) {
    return {.a = sx, .b = 0.0, .c = 0.0, .d = sy, .tx = 0.0, .ty = 0.0};
}
/// `angle` in radians; a positive one turns clockwise where y points down.
CGAffineTransform CGAffineTransformMakeRotation(double angle);

/// First `first`, then `second`.
constexpr CGAffineTransform CGAffineTransformConcat(const CGAffineTransform& first,
                                                    const CGAffineTransform& second) {
    return {.a = first.a * second.a + first.b * second.c,
            .b = first.a * second.b + first.b * second.d,
            .c = first.c * second.a + first.d * second.c,
            .d = first.c * second.b + first.d * second.d,
            .tx = first.tx * second.a + first.ty * second.c + second.tx,
            .ty = first.tx * second.b + first.ty * second.d + second.ty};
}

// The given map with a scale, a translation or a rotation before it.
constexpr CGAffineTransform CGAffineTransformScale(const CGAffineTransform& map, double sx, double sy) {
    return CGAffineTransformConcat(CGAffineTransformMakeScale(sx, sy), map);
}
constexpr CGAffineTransform CGAffineTransformTranslate(const CGAffineTransform& map, double tx, double ty) {
    return CGAffineTransformConcat(CGAffineTransformMakeTranslation(tx, ty), map);
}
CGAffineTransform CGAffineTransformRotate(const CGAffineTransform& map, double angle);

/// The inverse; a map without one comes back unchanged.
CGAffineTransform CGAffineTransformInvert(const CGAffineTransform& map);
/// False for a map that flattens the plane or holds a number that is not finite.
bool CGAffineTransformIsInvertible(const CGAffineTransform& map);

constexpr CGPoint CGPointApplyAffineTransform(const CGPoint& point, const CGAffineTransform& map) {
    return {.x = map.a * point.x + map.c * point.y + map.tx, .y = map.b * point.x + map.d * point.y + map.ty};
}

/// The smallest rectangle that holds the mapped one, with lengths that are not negative.
CGRect CGRectApplyAffineTransform(const CGRect& rect, const CGAffineTransform& map);

} // namespace platform
