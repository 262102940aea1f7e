// A button with a text.
#pragma once

#include "platform/view/UIControl.h"
#include "platform/view/ViewStyle.h"

#include <string>

namespace platform {

/// Sends touch down and touch up inside or outside; with the focus, enter and the space bar press it.
class UIButton : public UIControl {
public:
    explicit UIButton(const CGRect& frame = CGRectZero);

    const std::string& title() const noexcept { return title_; }
    void setTitle(std::string title);
    void setFont(const UIFont& font);
    /// Text, and line around it.
    void setTintColor(const UIColor& color);
    bool isSelected() const noexcept { return selected_; }
    /// Shown in the accent colour.
    void setSelected(bool selected);
    void setTextAlignment(NSTextAlignment alignment);
    bool focusable = true;

    void draw(const CGRect& rect) override;
    void touchesBegan(const UITouchSet& touches, UIEvent* event) override;
    void touchesMoved(const UITouchSet& touches, UIEvent* event) override;
    void touchesEnded(const UITouchSet& touches, UIEvent* event) override;
    void touchesCancelled(const UITouchSet& touches, UIEvent* event) override;
    /// A button takes taps for itself.
    bool gestureRecognizerShouldBegin(const UIGestureRecognizer& recognizer) const override;
    bool keyDown(const UIKeyEvent& event) override;
    bool canBecomeFirstResponder() const override { return focusable && isEnabled(); }

private:
    bool isInside(const UITouchSet& touches) const;

    std::string title_;
    UIFont font_;
    UIColor tint_ = style::kText;
    NSTextAlignment alignment_ = NSTextAlignment::center;
    bool selected_ = false;
};

} // namespace platform
