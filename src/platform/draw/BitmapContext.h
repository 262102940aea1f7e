// A context that draws into a picture in memory.
#pragma once

#include "platform/core/Result.h"
#include "platform/draw/CairoContext.h"
#include "platform/draw/UIImage.h"

#include <cstdint>
#include <memory>
#include <span>

namespace platform {

/// A clear canvas of a size in points at `scale` pixels a point; user space is points from the top left.
class BitmapContext final : public CairoContext {
public:
    static constexpr int kLargestSide = 16384; // pixels

    /// Fails for a size that comes to no pixel or to more than `kLargestSide` of them on a side.
    static Result<std::unique_ptr<BitmapContext>> make(const CGSize& points, double scale = 1.0);

    /// Draws over what is in a picture's pixels: rows from the top, at one pixel a point. The pixels are the
    /// caller's and must outlive the context. Fails like `make`, and if they are too few.
    static Result<std::unique_ptr<BitmapContext>> over(std::span<std::uint32_t> pixels, int width,
                                                       int height);

    int pixelWidth() const;
    int pixelHeight() const;
    double scale() const { return scale_; }
    /// Makes every pixel clear again, whatever the clip.
    void clear();
    /// A copy of what is drawn so far.
    UIImage image() const;

private:
    BitmapContext(cairo_t* cairo, double scale) : CairoContext(cairo), scale_(scale) {}

    double scale_;
};

} // namespace platform
