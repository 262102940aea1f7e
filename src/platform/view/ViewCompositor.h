// Joins the layers of a view tree into one picture and tells what has changed in it.
#pragma once

#include "platform/draw/UIColor.h"
#include "platform/draw/UIImage.h"
#include "platform/view/UIView.h"
#include "platform/view/ViewLayer.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace platform {

/// Keeps the finished picture between passes. A pass calls `draw` only for views that need it or that came to
/// lie otherwise on the pixel grid, and joins only the pixels that changed.
class ViewCompositor {
public:
    /// Draws what needs it. `scale` is pixels per point. Returns the changed pixels, empty if there are none.
    PixelRect pass(UIView& root, double scale);
    /// Rows from the top, colours multiplied by alpha; `width` times `height` pixels.
    const std::vector<std::uint32_t>& pixels() const noexcept { return pixels_; }
    int width() const noexcept { return width_; }
    int height() const noexcept { return height_; }
    UIImage image(double scale) const { return {width_, height_, scale, pixels_}; }

private:
    /// One layer where it lies now.
    struct Item {
        const ViewLayer* layer = nullptr;
        std::uint64_t version = 0;
        PixelRect area; // where the layer's pixels go
        PixelRect clip;
        double alpha = 1.0;
        bool operator==(const Item&) const = default;
    };

    void collect(UIView& view, const CGAffineTransform& map, const PixelRect& clip, double alpha);
    void render(UIView& view, const CGAffineTransform& map, const PixelRect& area);
    void takeInkOff(ViewLayer& layer);
    PixelRect changedPixels(const ViewLayer& layer, const PixelRect& inkBefore);
    /// Whether the two differ in nothing but one drawing of the layer.
    static bool isNextVersion(const Item& before, const Item& now);
    PixelRect difference(const std::vector<Item>& before) const;
    void compose(const PixelRect& damage);

    std::vector<Item> items_;
    std::vector<std::uint32_t> pixels_;
    int width_ = 0;
    int height_ = 0;
    std::uint64_t versions_ = 0;
    // Of the layer that is drawn anew; kept for the next one.
    std::vector<std::uint32_t> inkBefore_;
    std::vector<std::uint32_t> rowBefore_;
};

} // namespace platform
