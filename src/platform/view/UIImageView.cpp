#include "platform/view/UIImageView.h"

#include <utility>

namespace platform {

void UIImageView::setImage(std::optional<UIImage> image) {
    image_ = std::move(image);
    setNeedsDisplay();
}

void UIImageView::draw(const CGRect& /*rect*/) {
    if (image_) {
        image_->drawInRect(bounds());
    }
}

} // namespace platform
