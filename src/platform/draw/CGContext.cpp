#include "platform/draw/CGContext.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace platform {

namespace {

// Drawing belongs to the main thread, but a command line or a test may draw on any: each has its own stack.
std::vector<CGContext*>& contextStack() {
    thread_local std::vector<CGContext*> stack;
    return stack;
}

bool dashes(const std::vector<double>& lengths) {
    const bool valid =
        std::ranges::all_of(lengths, [](double length) { return std::isfinite(length) && length >= 0.0; });
    return valid && std::ranges::any_of(lengths, [](double length) { return length > 0.0; });
}

} // namespace

bool CGContext::drawable() const {
    return wantsInvisible() || (!state_.drawsNothing && CGAffineTransformIsInvertible(state_.ctm));
}

void CGContext::saveGState() {
    saved_.push_back(state_);
    onSave();
}

void CGContext::restoreGState() {
    if (saved_.empty()) {
        return;
    }
    state_ = std::move(saved_.back());
    saved_.pop_back();
    onRestore();
}

void CGContext::translateCTM(double tx, double ty) {
    state_.ctm = CGAffineTransformTranslate(state_.ctm, tx, ty);
    onTranslate(tx, ty);
}

void CGContext::scaleCTM(double sx, double sy) {
    state_.ctm = CGAffineTransformScale(state_.ctm, sx, sy);
    onScale(sx, sy);
}

void CGContext::rotateCTM(double angle) {
    state_.ctm = CGAffineTransformRotate(state_.ctm, angle);
    onRotate(angle);
}

void CGContext::clipToRect(const CGRect& rect) {
    // A clip through a matrix that flattens leaves no area, whatever the matrix becomes later.
    const bool visible = drawable();
    state_.drawsNothing = state_.drawsNothing || !CGAffineTransformIsInvertible(state_.ctm);
    if (visible) {
        onClip(rect);
    }
}

void CGContext::setLineDash(double phase, std::vector<double> lengths) {
    const bool solid = !std::isfinite(phase) || !dashes(lengths);
    state_.dashPhase = solid ? 0.0 : phase;
    state_.dashLengths = solid ? std::vector<double>() : std::move(lengths);
    onDash();
}

void CGContext::setStrokeColor(const UIColor& color) {
    state_.stroke = color;
}

void CGContext::setFillColor(const UIColor& color) {
    state_.fill = color;
}

void CGContext::strokePath(const UIBezierPath& path) {
    if (drawable()) {
        onStroke(path);
    }
}

void CGContext::fillPath(const UIBezierPath& path) {
    if (drawable()) {
        onFill(path);
    }
}

void CGContext::drawText(const TextBlock& text, const CGPoint& origin, const UIColor& color) {
    if (drawable()) {
        onText(text, origin, color);
    }
}

void CGContext::drawImage(const UIImage& image, const CGRect& rect) {
    if (drawable()) {
        onImage(image, rect);
    }
}

CGContext* UIGraphicsGetCurrentContext() {
    const auto& stack = contextStack();
    return stack.empty() ? nullptr : stack.back();
}

void UIGraphicsPushContext(CGContext& context) {
    contextStack().push_back(&context);
}

void UIGraphicsPopContext() {
    auto& stack = contextStack();
    if (!stack.empty()) {
        stack.pop_back();
    }
}

} // namespace platform
