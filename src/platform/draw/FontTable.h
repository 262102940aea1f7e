// The one table of font names, and the faces that are built into the program.
#pragma once

#include <span>
#include <string_view>

namespace platform {

/// A font by the name that drawing code asks for, and the built-in face that stands for it. Lengths are in
/// units of the font size.
struct FontFace {
    std::string_view name;
    const char* family;
    bool bold;
    double glyphScale; // of the glyphs; below 1 where the face is larger than the one it stands for
    double ascent;     // from the line's top to its baseline
    double descent;    // from the baseline to the line's bottom
};

/// The name under which the system font stands in the table.
inline constexpr std::string_view kSystemFontName = "system";

/// The face for a name, null if there is none.
const FontFace* findFontFace(std::string_view name);

/// The font files built into the program.
std::span<const std::span<const unsigned char>> builtInFontFiles();

} // namespace platform
