#include "platform/draw/FontTable.h"

#include <algorithm>
#include <array>

// The files come in by the assembler: a generated array of this size would take the compiler seconds.
#define QOR_EMBED(symbol, path)                                                                              \
    asm(".section .rodata\n"                                                                                 \
        ".balign 16\n"                                                                                       \
        ".hidden " #symbol "\n.global " #symbol "\n" #symbol ":\n"                                           \
        ".incbin \"" path "\"\n"                                                                             \
        ".hidden " #symbol "_end\n.global " #symbol "_end\n" #symbol "_end:\n"                               \
        ".byte 0\n"                                                                                          \
        ".previous\n")

QOR_EMBED(qor_font_regular, QOR_FONT_FOLDER "/Roboto-Regular.ttf");
QOR_EMBED(qor_font_condensed_bold, QOR_FONT_FOLDER "/RobotoCondensed-Bold.ttf");

extern "C" {
extern const unsigned char qor_font_regular[];
extern const unsigned char qor_font_regular_end[];
extern const unsigned char qor_font_condensed_bold[];
extern const unsigned char qor_font_condensed_bold_end[];
}

namespace platform {

namespace {

constexpr double kLineHeight = 1.2;

// A text is centred in its rectangle by its line, so the share of the ascent decides what stands in the
// middle: `middle` is how far the baseline lies below the line's centre.
FontFace face(std::string_view name, std::span<const unsigned char> file, double glyphScale, double middle) {
    return {.name = name,
            .file = file,
            .glyphScale = glyphScale,
            .ascent = kLineHeight / 2.0 + middle,
            .descent = kLineHeight / 2.0 - middle};
}

// The condensed bold sets capitals, which stand centred; the system font sets small captions in rectangles of
// 0.9 of its size, so its ascenders and descenders together are made to fit there.
const std::array<FontFace, 3>& faces() {
    static const std::span regular(qor_font_regular, qor_font_regular_end);
    static const std::span condensedBold(qor_font_condensed_bold, qor_font_condensed_bold_end);
    static const std::array table = {
        face("HelveticaNeue-CondensedBold", condensedBold, 1.0, 0.356),
        face("HelveticaNeue", regular, 1.0, 0.3),
        face(kSystemFontName, regular, 0.94, 0.25),
    };
    return table;
}

} // namespace

const FontFace* findFontFace(std::string_view name) {
    const auto* const found = std::ranges::find(faces(), name, &FontFace::name);
    return found == faces().end() ? nullptr : found;
}

} // namespace platform
