// Display and focus of a window; its input lies in a file of its own.
#include "platform/view/UIWindow.h"

#include "platform/view/UIGestureRecognizer.h"

#include <algorithm>

namespace platform {

UIWindow::UIWindow(const CGSize& size, double scale)
    : UIView(CGRectMake(0.0, 0.0, size.width, size.height)), scale_(scale) {}

UIWindow::~UIWindow() {
    if (root_) {
        root_->removeFromSuperview();
    }
}

void UIWindow::setRootView(Ref<UIView> view) {
    if (root_) {
        root_->removeFromSuperview();
    }
    root_ = std::move(view);
    if (root_) {
        insertSubview(root_, 0);
        root_->setFrame(bounds());
    }
}

void UIWindow::setSize(const CGSize& size) {
    setFrame(CGRectMake(0.0, 0.0, size.width, size.height));
}

void UIWindow::setScale(double pixelsPerPoint) {
    if (pixelsPerPoint > 0.0 && pixelsPerPoint != scale_) {
        scale_ = pixelsPerPoint;
        noteChange();
    }
}

void UIWindow::layoutSubviews() {
    if (root_) {
        root_->setFrame(bounds());
    }
    UIView::layoutSubviews();
}

void UIWindow::noteChange() noexcept {
    if (changed_) {
        return;
    }
    changed_ = true;
    if (const auto callback = onNeedsDisplay) {
        callback();
    }
}

PixelRect UIWindow::display() {
    if (!changed_) {
        return {};
    }
    layoutIfNeeded();
    changed_ = false;
    return compositor_.pass(*this, scale_);
}

bool UIWindow::setFirstResponder(UIView* view) {
    if (view == firstResponder_) {
        return true;
    }
    if (view != nullptr && view->window() != this) {
        return false;
    }
    UIView* before = std::exchange(firstResponder_, view);
    if (before != nullptr) {
        before->focusDidChange(false);
    }
    if (firstResponder_ == view && view != nullptr) {
        view->focusDidChange(true);
    }
    return firstResponder_ == view;
}

UIView* UIWindow::topModal(UIView& view) const {
    // NOLINTNEXTLINE(modernize-loop-convert): clang 14 cannot read the library's reversed views
    for (auto child = view.subviews().rbegin(); child != view.subviews().rend(); ++child) {
        if ((*child)->isHidden()) {
            continue;
        }
        if (UIView* found = topModal(**child)) {
            return found;
        }
    }
    return view.isModal() ? &view : nullptr;
}

void UIWindow::collectFocusable(UIView& view, std::vector<UIView*>& found) const {
    if (view.isHidden() || !view.userInteractionEnabled) {
        return;
    }
    if (view.canBecomeFirstResponder()) {
        found.push_back(&view);
    }
    for (const Ref<UIView>& child : view.subviews()) {
        collectFocusable(*child, found);
    }
}

bool UIWindow::moveFocus(bool backwards) {
    UIView* modal = topModal(*this);
    std::vector<UIView*> order;
    collectFocusable(modal == nullptr ? *this : *modal, order);
    if (order.empty()) {
        return false;
    }
    const auto here = std::find(order.begin(), order.end(), firstResponder_);
    const auto count = order.size();
    std::size_t next = backwards ? count - 1 : 0;
    if (here != order.end()) {
        const auto index = static_cast<std::size_t>(here - order.begin());
        next = (index + (backwards ? count - 1 : 1)) % count;
    }
    return setFirstResponder(order[next]);
}

void UIWindow::viewWillLeave(const UIView& view) {
    if (firstResponder_ != nullptr && firstResponder_->isDescendantOfView(view)) {
        setFirstResponder(nullptr);
    }
}

} // namespace platform
