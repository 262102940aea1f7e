// What a view looked like when it was drawn last.
#pragma once

#include "platform/draw/CGAffineTransform.h"

#include <cstdint>
#include <vector>

namespace platform {

/// A rectangle of whole pixels.
struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool isEmpty() const noexcept { return width <= 0 || height <= 0; }
    PixelRect intersected(const PixelRect& other) const noexcept;
    /// The smallest rectangle around both; an empty one counts for nothing.
    PixelRect united(const PixelRect& other) const noexcept;
    friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

/// The pixels of one view without its subviews, made for one place of the pixel grid.
class ViewLayer {
public:
    std::vector<std::uint32_t> pixels; // as in a `UIImage`
    int width = 0;
    int height = 0;
    PixelRect ink;             // nothing is drawn outside of it
    CGAffineTransform map;     // from the view to the pixels
    std::uint64_t version = 0; // another number for other pixels
    std::uint64_t versionBefore = 0;
    PixelRect changed; // where the two versions differ, in pixels of the layer
};

} // namespace platform
