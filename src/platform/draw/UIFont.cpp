#include "platform/draw/UIFont.h"

#include "platform/core/Fatal.h"

namespace platform {

std::optional<UIFont> UIFont::fontWithName(std::string_view name, double size) {
    const FontFace* face = findFontFace(name);
    if (face == nullptr) {
        return std::nullopt;
    }
    return UIFont(*face, size);
}

UIFont UIFont::systemFontOfSize(double size) {
    return unwrap(fontWithName(kSystemFontName, size));
}

} // namespace platform
