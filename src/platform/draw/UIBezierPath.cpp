#include "platform/draw/UIBezierPath.h"

#include "platform/draw/CGContext.h"
#include "platform/draw/NumberText.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace platform {

namespace {

using Kind = PathElement::Kind;

// Control points of a cubic that comes closest to a quarter of a circle lie at this share of the radius:
// 4/3 (sqrt(2) - 1).
constexpr double kQuarterArc = 0.5522847498307936;
constexpr int kChordsOfCurve = 64;

CGPoint pointOfCurve(const CGPoint& start, const PathElement& curve, double t) {
    const double u = 1.0 - t;
    const double w0 = u * u * u;
    const double w1 = 3.0 * u * u * t;
    const double w2 = 3.0 * u * t * t;
    const double w3 = t * t * t;
    return {.x = w0 * start.x + w1 * curve.control1.x + w2 * curve.control2.x + w3 * curve.end.x,
            .y = w0 * start.y + w1 * curve.control1.y + w2 * curve.control2.y + w3 * curve.end.y};
}

// What the edge from a to b adds to the winding number of p: edges that pass to the right of the point count.
// Half-open in y, and a point on an edge counts as right of it.
int windingOfEdge(const CGPoint& a, const CGPoint& b, const CGPoint& p) {
    const bool down = a.y <= p.y && p.y < b.y;
    const bool up = b.y <= p.y && p.y < a.y;
    if (!down && !up) {
        return 0;
    }
    const double crossing = a.x + (p.y - a.y) / (b.y - a.y) * (b.x - a.x);
    if (!(crossing > p.x)) {
        return 0;
    }
    return down ? 1 : -1;
}

void append(std::string& line, const CGPoint& point) {
    appendNumber(line, point.x);
    appendNumber(line, point.y);
}

} // namespace

UIBezierPath UIBezierPath::bezierPathWithRect(const CGRect& rect) {
    UIBezierPath path;
    const double left = CGRectGetMinX(rect);
    const double right = CGRectGetMaxX(rect);
    const double top = CGRectGetMinY(rect);
    const double bottom = CGRectGetMaxY(rect);
    path.moveToPoint({.x = left, .y = top});
    path.addLineToPoint({.x = right, .y = top});
    path.addLineToPoint({.x = right, .y = bottom});
    path.addLineToPoint({.x = left, .y = bottom});
    path.closePath();
    path.shape_ = Shape::rect;
    path.shapeRect_ = rect;
    return path;
}

UIBezierPath UIBezierPath::bezierPathWithOvalInRect(const CGRect& rect) {
    UIBezierPath path;
    const double rx = CGRectGetWidth(rect) / 2.0;
    const double ry = CGRectGetHeight(rect) / 2.0;
    const double cx = CGRectGetMidX(rect);
    const double cy = CGRectGetMidY(rect);
    const double kx = rx * kQuarterArc;
    const double ky = ry * kQuarterArc;
    path.moveToPoint({.x = cx + rx, .y = cy});
    path.addCurveToPoint({.x = cx, .y = cy + ry}, {.x = cx + rx, .y = cy + ky}, {.x = cx + kx, .y = cy + ry});
    path.addCurveToPoint({.x = cx - rx, .y = cy}, {.x = cx - kx, .y = cy + ry}, {.x = cx - rx, .y = cy + ky});
    path.addCurveToPoint({.x = cx, .y = cy - ry}, {.x = cx - rx, .y = cy - ky}, {.x = cx - kx, .y = cy - ry});
    path.addCurveToPoint({.x = cx + rx, .y = cy}, {.x = cx + kx, .y = cy - ry}, {.x = cx + rx, .y = cy - ky});
    path.closePath();
    path.shape_ = Shape::oval;
    path.shapeRect_ = rect;
    return path;
}

UIBezierPath UIBezierPath::bezierPathWithRoundedRect(const CGRect& rect, double cornerRadius) {
    UIBezierPath path;
    if (!(rect.size.width > 0.0 && rect.size.height > 0.0)) {
        return path;
    }
    const double left = rect.origin.x;
    const double right = rect.origin.x + rect.size.width;
    const double top = rect.origin.y;
    const double bottom = rect.origin.y + rect.size.height;
    const double r = std::clamp(cornerRadius, 0.0, std::min(rect.size.width, rect.size.height) / 2.0);
    const double k = r - r * kQuarterArc; // from the corner to a control point
    path.moveToPoint({.x = left + r, .y = top});
    path.addLineToPoint({.x = right - r, .y = top});
    path.addCurveToPoint({.x = right, .y = top + r}, {.x = right - k, .y = top}, {.x = right, .y = top + k});
    path.addLineToPoint({.x = right, .y = bottom - r});
    path.addCurveToPoint({.x = right - r, .y = bottom}, {.x = right, .y = bottom - k},
                         {.x = right - k, .y = bottom});
    path.addLineToPoint({.x = left + r, .y = bottom});
    path.addCurveToPoint({.x = left, .y = bottom - r}, {.x = left + k, .y = bottom},
                         {.x = left, .y = bottom - k});
    path.addLineToPoint({.x = left, .y = top + r});
    path.addCurveToPoint({.x = left + r, .y = top}, {.x = left, .y = top + k}, {.x = left + k, .y = top});
    path.closePath();
    path.shape_ = Shape::roundedRect;
    path.shapeRect_ = rect;
    path.cornerRadius_ = cornerRadius;
    return path;
}

void UIBezierPath::moveToPoint(const CGPoint& point) {
    edited();
    elements_.push_back({.kind = Kind::move, .control1 = {}, .control2 = {}, .end = point});
}

void UIBezierPath::addLineToPoint(const CGPoint& point) {
    if (!elements_.empty()) {
        edited();
        elements_.push_back({.kind = Kind::line, .control1 = {}, .control2 = {}, .end = point});
    }
}

void UIBezierPath::addCurveToPoint(const CGPoint& end, const CGPoint& controlPoint1,
                                   const CGPoint& controlPoint2) {
    if (!elements_.empty()) {
        edited();
        elements_.push_back(
            {.kind = Kind::curve, .control1 = controlPoint1, .control2 = controlPoint2, .end = end});
    }
}

void UIBezierPath::closePath() {
    if (elements_.empty() || elements_.back().kind == Kind::close) {
        return;
    }
    edited();
    const auto start =
        std::ranges::find(elements_.rbegin(), elements_.rend(), Kind::move, &PathElement::kind);
    elements_.push_back({.kind = Kind::close, .control1 = {}, .control2 = {}, .end = start->end});
}

void UIBezierPath::removeAllPoints() {
    edited();
    elements_.clear();
}

void UIBezierPath::stroke() const {
    if (CGContext* context = UIGraphicsGetCurrentContext()) {
        context->strokePath(*this);
    }
}

void UIBezierPath::fill() const {
    if (CGContext* context = UIGraphicsGetCurrentContext()) {
        context->fillPath(*this);
    }
}

CGRect UIBezierPath::bounds() const {
    if (elements_.empty()) {
        return CGRectZero;
    }
    constexpr double kFar = std::numeric_limits<double>::infinity();
    double minX = kFar;
    double minY = kFar;
    double maxX = -kFar;
    double maxY = -kFar;
    const auto include = [&](const CGPoint& point) {
        minX = std::min(minX, point.x);
        minY = std::min(minY, point.y);
        maxX = std::max(maxX, point.x);
        maxY = std::max(maxY, point.y);
    };
    for (const PathElement& element : elements_) {
        if (element.kind == Kind::curve) {
            include(element.control1);
            include(element.control2);
        }
        include(element.end);
    }
    return CGRectMake(minX, minY, maxX - minX, maxY - minY);
}

bool UIBezierPath::containsPoint(const CGPoint& point) const {
    int winding = 0;
    CGPoint start;
    CGPoint at;
    for (const PathElement& element : elements_) {
        switch (element.kind) {
        case Kind::move:
            winding += windingOfEdge(at, start, point); // an open part is closed for the test
            start = element.end;
            break;
        case Kind::line:
        case Kind::close:
            winding += windingOfEdge(at, element.end, point);
            break;
        case Kind::curve: {
            CGPoint from = at;
            for (int chord = 1; chord <= kChordsOfCurve; ++chord) {
                const CGPoint to = chord == kChordsOfCurve
                                       ? element.end
                                       : pointOfCurve(at, element, chord / double{kChordsOfCurve});
                winding += windingOfEdge(from, to, point);
                from = to;
            }
            break;
        }
        }
        at = element.end;
    }
    winding += windingOfEdge(at, start, point);
    return winding != 0;
}

std::string UIBezierPath::description() const {
    if (shape_ != Shape::free) {
        std::string line = shape_ == Shape::rect ? "rect" : shape_ == Shape::oval ? "oval" : "roundedRect";
        append(line, shapeRect_.origin);
        appendNumber(line, shapeRect_.size.width);
        appendNumber(line, shapeRect_.size.height);
        if (shape_ == Shape::roundedRect) {
            line += " radius";
            appendNumber(line, cornerRadius_);
        }
        return line;
    }
    std::string line = "path";
    for (const PathElement& element : elements_) {
        switch (element.kind) {
        case Kind::move:
            line += " move";
            append(line, element.end);
            break;
        case Kind::line:
            line += " line";
            append(line, element.end);
            break;
        case Kind::curve:
            line += " curve";
            append(line, element.end);
            line += " controls";
            append(line, element.control1);
            append(line, element.control2);
            break;
        case Kind::close:
            line += " close";
            break;
        }
    }
    return line;
}

} // namespace platform
