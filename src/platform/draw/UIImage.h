// Pictures in memory.
#pragma once

#include "platform/core/Result.h"
#include "platform/draw/CGGeometry.h"

#include <cstdint>
#include <string>
#include <vector>

namespace platform {

/// A picture of whole pixels, rows from the top, each pixel 0xAARRGGBB with the colours multiplied by alpha.
class UIImage {
public:
    /// An empty picture.
    UIImage() = default;
    /// `pixels` holds width times height of them; missing ones are clear. `scale` is pixels per point.
    UIImage(int width, int height, double scale, std::vector<std::uint32_t> pixels);

    int pixelWidth() const { return width_; }
    int pixelHeight() const { return height_; }
    double scale() const { return scale_; }
    /// In points.
    CGSize size() const { return {.width = width_ / scale_, .height = height_ / scale_}; }
    /// 0 outside.
    std::uint32_t pixel(int x, int y) const;
    const std::vector<std::uint32_t>& pixels() const { return pixels_; }

    /// Draws it into the current context, stretched over the rectangle; without a context nothing happens.
    void drawInRect(const CGRect& rect) const;

private:
    int width_ = 0;
    int height_ = 0;
    double scale_ = 1.0;
    std::vector<std::uint32_t> pixels_;
};

/// The bytes of a PNG file.
Result<std::string> UIImagePNGRepresentation(const UIImage& image);

} // namespace platform
