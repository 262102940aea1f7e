// Geometry and looks of views; the tree, layout and drawing lie in files of their own.
#include "platform/view/UIView.h"

#include "platform/view/UIGestureRecognizer.h"
#include "platform/view/UIWindow.h"
#include "platform/view/ViewLayer.h"

#include <algorithm>
#include <cmath>

namespace platform {

UIView::UIView(const CGRect& frame)
    : rect_(CGRectStandardize(frame)), bounds_({.origin = {}, .size = rect_.size}) {}

UIView::~UIView() {
    for (const Ref<UIGestureRecognizer>& recognizer : recognizers_) {
        recognizer->attach(nullptr);
    }
    for (const Ref<UIView>& child : subviews_) {
        child->superview_ = nullptr;
    }
}

CGRect UIView::frame() const {
    if (transform_ == CGAffineTransformIdentity) {
        return rect_;
    }
    return CGRectApplyAffineTransform(bounds_, transformToSuperview());
}

void UIView::setFrame(const CGRect& frame) {
    const CGRect area = CGRectStandardize(frame);
    if (area == rect_) {
        return;
    }
    const bool sized = area.size != rect_.size;
    rect_ = area;
    bounds_.size = area.size;
    if (sized) {
        resized();
    }
    appearanceChanged();
}

void UIView::setBounds(const CGRect& bounds) {
    const CGRect area = CGRectStandardize(bounds);
    if (area == bounds_) {
        return;
    }
    const bool sized = area.size != bounds_.size;
    if (sized) {
        const CGPoint middle = center();
        rect_ = CGRectMake(middle.x - area.size.width / 2.0, middle.y - area.size.height / 2.0,
                           area.size.width, area.size.height);
    }
    bounds_ = area;
    if (sized) {
        resized();
    }
    appearanceChanged();
}

CGPoint UIView::center() const noexcept {
    return {.x = rect_.origin.x + rect_.size.width / 2.0, .y = rect_.origin.y + rect_.size.height / 2.0};
}

void UIView::setTransform(const CGAffineTransform& transform) {
    if (transform != transform_) {
        transform_ = transform;
        appearanceChanged();
    }
}

CGAffineTransform UIView::transformToSuperview() const {
    const double dx = rect_.origin.x - bounds_.origin.x;
    const double dy = rect_.origin.y - bounds_.origin.y;
    if (transform_ == CGAffineTransformIdentity) {
        return CGAffineTransformMakeTranslation(dx, dy);
    }
    const CGPoint middle = center();
    const CGAffineTransform toMiddle = CGAffineTransformMakeTranslation(dx - middle.x, dy - middle.y);
    const CGAffineTransform back = CGAffineTransformMakeTranslation(middle.x, middle.y);
    return CGAffineTransformConcat(CGAffineTransformConcat(toMiddle, transform_), back);
}

CGAffineTransform UIView::transformToWindow() const {
    CGAffineTransform map = CGAffineTransformIdentity;
    for (const UIView* view = this; view->superview_ != nullptr; view = view->superview_) {
        map = CGAffineTransformConcat(map, view->transformToSuperview());
    }
    return map;
}

CGPoint UIView::convertPointToWindow(const CGPoint& point) const {
    return CGPointApplyAffineTransform(point, transformToWindow());
}

CGPoint UIView::convertPointFromWindow(const CGPoint& point) const {
    return CGPointApplyAffineTransform(point, CGAffineTransformInvert(transformToWindow()));
}

CGPoint UIView::convertPointToView(const CGPoint& point, const UIView& view) const {
    return view.convertPointFromWindow(convertPointToWindow(point));
}

CGRect UIView::convertRectToView(const CGRect& rect, const UIView& view) const {
    const CGAffineTransform map =
        CGAffineTransformConcat(transformToWindow(), CGAffineTransformInvert(view.transformToWindow()));
    return CGRectApplyAffineTransform(rect, map);
}

void UIView::setClipsToBounds(bool clips) {
    clipsToBounds_ = clips;
    appearanceChanged();
}

void UIView::setAlpha(double alpha) {
    const double clipped = alpha > 0.0 ? std::min(alpha, 1.0) : 0.0;
    if (clipped != alpha_) {
        alpha_ = clipped;
        appearanceChanged();
    }
}

void UIView::setHidden(bool hidden) {
    if (hidden != hidden_) {
        hidden_ = hidden;
        appearanceChanged();
    }
}

void UIView::setBackgroundColor(std::optional<UIColor> color) {
    if (color != backgroundColor_) {
        backgroundColor_ = color;
        setNeedsDisplay();
    }
}

void UIView::resized() {
    setNeedsLayout();
    setNeedsDisplay();
}

void UIView::appearanceChanged() const noexcept {
    if (UIWindow* shown = window()) {
        shown->noteChange();
    }
}

} // namespace platform
