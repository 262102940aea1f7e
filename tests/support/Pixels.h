// Looks at single pixels of drawn pictures.
#pragma once

#include "platform/draw/BitmapContext.h"
#include "platform/draw/CGContext.h"

#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <memory>

namespace test {

/// One pixel's components, 0 to 255, colours multiplied by alpha.
struct Pixel {
    int red;
    int green;
    int blue;
    int alpha;
    friend bool operator==(const Pixel&, const Pixel&) = default;
};

inline Pixel pixelOf(std::uint32_t argb) {
    return {.red = static_cast<int>(argb >> 16U & 255U),
            .green = static_cast<int>(argb >> 8U & 255U),
            .blue = static_cast<int>(argb & 255U),
            .alpha = static_cast<int>(argb >> 24U)};
}

/// A clear picture that `draw` has drawn into.
template <class Draw>
platform::UIImage drawn(const platform::CGSize& points, double scale, Draw draw) {
    auto context = platform::BitmapContext::make(points, scale);
    if (!context) {
        ADD_FAILURE() << context.error().localizedDescription();
        return {};
    }
    {
        const platform::GraphicsScope scope(*context.value());
        draw(*context.value());
    }
    EXPECT_TRUE(context.value()->ok());
    EXPECT_EQ(context.value()->stateDepth(), 0U);
    return context.value()->image();
}

/// The pixel that holds a point.
inline Pixel pixelAt(const platform::UIImage& image, const platform::CGPoint& point) {
    return pixelOf(image.pixel(static_cast<int>(std::floor(point.x * image.scale())),
                               static_cast<int>(std::floor(point.y * image.scale()))));
}

/// How many pixels aren't clear.
inline std::size_t inkedPixels(const platform::UIImage& image) {
    std::size_t count = 0;
    for (const std::uint32_t pixel : image.pixels()) {
        count += pixel >> 24U != 0 ? 1U : 0U;
    }
    return count;
}

} // namespace test
