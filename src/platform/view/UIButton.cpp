#include "platform/view/UIButton.h"

#include <algorithm>
#include <utility>

namespace platform {

UIButton::UIButton(const CGRect& frame)
    : UIControl(frame), font_(UIFont::systemFontOfSize(style::kFontSize)) {}

void UIButton::setTitle(std::string title) {
    if (title != title_) {
        title_ = std::move(title);
        setNeedsDisplay();
    }
}

void UIButton::setFont(const UIFont& font) {
    font_ = font;
    setNeedsDisplay();
}

void UIButton::setTintColor(const UIColor& color) {
    if (color != tint_) {
        tint_ = color;
        setNeedsDisplay();
    }
}

void UIButton::setSelected(bool selected) {
    if (selected != selected_) {
        selected_ = selected;
        setNeedsDisplay();
    }
}

void UIButton::setTextAlignment(NSTextAlignment alignment) {
    alignment_ = alignment;
    setNeedsDisplay();
}

void UIButton::draw(const CGRect& rect) {
    constexpr double kMargin = 6.0;
    const UIColor color = selected_ ? style::kAccent : tint_;
    const UIColor text = isEnabled() ? color : color.colorWithAlphaComponent(0.4);
    style::drawBox(rect, isHighlighted() ? style::kPressed : UIColor::clearColor(),
                   isFirstResponder() ? style::kFocus : text.colorWithAlphaComponent(text.alpha() * 0.6),
                   isFirstResponder() ? 2.0 : 1.0);
    style::drawText(title_, CGRectInset(rect, std::min(kMargin, rect.size.width / 4.0), 0.0), font_, text,
                    alignment_);
}

bool UIButton::isInside(const UITouchSet& touches) const {
    constexpr double kReach = 12.0; // points around, so that a finger needn't be exact
    return !touches.empty() && CGRectContainsPoint(CGRectInset(bounds(), -kReach, -kReach),
                                                   touches.front()->locationInView(this));
}

void UIButton::touchesBegan(const UITouchSet& /*touches*/, UIEvent* /*event*/) {
    setHighlighted(true);
    sendActionsForControlEvents(UIControlEventTouchDown);
}

void UIButton::touchesMoved(const UITouchSet& touches, UIEvent* /*event*/) {
    setHighlighted(isInside(touches));
    sendActionsForControlEvents(isHighlighted() ? UIControlEventTouchDragInside
                                                : UIControlEventTouchDragOutside);
}

void UIButton::touchesEnded(const UITouchSet& touches, UIEvent* /*event*/) {
    setHighlighted(false);
    sendActionsForControlEvents(isInside(touches) ? UIControlEventTouchUpInside
                                                  : UIControlEventTouchUpOutside);
}

void UIButton::touchesCancelled(const UITouchSet& /*touches*/, UIEvent* /*event*/) {
    setHighlighted(false);
    sendActionsForControlEvents(UIControlEventTouchCancel);
}

bool UIButton::gestureRecognizerShouldBegin(const UIGestureRecognizer& /*recognizer*/) const {
    return false;
}

bool UIButton::keyDown(const UIKeyEvent& event) {
    const bool press = event.key == UIKey::enter || (event.key == UIKey::text && event.text == " ");
    if (press && isEnabled()) {
        sendActionsForControlEvents(UIControlEventTouchDown);
        sendActionsForControlEvents(UIControlEventTouchUpInside);
    }
    return press;
}

} // namespace platform
