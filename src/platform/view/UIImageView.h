// A view that shows a picture.
#pragma once

#include "platform/draw/UIImage.h"
#include "platform/view/UIView.h"

#include <optional>

namespace platform {

/// Draws its picture stretched over its bounds; nothing without one. Main thread only.
class UIImageView : public UIView {
public:
    using UIView::UIView;

    const std::optional<UIImage>& image() const noexcept { return image_; }
    void setImage(std::optional<UIImage> image);
    void draw(const CGRect& rect) override;

private:
    std::optional<UIImage> image_;
};

} // namespace platform
