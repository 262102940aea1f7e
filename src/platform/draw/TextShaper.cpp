#include "platform/draw/TextShaper.h"

#include "platform/core/Fatal.h"

#include <algorithm>
#include <cmath>
#include <fontconfig/fontconfig.h>
#include <memory>
#include <pango/pangocairo.h>
#include <pango/pangofc-fontmap.h>
#include <string>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

namespace platform {

namespace {

// Outlines are taken at this enlargement: the path's coordinates are whole 256ths of a unit there.
constexpr double kOutlineScale = 64.0;

template <auto Release>
struct Releaser {
    template <class T>
    void operator()(T* object) const {
        Release(object);
    }
};
template <class T, auto Release>
using Owned = std::unique_ptr<T, Releaser<Release>>;

using Layout = Owned<PangoLayout, g_object_unref>;
using LayoutIter = Owned<PangoLayoutIter, pango_layout_iter_free>;
using Description = Owned<PangoFontDescription, pango_font_description_free>;

// The font engines want files. An unnamed one in memory holds the face for the process's life; nothing is
// written to a disk and nothing is looked up there.
std::string memoryFile(std::span<const unsigned char> bytes) {
    const int file = memfd_create("qor-font", MFD_CLOEXEC);
    std::size_t written = 0;
    while (file >= 0 && written < bytes.size()) {
        const ssize_t step = write(file, bytes.data() + written, bytes.size() - written);
        if (step <= 0) {
            break;
        }
        written += static_cast<std::size_t>(step);
    }
    if (written != bytes.size()) {
        fatalError("The built-in fonts can't be held in memory (memfd_create or write failed)");
    }
    return "/proc/self/fd/" + std::to_string(file);
}

const std::vector<std::string>& fontFiles() {
    static const std::vector<std::string> paths = [] {
        std::vector<std::string> made;
        for (const auto& bytes : builtInFontFiles()) {
            made.push_back(memoryFile(bytes));
        }
        return made;
    }();
    return paths;
}

// One engine a thread: the font map is not made for several.
class Engine {
public:
    Engine()
        : config_(FcConfigCreate()), fontMap_(pango_cairo_font_map_new_for_font_type(CAIRO_FONT_TYPE_FT)) {
        for (const std::string& path : fontFiles()) {
            if (FcConfigAppFontAddFile(config_.get(), reinterpret_cast<const FcChar8*>(path.c_str())) ==
                FcFalse) {
                fatalError("A built-in font can't be read from " + path);
            }
        }
        pango_fc_font_map_set_config(PANGO_FC_FONT_MAP(fontMap_.get()), config_.get());
        context_.reset(pango_font_map_create_context(fontMap_.get()));
        // The locale must not choose glyphs, and positions must not depend on the pixel grid.
        pango_context_set_language(context_.get(), pango_language_from_string("en"));
        pango_context_set_round_glyph_positions(context_.get(), FALSE);
        const Owned<cairo_font_options_t, cairo_font_options_destroy> options(cairo_font_options_create());
        cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
        cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
        cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
        pango_cairo_context_set_font_options(context_.get(), options.get());
        surface_.reset(cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1));
        pen_.reset(cairo_create(surface_.get()));
        cairo_scale(pen_.get(), kOutlineScale, kOutlineScale);
    }

    Layout layout(const TextBlockKey& key) const {
        Layout made(pango_layout_new(context_.get()));
        const FontFace& face = key.font.face();
        const Description description(pango_font_description_new());
        pango_font_description_set_family_static(description.get(), face.family);
        pango_font_description_set_weight(description.get(),
                                          face.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
        const double wanted = key.font.pointSize() * face.glyphScale;
        const double size = wanted > 0.01 ? std::min(wanted, 10000.0) : 0.01; // NaN too
        pango_font_description_set_absolute_size(description.get(), size * PANGO_SCALE);
        pango_layout_set_font_description(made.get(), description.get());
        pango_layout_set_text(made.get(), key.text.data(), static_cast<int>(key.text.size()));
        if (std::isfinite(key.width)) {
            pango_layout_set_width(made.get(),
                                   static_cast<int>(std::clamp(key.width, 0.0, 1e6) * PANGO_SCALE));
        }
        if (key.lineBreakMode == NSLineBreakMode::truncatingTail) {
            pango_layout_set_ellipsize(made.get(), PANGO_ELLIPSIZE_END);
        } else {
            pango_layout_set_wrap(made.get(), PANGO_WRAP_WORD_CHAR);
        }
        return made;
    }

    // Adds a line's outlines with its baseline starting at `start`.
    void addLine(PangoLayoutLine* line, const CGPoint& start, UIBezierPath& outline) const {
        cairo_new_path(pen_.get());
        cairo_move_to(pen_.get(), 0.0, 0.0);
        pango_cairo_layout_line_path(pen_.get(), line);
        const Owned<cairo_path_t, cairo_path_destroy> path(cairo_copy_path(pen_.get()));
        const auto at = [&](const cairo_path_data_t& data) {
            return CGPointMake(start.x + data.point.x, start.y + data.point.y);
        };
        for (int index = 0; index < path->num_data; index += path->data[index].header.length) {
            const cairo_path_data_t* data = &path->data[index];
            switch (data->header.type) {
            case CAIRO_PATH_MOVE_TO:
                outline.moveToPoint(at(data[1]));
                break;
            case CAIRO_PATH_LINE_TO:
                outline.addLineToPoint(at(data[1]));
                break;
            case CAIRO_PATH_CURVE_TO:
                outline.addCurveToPoint(at(data[3]), at(data[1]), at(data[2]));
                break;
            case CAIRO_PATH_CLOSE_PATH:
                outline.closePath();
                break;
            }
        }
    }

private:
    Owned<FcConfig, FcConfigDestroy> config_;
    Owned<PangoFontMap, g_object_unref> fontMap_;
    Owned<PangoContext, g_object_unref> context_;
    Owned<cairo_surface_t, cairo_surface_destroy> surface_;
    Owned<cairo_t, cairo_destroy> pen_;
};

const Engine& engine() {
    thread_local const Engine instance;
    return instance;
}

double shareBefore(NSTextAlignment alignment) {
    switch (alignment) {
    case NSTextAlignment::center:
        return 0.5;
    case NSTextAlignment::right:
        return 1.0;
    case NSTextAlignment::left:
        break;
    }
    return 0.0;
}

} // namespace

TextBlock shapeText(const TextBlockKey& key) {
    const Layout layout = engine().layout(key);
    UIBezierPath outline;
    CGSize size;
    const LayoutIter lines(pango_layout_get_iter(layout.get()));
    do {
        PangoLayoutLine* const line = pango_layout_iter_get_line_readonly(lines.get());
        PangoRectangle logical{};
        pango_layout_line_get_extents(line, nullptr, &logical);
        const double width = logical.width / double{PANGO_SCALE};
        const double left = std::isfinite(key.width) ? (key.width - width) * shareBefore(key.alignment) : 0.0;
        engine().addLine(line, {.x = left, .y = size.height + key.font.ascender()}, outline);
        size.width = std::max(size.width, width);
        size.height += key.font.lineHeight();
    } while (pango_layout_iter_next_line(lines.get()) != FALSE);
    return {key, std::move(outline), size};
}

} // namespace platform
