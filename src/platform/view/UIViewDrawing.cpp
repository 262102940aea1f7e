// Drawing of views.
#include "platform/draw/CGContext.h"
#include "platform/draw/UIBezierPath.h"
#include "platform/view/UIView.h"
#include "platform/view/UIWindow.h"
#include "platform/view/ViewDrawing.h"
#include "platform/view/ViewLayer.h"

#include <cmath>

namespace platform {

void applyMap(CGContext& context, const CGAffineTransform& map) {
    context.translateCTM(map.tx, map.ty);
    const double angle = std::atan2(map.b, map.a);
    if (angle != 0.0) {
        context.rotateCTM(angle);
    }
    const double across = std::hypot(map.a, map.b);
    const double along = across == 0.0 ? 0.0 : (map.a * map.d - map.b * map.c) / across;
    if (across != 1.0 || along != 1.0) {
        context.scaleCTM(across, along);
    }
}

void UIView::setNeedsDisplay() {
    needsDisplay_ = true;
    drawsNothing_ = false;
    appearanceChanged();
}

void UIView::draw(const CGRect& /*rect*/) {
    drawsNothing_ = true;
}

void UIView::drawHierarchy(CGContext& context) {
    const GraphicsScope scope(context);
    context.saveGState();
    if (clipsToBounds_) {
        context.clipToRect(bounds_);
    }
    drawWithBackground(*this, context);
    for (const Ref<UIView>& child : subviews_) {
        if (child->hidden_ || child->alpha_ <= 0.0) {
            continue;
        }
        context.saveGState();
        applyMap(context, child->transformToSuperview());
        child->drawHierarchy(context);
        context.restoreGState();
    }
    context.restoreGState();
}

void drawWithBackground(UIView& view, CGContext& context) {
    const GraphicsScope scope(context);
    if (const auto& color = view.backgroundColor()) {
        context.setFillColor(*color);
        context.fillPath(UIBezierPath::bezierPathWithRect(view.bounds()));
    }
    context.saveGState();
    view.draw(view.bounds());
    context.restoreGState();
}

} // namespace platform
