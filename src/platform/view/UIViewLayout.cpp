// Layout passes of views.
#include "platform/view/UIView.h"
#include "platform/view/UIViewController.h"
#include "platform/view/UIWindow.h"

#include <algorithm>
#include <optional>

namespace platform {

namespace {

/// What the constraints say of one axis.
struct Axis {
    std::optional<double> start;
    std::optional<double> end;
    std::optional<double> length;
    std::optional<double> middle;

    /// Origin and length; what is not said stays as it was.
    void apply(double& origin, double& extent) const {
        if (start && end) {
            extent = *end - *start;
        } else if (length) {
            extent = *length;
        }
        if (start) {
            origin = *start;
        } else if (end) {
            origin = *end - extent;
        } else if (middle) {
            origin = *middle - extent / 2.0;
        }
    }
};

} // namespace

void UIView::setNeedsLayout() {
    needsLayout_ = true;
    appearanceChanged();
}

void UIView::layoutIfNeeded() {
    constexpr int kPasses = 8; // a pass may ask for another; a loop must not hang the editor
    for (int pass = 0; needsLayout_ && pass < kPasses; ++pass) {
        needsLayout_ = false;
        layoutSubviews();
        if (controller_ != nullptr) {
            controller_->viewDidLayoutSubviews();
        }
    }
    const std::vector<Ref<UIView>> children = subviews_;
    for (const Ref<UIView>& child : children) {
        child->layoutIfNeeded();
    }
}

void UIView::layoutSubviews() {
    for (const Ref<UIView>& child : subviews_) {
        if (!child->constraints_.empty()) {
            layOutByConstraints(*child);
        }
    }
}

void UIView::layOutByConstraints(UIView& child) const {
    Axis across;
    Axis along;
    for (const Ref<NSLayoutConstraint>& constraint : child.constraints_) {
        const double value = constraint->value(*this);
        switch (constraint->firstAttribute) {
        case NSLayoutAttribute::leading:
            across.start = value;
            break;
        case NSLayoutAttribute::trailing:
            across.end = value;
            break;
        case NSLayoutAttribute::width:
            across.length = value;
            break;
        case NSLayoutAttribute::centerX:
            across.middle = value;
            break;
        case NSLayoutAttribute::top:
            along.start = value;
            break;
        case NSLayoutAttribute::bottom:
            along.end = value;
            break;
        case NSLayoutAttribute::height:
            along.length = value;
            break;
        case NSLayoutAttribute::centerY:
            along.middle = value;
            break;
        case NSLayoutAttribute::none:
            break;
        }
    }
    CGRect area = child.rect_;
    across.apply(area.origin.x, area.size.width);
    along.apply(area.origin.y, area.size.height);
    area.size.width = std::max(area.size.width, 0.0);
    area.size.height = std::max(area.size.height, 0.0);
    child.setFrame(area);
}

void UIView::addConstraint(Ref<NSLayoutConstraint> constraint) {
    constraints_.push_back(std::move(constraint));
    if (superview_ != nullptr) {
        superview_->setNeedsLayout();
    }
}

void UIView::removeConstraint(const Ref<NSLayoutConstraint>& constraint) {
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): it may be the element itself
    const Ref<NSLayoutConstraint> keep = constraint;
    std::erase(constraints_, keep);
    if (superview_ != nullptr) {
        superview_->setNeedsLayout();
    }
}

} // namespace platform
