#include "platform/draw/CairoContext.h"

#include "platform/draw/CairoSupport.h"
#include "platform/draw/TextBlock.h"

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

// Cairo counts in 256ths of a pixel with 32 bits; what lies beyond this many pixels is out of every picture.
constexpr double kFarthest = 4.0e6;
// A map below this area factor makes a whole screen smaller than a pixel, and one with larger elements puts
// every shape out of sight or over all of it.
constexpr double kSmallestArea = 1e-12;
constexpr double kLargestElement = 1e7;
// Wider pens cover everything; Cairo's round pens grow without bound with their width.
constexpr double kWidestPen = 1e5;
constexpr double kSoftEdge = 1.0; // what smooth edges touch beyond a shape, in pixels

bool usable(const CGAffineTransform& map) {
    const double largest = std::max({std::abs(map.a), std::abs(map.b), std::abs(map.c), std::abs(map.d)});
    return CGAffineTransformIsInvertible(map) && largest < kLargestElement &&
           std::abs(map.a * map.d - map.b * map.c) > kSmallestArea;
}

cairo_matrix_t matrixOf(const CGAffineTransform& map) {
    cairo_matrix_t matrix;
    cairo_matrix_init(&matrix, map.a, map.b, map.c, map.d, map.tx, map.ty);
    return matrix;
}

cairo_line_cap_t capOf(CGLineCap cap) {
    switch (cap) {
    case CGLineCap::round:
        return CAIRO_LINE_CAP_ROUND;
    case CGLineCap::square:
        return CAIRO_LINE_CAP_SQUARE;
    case CGLineCap::butt:
        break;
    }
    return CAIRO_LINE_CAP_BUTT;
}

cairo_line_join_t joinOf(CGLineJoin join) {
    switch (join) {
    case CGLineJoin::round:
        return CAIRO_LINE_JOIN_ROUND;
    case CGLineJoin::bevel:
        return CAIRO_LINE_JOIN_BEVEL;
    case CGLineJoin::miter:
        break;
    }
    return CAIRO_LINE_JOIN_MITER;
}

void setSource(cairo_t* cairo, const UIColor& color) {
    cairo_set_source_rgba(cairo, color.red(), color.green(), color.blue(), color.alpha());
}

} // namespace

CairoContext::CairoContext(cairo_t* cairo) : cairo_(cairo_reference(cairo)) {
    cairo_matrix_t matrix;
    cairo_get_matrix(cairo, &matrix);
    base_ = {
        .a = matrix.xx, .b = matrix.yx, .c = matrix.xy, .d = matrix.yy, .tx = matrix.x0, .ty = matrix.y0};
    cairo_save(cairo_);
}

CairoContext::~CairoContext() {
    for (std::size_t depth = stateDepth(); depth > 0; --depth) {
        cairo_restore(cairo_);
    }
    cairo_restore(cairo_);
    cairo_destroy(cairo_);
}

bool CairoContext::ok() const {
    return cairo_status(cairo_) == CAIRO_STATUS_SUCCESS;
}

CGAffineTransform CairoContext::deviceMap() const {
    return CGAffineTransformConcat(ctm(), base_);
}

void CairoContext::Extent::include(double x, double y) {
    left = std::min(left, x);
    top = std::min(top, y);
    right = std::max(right, x);
    bottom = std::max(bottom, y);
}

CGRect CairoContext::inked() const {
    if (!(ink_.left < ink_.right && ink_.top < ink_.bottom)) {
        return CGRectZero;
    }
    return CGRectMake(ink_.left, ink_.top, ink_.right - ink_.left, ink_.bottom - ink_.top);
}

void CairoContext::willDraw(double margin) {
    cairo_matrix_t before;
    cairo_get_matrix(cairo_, &before);
    cairo_identity_matrix(cairo_);
    Extent clip;
    cairo_clip_extents(cairo_, &clip.left, &clip.top, &clip.right, &clip.bottom);
    cairo_set_matrix(cairo_, &before);
    const double left = std::max(clip.left, path_.left - margin);
    const double top = std::max(clip.top, path_.top - margin);
    const double right = std::min(clip.right, path_.right + margin);
    const double bottom = std::min(clip.bottom, path_.bottom + margin);
    if (left < right && top < bottom) {
        ink_.include(left, top);
        ink_.include(right, bottom);
    }
}

// Leaves the path in device space with the identity matrix set. False if it has no place on a surface.
bool CairoContext::addPath(const UIBezierPath& path, const CGAffineTransform& map) {
    cairo_identity_matrix(cairo_);
    cairo_new_path(cairo_);
    path_ = {};
    bool finite = true;
    const auto placed = [&](const CGPoint& point) {
        const CGPoint device = CGPointApplyAffineTransform(point, map);
        finite = finite && std::isfinite(device.x) && std::isfinite(device.y);
        const CGPoint held = CGPointMake(std::clamp(device.x, -kFarthest, kFarthest),
                                         std::clamp(device.y, -kFarthest, kFarthest));
        path_.include(held.x, held.y); // a curve lies within its four points
        return held;
    };
    for (const PathElement& element : path.elements()) {
        const CGPoint end = placed(element.end);
        const bool curved = element.kind == PathElement::Kind::curve;
        const CGPoint control1 = curved ? placed(element.control1) : CGPoint();
        const CGPoint control2 = curved ? placed(element.control2) : CGPoint();
        if (!finite) {
            cairo_new_path(cairo_);
            return false;
        }
        switch (element.kind) {
        case PathElement::Kind::move:
            cairo_move_to(cairo_, end.x, end.y);
            break;
        case PathElement::Kind::line:
            cairo_line_to(cairo_, end.x, end.y);
            break;
        case PathElement::Kind::curve:
            cairo_curve_to(cairo_, control1.x, control1.y, control2.x, control2.y, end.x, end.y);
            break;
        case PathElement::Kind::close:
            cairo_close_path(cairo_);
            break;
        }
    }
    return true;
}

void CairoContext::onSave() {
    cairo_save(cairo_);
}

void CairoContext::onRestore() {
    cairo_restore(cairo_);
}

void CairoContext::onClip(const CGRect& rect) {
    const CGAffineTransform map = deviceMap();
    // Without a usable path the clip is that of an empty one: nothing is left.
    if (!usable(map) || !addPath(UIBezierPath::bezierPathWithRect(rect), map)) {
        cairo_identity_matrix(cairo_);
        cairo_new_path(cairo_);
    }
    cairo_clip(cairo_);
}

void CairoContext::onStroke(const UIBezierPath& path) {
    const CGAffineTransform map = deviceMap();
    const double width = path.lineWidth();
    if (!(width > 0.0) || !usable(map) || !addPath(path, map)) {
        return;
    }
    const double largest = std::max({std::abs(map.a), std::abs(map.b), std::abs(map.c), std::abs(map.d)});
    const cairo_matrix_t matrix = matrixOf(map);
    cairo_set_matrix(cairo_, &matrix);
    cairo_set_line_width(cairo_, std::min(width, kWidestPen / largest));
    cairo_set_line_cap(cairo_, capOf(path.lineCapStyle()));
    cairo_set_line_join(cairo_, joinOf(path.lineJoinStyle()));
    const auto& lengths = state().dashLengths;
    cairo_set_dash(cairo_, lengths.data(), static_cast<int>(lengths.size()), state().dashPhase);
    setSource(cairo_, state().stroke);
    // Square caps and mitred joins reach further out than half the pen.
    willDraw(std::hypot(std::hypot(map.a, map.b), std::hypot(map.c, map.d)) * cairo_get_line_width(cairo_) *
                 std::max(1.0, cairo_get_miter_limit(cairo_)) / 2.0 +
             kSoftEdge);
    cairo_stroke(cairo_);
}

void CairoContext::fillWith(const UIBezierPath& path, const CGAffineTransform& map, const UIColor& color) {
    if (!usable(map) || !addPath(path, map)) {
        return;
    }
    cairo_set_fill_rule(cairo_, CAIRO_FILL_RULE_WINDING);
    setSource(cairo_, color);
    willDraw(kSoftEdge);
    cairo_fill(cairo_);
}

void CairoContext::onFill(const UIBezierPath& path) {
    fillWith(path, deviceMap(), state().fill);
}

void CairoContext::onText(const TextBlock& text, const CGPoint& origin, const UIColor& color) {
    fillWith(text.outline(), CGAffineTransformTranslate(deviceMap(), origin.x, origin.y), color);
}

void CairoContext::onImage(const UIImage& image, const CGRect& rect) {
    const CGRect area = CGRectStandardize(rect);
    if (image.pixels().empty() || CGRectIsEmpty(area)) {
        return;
    }
    const CGAffineTransform toArea =
        CGAffineTransformScale(CGAffineTransformMakeTranslation(area.origin.x, area.origin.y),
                               area.size.width / image.pixelWidth(), area.size.height / image.pixelHeight());
    const CGAffineTransform map = CGAffineTransformConcat(toArea, deviceMap());
    if (!usable(map) || !addPath(UIBezierPath::bezierPathWithRect(area), deviceMap())) {
        return;
    }
    const CairoSurface surface = surfaceOver(image);
    const cairo_matrix_t matrix = matrixOf(map);
    cairo_set_matrix(cairo_, &matrix);
    cairo_set_source_surface(cairo_, surface.get(), 0.0, 0.0);
    cairo_pattern_set_extend(cairo_get_source(cairo_), CAIRO_EXTEND_PAD);
    willDraw(kSoftEdge);
    cairo_fill(cairo_);
    setSource(cairo_, UIColor::blackColor()); // lets the picture's surface go
}

} // namespace platform
