// Texts laid out once and kept: shaped, broken into lines and turned into outlines.
#pragma once

#include "platform/draw/NSParagraphStyle.h"
#include "platform/draw/UIBezierPath.h"
#include "platform/draw/UIFont.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

/// What a layout depends on. `text` is not owned.
struct TextBlockKey {
    std::string_view text;
    UIFont font;
    double width; // where lines are broken and what they are aligned in; not at all if it isn't finite
    NSTextAlignment alignment;
    NSLineBreakMode lineBreakMode;
};

/// A text as filled outlines, in points, with its origin at the top left. Outlines look the same at every
/// scale and on every machine, and drawing them asks no font.
class TextBlock {
public:
    TextBlock(const TextBlockKey& key, UIBezierPath outline, const CGSize& size)
        : text_(key.text), font_(key.font), width_(key.width), alignment_(key.alignment),
          lineBreakMode_(key.lineBreakMode), outline_(std::move(outline)), size_(size) {}

    TextBlockKey key() const {
        return {.text = text_,
                .font = font_,
                .width = width_,
                .alignment = alignment_,
                .lineBreakMode = lineBreakMode_};
    }
    const UIBezierPath& outline() const { return outline_; }
    /// The widest line and the lines' heights.
    const CGSize& size() const { return size_; }

private:
    std::string text_;
    UIFont font_;
    double width_;
    NSTextAlignment alignment_;
    NSLineBreakMode lineBreakMode_;
    UIBezierPath outline_;
    CGSize size_;
};

/// The layout for a key, made on first use and kept by the calling thread (the last few hundred are). Valid
/// until the next call.
const TextBlock& laidOut(const TextBlockKey& key);

/// How many layouts this thread has made so far; drawing the same texts again makes none.
std::uint64_t layoutsMade();

} // namespace platform
