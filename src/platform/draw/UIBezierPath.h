// Paths of lines and cubic curves, with the settings that they are stroked with.
#pragma once

#include "platform/draw/CGAffineTransform.h"

#include <cstdint>
#include <string>
#include <vector>

namespace platform {

enum class CGLineCap : std::int32_t { butt = 0, round = 1, square = 2 };
enum class CGLineJoin : std::int32_t { miter = 0, round = 1, bevel = 2 };

/// One step of a path. A curve uses all three points (two controls, then the end), a move or line only `end`.
struct PathElement {
    enum class Kind : std::uint8_t { move, line, curve, close };
    Kind kind = Kind::move;
    CGPoint control1;
    CGPoint control2;
    CGPoint end;
};

/// A path in the coordinates of whoever draws it. `stroke` and `fill` go to the current context; without one
/// they do nothing. A path is filled by the non-zero winding rule.
class UIBezierPath {
public:
    UIBezierPath() = default;
    static UIBezierPath bezierPathWithRect(const CGRect& rect);
    /// The ellipse inside the rectangle.
    static UIBezierPath bezierPathWithOvalInRect(const CGRect& rect);
    /// Corners are circular arcs; the radius is limited to half of the shorter side. A rectangle of no or
    /// negative width or height gives an empty path.
    static UIBezierPath bezierPathWithRoundedRect(const CGRect& rect, double cornerRadius);

    void moveToPoint(const CGPoint& point);
    /// Ignored while there is no current point, like the next two.
    void addLineToPoint(const CGPoint& point);
    void addCurveToPoint(const CGPoint& end, const CGPoint& controlPoint1, const CGPoint& controlPoint2);
    void closePath();
    void removeAllPoints();

    void setLineWidth(double width) { lineWidth_ = width; }
    void setLineCapStyle(CGLineCap cap) { lineCapStyle_ = cap; }
    void setLineJoinStyle(CGLineJoin join) { lineJoinStyle_ = join; }
    double lineWidth() const { return lineWidth_; }
    CGLineCap lineCapStyle() const { return lineCapStyle_; }
    CGLineJoin lineJoinStyle() const { return lineJoinStyle_; }

    void stroke() const;
    void fill() const;

    bool isEmpty() const { return elements_.empty(); }
    const std::vector<PathElement>& elements() const { return elements_; }
    /// The smallest rectangle around all points, control points included; `CGRectZero` if empty.
    CGRect bounds() const;
    /// By the winding rule; the left and top edges of an area belong to it, the right and bottom ones don't.
    /// Exact for straight edges; curves are taken as 64 chords. NaN and infinities are outside.
    bool containsPoint(const CGPoint& point) const;

    /// The shape in words: "rect 0 0 90 98", or the list of its elements.
    std::string description() const;

private:
    enum class Shape : std::uint8_t { free, rect, oval, roundedRect };
    void edited() { shape_ = Shape::free; }

    std::vector<PathElement> elements_;
    // How a ready-made shape was asked for, as long as nothing is added to it.
    Shape shape_ = Shape::free;
    CGRect shapeRect_;
    double cornerRadius_ = 0.0;
    double lineWidth_ = 1.0;
    CGLineCap lineCapStyle_ = CGLineCap::butt;
    CGLineJoin lineJoinStyle_ = CGLineJoin::miter;
};

} // namespace platform
