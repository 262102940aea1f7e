#include "platform/view/UITextField.h"

#include "platform/draw/NSStringDrawing.h"
#include "platform/draw/UIBezierPath.h"

#include <algorithm>
#include <utility>

namespace platform {

namespace {

bool continues(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

std::size_t characterBefore(const std::string& text, std::size_t at) {
    while (at > 0 && continues(text[--at])) {
    }
    return at;
}

std::size_t characterBehind(const std::string& text, std::size_t at) {
    if (at < text.size()) {
        ++at;
    }
    while (at < text.size() && continues(text[at])) {
        ++at;
    }
    return at;
}

} // namespace

UITextField::UITextField(const CGRect& frame)
    : UIControl(frame), font_(UIFont::systemFontOfSize(style::kFontSize)) {}

void UITextField::setText(std::optional<std::string> text) {
    text_ = std::move(text);
    caret_ = text_ ? text_->size() : 0;
    allSelected_ = false;
    setNeedsDisplay();
}

void UITextField::setPlaceholder(std::optional<std::string> placeholder) {
    placeholder_ = std::move(placeholder);
    setNeedsDisplay();
}

void UITextField::setFont(const UIFont& font) {
    font_ = font;
    setNeedsDisplay();
}

void UITextField::setTextAlignment(NSTextAlignment alignment) {
    alignment_ = alignment;
    setNeedsDisplay();
}

void UITextField::selectAll() {
    allSelected_ = text_ && !text_->empty();
    caret_ = text_ ? text_->size() : 0;
    setNeedsDisplay();
}

void UITextField::draw(const CGRect& rect) {
    constexpr double kMargin = 5.0;
    style::drawBox(rect, style::kField, isEditing() ? style::kFocus : style::kLine);
    const CGRect inside = CGRectInset(rect, std::min(kMargin, rect.size.width / 4.0), 0.0);
    if (!text_ || text_->empty()) {
        style::drawText(placeholder_.value_or(""), inside, font_, style::kDimText, alignment_);
    }
    const std::string shown = text_.value_or("");
    const NSStringAttributes attributes{.font = font_, .foregroundColor = style::kText, .paragraphStyle = {}};
    const auto width = [&](std::string_view part) {
        const CGSize endless{.width = 1e6, .height = 0.0};
        return part.empty() ? 0.0 : boundingRectWithSize(part, endless, 0, attributes).size.width;
    };
    const double whole = width(shown);
    const double left = alignment_ == NSTextAlignment::center
                            ? inside.origin.x + std::max(0.0, (inside.size.width - whole) / 2.0)
                            : inside.origin.x;
    const double middle = rect.origin.y + rect.size.height / 2.0;
    const double half = font_.lineHeight() / 2.0;
    if (isEditing() && allSelected_) {
        style::kFocus.colorWithAlphaComponent(0.5).setFill();
        UIBezierPath::bezierPathWithRect(
            CGRectMake(left, middle - half, std::min(whole, inside.size.width), 2.0 * half))
            .fill();
    }
    style::drawText(shown, inside, font_, style::kText, alignment_);
    if (isEditing() && !allSelected_) {
        const double at =
            left + std::min(width(std::string_view(shown).substr(0, caret_)), inside.size.width);
        style::kText.setFill();
        UIBezierPath::bezierPathWithRect(CGRectMake(at, middle - half, 1.0, 2.0 * half)).fill();
    }
}

void UITextField::touchesBegan(const UITouchSet& /*touches*/, UIEvent* /*event*/) {
    if (isEditing()) {
        allSelected_ = false;
        setNeedsDisplay();
    } else {
        becomeFirstResponder();
    }
}

bool UITextField::gestureRecognizerShouldBegin(const UIGestureRecognizer& /*recognizer*/) const {
    return false;
}

void UITextField::focusDidChange(bool focused) {
    UIControl::focusDidChange(focused);
    if (focused) {
        selectAll();
        sendActionsForControlEvents(UIControlEventEditingDidBegin);
    } else {
        sendActionsForControlEvents(UIControlEventEditingDidEnd);
    }
}

bool UITextField::keyDown(const UIKeyEvent& event) {
    switch (event.key) {
    case UIKey::enter:
        sendActionsForControlEvents(UIControlEventEditingDidEndOnExit);
        if (!keepsFocusOnEnter) {
            resignFirstResponder();
        }
        return !keepsFocusOnEnter;
    case UIKey::escape:
        if (endsOnEscape) {
            resignFirstResponder();
        }
        return endsOnEscape;
    default:
        return edit(event);
    }
}

bool UITextField::edit(const UIKeyEvent& event) {
    const std::string now = text_.value_or("");
    const bool wasSelected = std::exchange(allSelected_, false);
    switch (event.key) {
    case UIKey::text:
        if (event.text.empty() || event.has(UIKeyModifierControl)) {
            allSelected_ = wasSelected;
            if (event.text == "a" || event.text == "A") {
                selectAll();
                return true;
            }
            return false;
        }
        allSelected_ = wasSelected;
        insert(event.text);
        return true;
    case UIKey::backspace:
    case UIKey::deleteForward: {
        allSelected_ = wasSelected;
        if (!removeSelection()) {
            const std::size_t from = event.key == UIKey::backspace ? characterBefore(now, caret_) : caret_;
            const std::size_t to = event.key == UIKey::backspace ? caret_ : characterBehind(now, caret_);
            text_ = now.substr(0, from) + now.substr(to);
            caret_ = from;
        }
        changed();
        return true;
    }
    case UIKey::left:
        caret_ = wasSelected ? 0 : characterBefore(now, caret_);
        break;
    case UIKey::right:
        caret_ = wasSelected ? now.size() : characterBehind(now, caret_);
        break;
    case UIKey::home:
        caret_ = 0;
        break;
    case UIKey::end:
        caret_ = now.size();
        break;
    default:
        allSelected_ = wasSelected;
        return false;
    }
    setNeedsDisplay();
    return true;
}

bool UITextField::removeSelection() {
    if (!allSelected_) {
        return false;
    }
    allSelected_ = false;
    text_ = "";
    caret_ = 0;
    return true;
}

void UITextField::insert(const std::string& typed) {
    removeSelection();
    std::string now = text_.value_or("");
    now.insert(std::min(caret_, now.size()), typed);
    caret_ = std::min(caret_, now.size()) + typed.size();
    text_ = std::move(now);
    changed();
}

void UITextField::changed() {
    setNeedsDisplay();
    sendActionsForControlEvents(UIControlEventEditingChanged);
}

} // namespace platform
