// Fonts: a face and a size.
#pragma once

#include "platform/draw/FontTable.h"

#include <optional>
#include <string_view>

namespace platform {

/// A font of the built-in table at a size in points; copies are cheap.
class UIFont {
public:
    /// Absent for a name that the table doesn't have.
    static std::optional<UIFont> fontWithName(std::string_view name, double size);
    static UIFont systemFontOfSize(double size);

    std::string_view fontName() const { return face_->name; }
    double pointSize() const { return size_; }
    double ascender() const { return face_->ascent * size_; }
    /// Below 0: the descent lies under the baseline.
    double descender() const { return -face_->descent * size_; }
    double lineHeight() const { return (face_->ascent + face_->descent) * size_; }
    const FontFace& face() const { return *face_; }

    friend bool operator==(const UIFont&, const UIFont&) = default;

private:
    UIFont(const FontFace& face, double size) : face_(&face), size_(size) {}

    const FontFace* face_;
    double size_;
};

} // namespace platform
