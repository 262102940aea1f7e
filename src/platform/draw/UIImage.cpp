#include "platform/draw/UIImage.h"

#include "platform/draw/CGContext.h"
#include "platform/draw/CairoSupport.h"

#include <algorithm>

namespace platform {

UIImage::UIImage(int width, int height, double scale, std::vector<std::uint32_t> pixels)
    : width_(std::max(width, 0)), height_(std::max(height, 0)), scale_(scale), pixels_(std::move(pixels)) {
    pixels_.resize(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_));
}

std::uint32_t UIImage::pixel(int x, int y) const {
    if (x < 0 || y < 0 || x >= width_ || y >= height_) {
        return 0;
    }
    return pixels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                   static_cast<std::size_t>(x)];
}

void UIImage::drawInRect(const CGRect& rect) const {
    if (CGContext* context = UIGraphicsGetCurrentContext()) {
        context->drawImage(*this, rect);
    }
}

Result<std::string> UIImagePNGRepresentation(const UIImage& image) {
    if (image.pixels().empty()) {
        return drawingError("An empty picture can't be written as PNG");
    }
    const CairoSurface surface = surfaceOver(image);
    std::string bytes;
    const cairo_status_t status = cairo_surface_write_to_png_stream(surface.get(), appendBytes, &bytes);
    if (status != CAIRO_STATUS_SUCCESS) {
        return drawingError(std::string("The picture can't be written as PNG: ") +
                            cairo_status_to_string(status));
    }
    return bytes;
}

} // namespace platform
