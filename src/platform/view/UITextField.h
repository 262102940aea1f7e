// A line of text that can be edited.
#pragma once

#include "platform/view/UIControl.h"
#include "platform/view/ViewStyle.h"

#include <optional>
#include <string>

namespace platform {

/// The text is UTF-8; the caret moves by characters. Taking the focus selects everything. Sends editing did
/// begin, changed, did end on exit (enter) and did end.
class UITextField : public UIControl {
public:
    explicit UITextField(const CGRect& frame = CGRectZero);

    const std::optional<std::string>& text() const noexcept { return text_; }
    void setText(std::optional<std::string> text);
    const std::optional<std::string>& placeholder() const noexcept { return placeholder_; }
    void setPlaceholder(std::optional<std::string> placeholder);
    void setFont(const UIFont& font);
    void setTextAlignment(NSTextAlignment alignment);
    bool isEditing() const noexcept { return isFirstResponder(); }
    void selectAll();
    /// Escape gives the focus away; otherwise it goes on to the views above.
    bool endsOnEscape = false;
    /// The focus stays on enter; for whoever takes the event and decides.
    bool keepsFocusOnEnter = false;

    void draw(const CGRect& rect) override;
    void touchesBegan(const UITouchSet& touches, UIEvent* event) override;
    bool gestureRecognizerShouldBegin(const UIGestureRecognizer& recognizer) const override;
    bool keyDown(const UIKeyEvent& event) override;
    bool canBecomeFirstResponder() const override { return isEnabled(); }
    void focusDidChange(bool focused) override;

private:
    bool edit(const UIKeyEvent& event);
    void insert(const std::string& typed);
    bool removeSelection();
    void changed();

    std::optional<std::string> text_;
    std::optional<std::string> placeholder_;
    UIFont font_;
    NSTextAlignment alignment_ = NSTextAlignment::left;
    std::size_t caret_ = 0; // byte, between characters
    bool allSelected_ = false;
};

} // namespace platform
