// How large an editor is shown, for every plug-in format: in points as it is designed, in pixels as hosts
// count.
#pragma once

#include "hosts/shared/EditorHost.h"

#include <algorithm>
#include <cmath>

namespace qor::host {

/// Of the preferred size, in points.
inline constexpr double kLeastEditorFactor = 0.5;
inline constexpr double kMostEditorFactor = 4.0;
inline constexpr CGSize kLeastEditorSize{.width = EditorHost::kPreferredSize.width * kLeastEditorFactor,
                                         .height = EditorHost::kPreferredSize.height * kLeastEditorFactor};

/// Whole pixels.
inline CGSize scaledSize(const CGSize& size, double factor) {
    return {.width = std::round(size.width * factor), .height = std::round(size.height * factor)};
}

/// The preferred size so many times, within what the editor can take at a scale: a size without bars. Pixels.
inline CGSize editorPixels(double factor, double scale) {
    return scaledSize(EditorHost::kPreferredSize,
                      std::clamp(factor, kLeastEditorFactor * scale, kMostEditorFactor * scale));
}

} // namespace qor::host
