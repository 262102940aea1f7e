// Measuring and drawing of texts.
#pragma once

#include "platform/draw/CGGeometry.h"
#include "platform/draw/NSParagraphStyle.h"
#include "platform/draw/UIColor.h"
#include "platform/draw/UIFont.h"

#include <cstdint>
#include <string_view>

namespace platform {

class CGContext;

/// What a text is drawn with.
struct NSStringAttributes {
    UIFont font = UIFont::systemFontOfSize(12.0);
    UIColor foregroundColor;
    NSMutableParagraphStyle paragraphStyle;
};

/// The rectangle is that of a text block with several lines; without it a text is one line.
inline constexpr std::int64_t NSStringDrawingUsesLineFragmentOrigin = 1;

/// The space that the text takes if its lines are broken at `size.width` (not at all if that isn't finite),
/// with the origin (0, 0). The height is a whole number of line heights; `size.height` doesn't limit it.
/// Texts are UTF-8; bytes that aren't are shown as replacement marks.
CGRect boundingRectWithSize(std::string_view text, const CGSize& size, std::int64_t options,
                            const NSStringAttributes& attributes, const CGContext* context = nullptr);

/// Draws the text into the current context from the rectangle's top, its lines broken and aligned at the
/// rectangle's width; not cut at its edges. Without a context nothing happens.
void drawInRect(std::string_view text, const CGRect& rect, const NSStringAttributes& attributes);

} // namespace platform
