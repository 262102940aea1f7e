#include "platform/window/ContentPlacement.h"

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

int wholePixels(double length) {
    return std::max(1, static_cast<int>(std::lround(length)));
}

} // namespace

ContentPlacement placeContent(int windowWidth, int windowHeight, const ContentRules& rules) noexcept {
    ContentPlacement placed;
    placed.width = std::max(1, windowWidth);
    placed.height = std::max(1, windowHeight);
    if (rules.aspect > 0.0) {
        // Rounding of a size that fits must not give bars of one pixel.
        const int heightFor = wholePixels(placed.width / rules.aspect);
        const int widthFor = wholePixels(placed.height * rules.aspect);
        if (heightFor < placed.height - 1) {
            placed.height = heightFor;
        } else if (widthFor < placed.width - 1) {
            placed.width = widthFor;
        }
    }
    placed.x = (std::max(1, windowWidth) - placed.width) / 2;
    placed.y = (std::max(1, windowHeight) - placed.height) / 2;
    placed.scale = rules.scale;
    if (rules.minimum.width > 0.0) {
        placed.scale = std::min(placed.scale, placed.width / rules.minimum.width);
    }
    if (rules.minimum.height > 0.0) {
        placed.scale = std::min(placed.scale, placed.height / rules.minimum.height);
    }
    placed.points = {.width = placed.width / placed.scale, .height = placed.height / placed.scale};
    return placed;
}

} // namespace platform
