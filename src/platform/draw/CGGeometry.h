// Points, sizes and rectangles. All values are doubles, in points unless said otherwise; y grows downwards.
#pragma once

namespace platform {

struct CGPoint {
    double x = 0.0;
    double y = 0.0;
    friend bool operator==(const CGPoint&, const CGPoint&) = default;
};

struct CGSize {
    double width = 0.0;
    double height = 0.0;
    friend bool operator==(const CGSize&, const CGSize&) = default;
};

/// A rectangle; a negative width or height is allowed and runs leftwards or upwards from the origin.
struct CGRect {
    CGPoint origin;
    CGSize size;
    friend bool operator==(const CGRect&, const CGRect&) = default;
};

inline constexpr CGPoint CGPointZero{};
inline constexpr CGSize CGSizeZero{};
inline constexpr CGRect CGRectZero{};

constexpr CGPoint CGPointMake(double x, double y) {
    return {.x = x, .y = y};
}
constexpr CGSize CGSizeMake(double width, double height) {
    return {.width = width, .height = height};
}
constexpr CGRect CGRectMake(double x, double y, double width, double height) {
    return {.origin = {.x = x, .y = y}, .size = {.width = width, .height = height}};
}

/// Equal field by field; NaN equals nothing.
constexpr bool CGRectEqualToRect(const CGRect& a, const CGRect& b) {
    return a == b;
}

/// The same area with a width and height that are not negative.
constexpr CGRect CGRectStandardize(CGRect rect) {
    if (rect.size.width < 0.0) {
        rect.origin.x += rect.size.width;
        rect.size.width = -rect.size.width;
    }
    if (rect.size.height < 0.0) {
        rect.origin.y += rect.size.height;
        rect.size.height = -rect.size.height;
    }
    return rect;
}

// The edges and lengths of the standardised rectangle.
constexpr double CGRectGetMinX(const CGRect& rect) {
    return CGRectStandardize(rect).origin.x;
}
constexpr double CGRectGetMinY(const CGRect& rect) {
    return CGRectStandardize(rect).origin.y;
}
constexpr double CGRectGetWidth(const CGRect& rect) {
    return CGRectStandardize(rect).size.width;
}
constexpr double CGRectGetHeight(const CGRect& rect) {
    return CGRectStandardize(rect).size.height;
}
constexpr double CGRectGetMaxX(const CGRect& rect) {
    return CGRectGetMinX(rect) + CGRectGetWidth(rect);
}
constexpr double CGRectGetMaxY(const CGRect& rect) {
    return CGRectGetMinY(rect) + CGRectGetHeight(rect);
}
constexpr double CGRectGetMidX(const CGRect& rect) {
    return CGRectGetMinX(rect) + CGRectGetWidth(rect) / 2.0;
}
constexpr double CGRectGetMidY(const CGRect& rect) {
    return CGRectGetMinY(rect) + CGRectGetHeight(rect) / 2.0;
}

/// True where the rectangle has no area; a NaN length counts as none.
constexpr bool CGRectIsEmpty(const CGRect& rect) {
    return !(CGRectGetWidth(rect) > 0.0 && CGRectGetHeight(rect) > 0.0);
}

/// Half-open: the left and top edges belong to the rectangle, the right and bottom ones don't. NaN is
/// outside.
constexpr bool CGRectContainsPoint(const CGRect& rect, const CGPoint& point) {
    return point.x >= CGRectGetMinX(rect) && point.x < CGRectGetMaxX(rect) &&
           point.y >= CGRectGetMinY(rect) && point.y < CGRectGetMaxY(rect);
}

/// True where the two share an area, or one without an area lies strictly inside the other. Rectangles that
/// only touch don't intersect, nor does anything with NaN.
constexpr bool CGRectIntersectsRect(const CGRect& a, const CGRect& b) {
    return CGRectGetMinX(a) < CGRectGetMaxX(b) && CGRectGetMinX(b) < CGRectGetMaxX(a) &&
           CGRectGetMinY(a) < CGRectGetMaxY(b) && CGRectGetMinY(b) < CGRectGetMaxY(a);
}

/// The common area; `CGRectZero` where there is none.
constexpr CGRect CGRectIntersection(const CGRect& a, const CGRect& b) {
    if (!CGRectIntersectsRect(a, b)) {
        return CGRectZero;
    }
    const auto larger = [](double x, double y) { return x < y ? y : x; };
    const auto smaller = [](double x, double y) { return y < x ? y : x; };
    const double x = larger(CGRectGetMinX(a), CGRectGetMinX(b));
    const double y = larger(CGRectGetMinY(a), CGRectGetMinY(b));
    return CGRectMake(x, y, smaller(CGRectGetMaxX(a), CGRectGetMaxX(b)) - x,
                      smaller(CGRectGetMaxY(a), CGRectGetMaxY(b)) - y);
}

/// Moved by dx, dy.
constexpr CGRect CGRectOffset(const CGRect& rect, double dx, double dy) {
    return CGRectMake(rect.origin.x + dx, rect.origin.y + dy, rect.size.width, rect.size.height);
}

/// Made smaller by dx at the left and right and by dy at the top and bottom; larger for negative ones.
constexpr CGRect CGRectInset(const CGRect& rect, double dx, double dy) {
    const CGRect area = CGRectStandardize(rect);
    return CGRectMake(area.origin.x + dx, area.origin.y + dy, area.size.width - 2.0 * dx,
                      area.size.height - 2.0 * dy);
}

} // namespace platform
