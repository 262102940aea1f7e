// A text that is only shown.
#pragma once

#include "platform/view/UIView.h"
#include "platform/view/ViewStyle.h"

#include <optional>
#include <string>

namespace platform {

class UILabel : public UIView {
public:
    explicit UILabel(const CGRect& frame = CGRectZero);

    const std::optional<std::string>& text() const noexcept { return text_; }
    void setText(std::optional<std::string> text);
    void setFont(const UIFont& font);
    const UIFont& font() const noexcept { return font_; }
    void setTextColor(const UIColor& color);
    const UIColor& textColor() const noexcept { return color_; }
    void setTextAlignment(NSTextAlignment alignment);
    /// Break lines at words instead of cutting the end off.
    void setWraps(bool wraps);
    /// How high the text is at a width, in points.
    double heightForWidth(double width) const;

    void draw(const CGRect& rect) override;

private:
    std::optional<std::string> text_;
    UIFont font_;
    UIColor color_ = style::kText;
    NSTextAlignment alignment_ = NSTextAlignment::left;
    bool wraps_ = false;
};

} // namespace platform
