#include "platform/view/DialogView.h"

#include "platform/draw/UIBezierPath.h"
#include "platform/view/ViewStyle.h"

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

class DialogBox : public UIView {
public:
    void draw(const CGRect& rect) override { style::drawBox(rect, style::kPlate, style::kLine); }
};

} // namespace

DialogView::DialogView(const CGSize& boxSize) : box_(makeRef<DialogBox>()), boxSize_(boxSize) {}

void DialogView::didMoveToWindow(UIWindow* window) {
    UIView::didMoveToWindow(window);
    if (box_->superview() != this) {
        box_->setClipsToBounds(true);
        addSubview(box_);
    }
    if (UIView* content = superview(); window != nullptr && content != nullptr && constraints().empty()) {
        NSLayoutConstraint::activateConstraints(
            {topAnchor().constraintEqualToAnchor(content->topAnchor()),
             leadingAnchor().constraintEqualToAnchor(content->leadingAnchor()),
             bottomAnchor().constraintEqualToAnchor(content->bottomAnchor()),
             trailingAnchor().constraintEqualToAnchor(content->trailingAnchor())});
    }
}

void DialogView::setBoxSize(const CGSize& size) {
    boxSize_ = size;
    setNeedsLayout();
}

bool DialogView::keyDown(const UIKeyEvent& event) {
    const auto handler = onKey;
    return handler && handler(event);
}

bool DialogView::scrollWheel(const UIWheelEvent& /*event*/) {
    return true; // nothing behind may turn
}

void DialogView::layoutSubviews() {
    constexpr double kMargin = 8.0;
    UIView::layoutSubviews();
    const CGSize room = bounds().size;
    const double width = std::max(0.0, std::min(boxSize_.width, room.width - 2.0 * kMargin));
    const double height = std::max(0.0, std::min(boxSize_.height, room.height - 2.0 * kMargin));
    box_->setFrame(CGRectMake(std::floor((room.width - width) / 2.0),
                              std::floor((room.height - height) / 2.0), width, height));
    if (const auto place = onLayout) {
        place(box_->bounds());
    }
}

void DialogView::draw(const CGRect& rect) {
    style::kCover.setFill();
    UIBezierPath::bezierPathWithRect(rect).fill();
}

} // namespace platform
