// The one table of font names, and the faces that are built into the program.
#pragma once

#include <span>
#include <string_view>

namespace platform {

/// A font by the name that drawing code asks for, and the built-in face that stands for it. Lengths are in
/// units of the font size.
struct FontFace {
    std::string_view name;
    std::span<const unsigned char> file;
    double glyphScale; // of the glyphs; below 1 where the face is larger than the one it stands for
    double ascent;     // from the line's top to its baseline
    double descent;    // from the baseline to the line's bottom
};

/// The name under which the system font stands in the table.
inline constexpr std::string_view kSystemFontName = "system";

/// The face for a name, null if there is none. Faces live as long as the process.
const FontFace* findFontFace(std::string_view name);

} // namespace platform
