// How the lines of a text are placed and broken.
#pragma once

#include <cstdint>

namespace platform {

enum class NSTextAlignment : std::int64_t { left = 0, center = 1, right = 2 };
enum class NSLineBreakMode : std::int64_t { wordWrapping = 0, truncatingTail = 4 };

class NSMutableParagraphStyle {
public:
    void setAlignment(NSTextAlignment alignment) { alignment_ = alignment; }
    NSTextAlignment alignment() const { return alignment_; }
    void setLineBreakMode(NSLineBreakMode mode) { lineBreakMode_ = mode; }
    NSLineBreakMode lineBreakMode() const { return lineBreakMode_; }

private:
    NSTextAlignment alignment_ = NSTextAlignment::left;
    NSLineBreakMode lineBreakMode_ = NSLineBreakMode::wordWrapping;
};

} // namespace platform
