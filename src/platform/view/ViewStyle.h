// The colours and sizes of the view layer's own controls, each under one name.
#pragma once

#include "platform/draw/CGGeometry.h"
#include "platform/draw/NSParagraphStyle.h"
#include "platform/draw/UIColor.h"
#include "platform/draw/UIFont.h"

#include <string_view>

namespace platform::style {

inline constexpr UIColor kText(0.753, 0.753, 0.753, 1.0);
inline constexpr UIColor kDimText(0.753, 0.753, 0.753, 0.5);
inline constexpr UIColor kLine(0.753, 0.753, 0.753, 0.35);
inline constexpr UIColor kFocus(0.195, 0.479, 0.75, 1.0);
inline constexpr UIColor kAccent(0.76, 0.29, 0.29, 1.0);
inline constexpr UIColor kField(0.09, 0.09, 0.09, 1.0);
inline constexpr UIColor kPlate(0.16, 0.16, 0.16, 1.0);
inline constexpr UIColor kPressed(0.753, 0.753, 0.753, 0.25);
inline constexpr UIColor kCover(0.0, 0.0, 0.0, 0.55);

inline constexpr double kCorner = 3.0;    // points
inline constexpr double kFontSize = 11.0; // points

/// A rounded rectangle with a filled inside and a line of one point; a clear colour leaves either out.
void drawBox(const CGRect& rect, const UIColor& inside, const UIColor& line, double width = 1.0);
/// A text in a rectangle, centred from top to bottom and cut off at its edges.
void drawText(std::string_view text, const CGRect& rect, const UIFont& font, const UIColor& color,
              NSTextAlignment alignment, NSLineBreakMode lines = NSLineBreakMode::truncatingTail);

} // namespace platform::style
