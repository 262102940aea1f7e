// Where a window's content lies when the window may have any size.
#pragma once

#include "platform/draw/CGGeometry.h"

namespace platform {

struct ContentRules {
    double scale = 1.0;                             // pixels per point
    CGSize minimum = {.width = 0.0, .height = 0.0}; // points; zero for none
    double aspect = 0.0;                            // width by height; 0 for any
};

struct ContentPlacement {
    int x = 0; // pixels of the window
    int y = 0;
    int width = 0;
    int height = 0;
    double scale = 1.0; // pixels per point, less than asked for where the window is too small
    CGSize points;      // the content's own size

    /// From pixels of the window to the content's points.
    CGPoint pointAt(double pixelX, double pixelY) const noexcept {
        return {.x = (pixelX - x) / scale, .y = (pixelY - y) / scale};
    }
    bool operator==(const ContentPlacement&) const = default;
};

/// The largest content in the middle of a window that keeps the rules: bars beside or above it keep the
/// aspect, and a window smaller than the minimum shows all of it, smaller.
ContentPlacement placeContent(int windowWidth, int windowHeight, const ContentRules& rules) noexcept;

} // namespace platform
