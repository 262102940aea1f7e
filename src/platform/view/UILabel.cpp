#include "platform/view/UILabel.h"

#include "platform/draw/NSStringDrawing.h"

#include <utility>

namespace platform {

UILabel::UILabel(const CGRect& frame) : UIView(frame), font_(UIFont::systemFontOfSize(style::kFontSize)) {
    userInteractionEnabled = false;
}

void UILabel::setText(std::optional<std::string> text) {
    if (text != text_) {
        text_ = std::move(text);
        setNeedsDisplay();
    }
}

void UILabel::setFont(const UIFont& font) {
    font_ = font;
    setNeedsDisplay();
}

void UILabel::setTextColor(const UIColor& color) {
    if (color != color_) {
        color_ = color;
        setNeedsDisplay();
    }
}

void UILabel::setTextAlignment(NSTextAlignment alignment) {
    alignment_ = alignment;
    setNeedsDisplay();
}

void UILabel::setWraps(bool wraps) {
    wraps_ = wraps;
    setNeedsDisplay();
}

double UILabel::heightForWidth(double width) const {
    if (!text_ || text_->empty()) {
        return 0.0;
    }
    NSStringAttributes attributes{.font = font_, .foregroundColor = color_, .paragraphStyle = {}};
    return boundingRectWithSize(*text_, {.width = width, .height = 0.0},
                                NSStringDrawingUsesLineFragmentOrigin, attributes)
        .size.height;
}

void UILabel::draw(const CGRect& rect) {
    if (text_) {
        style::drawText(*text_, rect, font_, color_, alignment_,
                        wraps_ ? NSLineBreakMode::wordWrapping : NSLineBreakMode::truncatingTail);
    }
}

} // namespace platform
