// The tree of views, and the way of touches, wheel and keys through it.
#include "platform/view/UIGestureRecognizer.h"
#include "platform/view/UIView.h"
#include "platform/view/UIWindow.h"

#include <algorithm>

namespace platform {

UIWindow* UIView::window() const noexcept {
    const UIView* root = this;
    while (root->superview_ != nullptr) {
        root = root->superview_;
    }
    return const_cast<UIView*>(root)->asWindow();
}

void UIView::addSubview(Ref<UIView> view) {
    insertSubview(std::move(view), subviews_.size());
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): it may be the element that the old superview drops
void UIView::insertSubview(Ref<UIView> view, std::size_t index) {
    if (!view || view.get() == this || isDescendantOfView(*view)) {
        return;
    }
    view->removeFromSuperview();
    view->superview_ = this;
    const auto place = static_cast<std::ptrdiff_t>(std::min(index, subviews_.size()));
    subviews_.insert(subviews_.begin() + place, view);
    if (!view->constraints_.empty()) {
        setNeedsLayout();
    }
    view->setNeedsLayout();
    if (UIWindow* shown = window()) {
        view->windowChanged(shown);
    }
    appearanceChanged();
}

void UIView::removeFromSuperview() {
    if (superview_ == nullptr) {
        return;
    }
    const Ref<UIView> keep = weak_from_this().lock();
    UIView& parent = *superview_;
    UIWindow* shown = window();
    if (shown != nullptr) {
        shown->viewWillLeave(*this);
    }
    std::erase_if(parent.subviews_, [this](const Ref<UIView>& child) { return child.get() == this; });
    superview_ = nullptr;
    parent.appearanceChanged();
    if (shown != nullptr) {
        windowChanged(nullptr);
    }
}

void UIView::windowChanged(UIWindow* window) {
    didMoveToWindow(window);
    const std::vector<Ref<UIView>> children = subviews_;
    for (const Ref<UIView>& child : children) {
        child->windowChanged(window);
    }
}

void UIView::didMoveToWindow(UIWindow* /*window*/) {}

bool UIView::isDescendantOfView(const UIView& view) const noexcept {
    for (const UIView* each = this; each != nullptr; each = each->superview_) {
        if (each == &view) {
            return true;
        }
    }
    return false;
}

UIView* UIView::viewWithIdentifier(const std::string& wanted) {
    if (identifier == wanted) {
        return this;
    }
    for (const Ref<UIView>& child : subviews_) {
        if (UIView* found = child->viewWithIdentifier(wanted)) {
            return found;
        }
    }
    return nullptr;
}

bool UIView::pointInside(const CGPoint& point, const UIEvent* /*event*/) const {
    return CGRectContainsPoint(bounds_, point);
}

UIView* UIView::hitTest(const CGPoint& point, const UIEvent* event) {
    constexpr double kLeastAlpha = 0.01;
    if (hidden_ || !userInteractionEnabled || alpha_ < kLeastAlpha || !pointInside(point, event)) {
        return nullptr;
    }
    // NOLINTNEXTLINE(modernize-loop-convert): clang 14 cannot read the library's reversed views
    for (auto child = subviews_.rbegin(); child != subviews_.rend(); ++child) {
        const CGAffineTransform map = (*child)->transformToSuperview();
        if (!CGAffineTransformIsInvertible(map)) {
            continue;
        }
        if (UIView* hit =
                (*child)->hitTest(CGPointApplyAffineTransform(point, CGAffineTransformInvert(map)), event)) {
            return hit;
        }
    }
    return this;
}

void UIView::touchesBegan(const UITouchSet& /*touches*/, UIEvent* /*event*/) {}
void UIView::touchesMoved(const UITouchSet& /*touches*/, UIEvent* /*event*/) {}
void UIView::touchesEnded(const UITouchSet& /*touches*/, UIEvent* /*event*/) {}
void UIView::touchesCancelled(const UITouchSet& /*touches*/, UIEvent* /*event*/) {}

void UIView::addGestureRecognizer(Ref<UIGestureRecognizer> recognizer) {
    if (recognizer) {
        recognizer->attach(this);
        recognizers_.push_back(std::move(recognizer));
    }
}

void UIView::removeGestureRecognizer(const Ref<UIGestureRecognizer>& recognizer) {
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): it may be the element itself
    const Ref<UIGestureRecognizer> keep = recognizer;
    if (std::erase(recognizers_, keep) > 0) {
        keep->attach(nullptr);
    }
}

bool UIView::gestureRecognizerShouldBegin(const UIGestureRecognizer& /*recognizer*/) const {
    return true;
}

bool UIView::scrollWheel(const UIWheelEvent& event) {
    const auto handler = onScrollWheel;
    return handler && handler(*this, event);
}

bool UIView::keyDown(const UIKeyEvent& /*event*/) {
    return false;
}

bool UIView::becomeFirstResponder() {
    UIWindow* shown = window();
    return shown != nullptr && canBecomeFirstResponder() && shown->setFirstResponder(this);
}

void UIView::resignFirstResponder() {
    if (isFirstResponder()) {
        window()->setFirstResponder(nullptr);
    }
}

bool UIView::isFirstResponder() const noexcept {
    const UIWindow* shown = window();
    return shown != nullptr && shown->firstResponder() == this;
}

void UIView::focusDidChange(bool /*focused*/) {
    setNeedsDisplay();
}

} // namespace platform
