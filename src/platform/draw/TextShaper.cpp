#include "platform/draw/TextShaper.h"

#include "platform/core/Fatal.h"

#include <algorithm>
#include <cmath>
#include <hb.h>
#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace platform {

namespace {

template <auto Release>
struct Releaser {
    template <class T>
    void operator()(T* object) const {
        Release(object);
    }
};
template <class T, auto Release>
using Owned = std::unique_ptr<T, Releaser<Release>>;
using Buffer = Owned<hb_buffer_t, hb_buffer_destroy>;

constexpr std::string_view kEllipsis = "\xE2\x80\xA6";
// Widths that come from measuring the same text must not break it.
constexpr double kRounding = 1e-6;

// A face in its own units, read from the bytes in the program; nothing is looked up on the machine.
hb_font_t* openFont(std::span<const unsigned char> file) {
    const Owned<hb_blob_t, hb_blob_destroy> blob(hb_blob_create(reinterpret_cast<const char*>(file.data()),
                                                                static_cast<unsigned>(file.size()),
                                                                HB_MEMORY_MODE_READONLY, nullptr, nullptr));
    const Owned<hb_face_t, hb_face_destroy> face(hb_face_create(blob.get(), 0));
    if (hb_face_get_glyph_count(face.get()) == 0) {
        fatalError("A built-in font is damaged");
    }
    hb_font_t* const font = hb_font_create(face.get());
    hb_font_make_immutable(font); // from here on any thread may use it
    return font;
}

hb_font_t* fontOf(const FontFace& face) {
    static std::mutex guard;
    static std::map<const unsigned char*, Owned<hb_font_t, hb_font_destroy>> opened;
    const std::lock_guard lock(guard);
    auto& font = opened[face.file.data()];
    if (!font) {
        font.reset(openFont(face.file));
    }
    return font.get();
}

// A stretch of text as glyphs from left to right.
class Run {
public:
    Run(hb_font_t* font, std::string_view text) : buffer_(hb_buffer_create()) {
        hb_buffer_add_utf8(buffer_.get(), text.data(), static_cast<int>(text.size()), 0, -1);
        hb_buffer_set_direction(buffer_.get(), HB_DIRECTION_LTR);
        hb_buffer_set_script(buffer_.get(), HB_SCRIPT_LATIN);
        hb_buffer_set_language(buffer_.get(), hb_language_from_string("en", -1)); // never the locale's
        hb_shape(font, buffer_.get(), nullptr, 0);
    }
    std::span<const hb_glyph_info_t> glyphs() const {
        unsigned count = 0;
        const hb_glyph_info_t* const infos = hb_buffer_get_glyph_infos(buffer_.get(), &count);
        return {infos, count};
    }
    std::span<const hb_glyph_position_t> positions() const {
        unsigned count = 0;
        const hb_glyph_position_t* const positions = hb_buffer_get_glyph_positions(buffer_.get(), &count);
        return {positions, count};
    }
    double advance() const {
        double sum = 0.0;
        for (const auto& position : positions()) {
            sum += position.x_advance;
        }
        return sum;
    }

private:
    Buffer buffer_;
};

// Where outlines go: font units with y upwards become points with y downwards.
struct Pen {
    UIBezierPath& outline;
    double scale;
    CGPoint origin;

    CGPoint at(float x, float y) const { return {.x = origin.x + scale * x, .y = origin.y - scale * y}; }
};

void moveTo(hb_draw_funcs_t*, void* pen, hb_draw_state_t*, float x, float y, void*) {
    auto& to = *static_cast<Pen*>(pen);
    to.outline.moveToPoint(to.at(x, y));
}
void lineTo(hb_draw_funcs_t*, void* pen, hb_draw_state_t*, float x, float y, void*) {
    auto& to = *static_cast<Pen*>(pen);
    to.outline.addLineToPoint(to.at(x, y));
}
void cubicTo(hb_draw_funcs_t*, void* pen, hb_draw_state_t*, float c1x, float c1y, float c2x, float c2y,
             float x, float y, void*) {
    auto& to = *static_cast<Pen*>(pen);
    to.outline.addCurveToPoint(to.at(x, y), to.at(c1x, c1y), to.at(c2x, c2y));
}
void closePath(hb_draw_funcs_t*, void* pen, hb_draw_state_t*, void*) {
    static_cast<Pen*>(pen)->outline.closePath();
}

// Quadratic curves arrive as cubic ones: the set has no function for them.
hb_draw_funcs_t* drawFunctions() {
    static const Owned<hb_draw_funcs_t, hb_draw_funcs_destroy> functions = [] {
        Owned<hb_draw_funcs_t, hb_draw_funcs_destroy> made(hb_draw_funcs_create());
        hb_draw_funcs_set_move_to_func(made.get(), moveTo, nullptr, nullptr);
        hb_draw_funcs_set_line_to_func(made.get(), lineTo, nullptr, nullptr);
        hb_draw_funcs_set_cubic_to_func(made.get(), cubicTo, nullptr, nullptr);
        hb_draw_funcs_set_close_path_func(made.get(), closePath, nullptr, nullptr);
        hb_draw_funcs_make_immutable(made.get());
        return made;
    }();
    return functions.get();
}

// One text being laid out.
class Shaper {
public:
    explicit Shaper(const TextBlockKey& key) : key_(key), font_(fontOf(key.font.face())) {
        const double size = key.font.pointSize() * key.font.face().glyphScale;
        scale_ = (size > 0.01 ? std::min(size, 10000.0) : 0.01) / // NaN counts as the smallest size
                 hb_face_get_upem(hb_font_get_face(font_));
        width_ =
            std::isfinite(key.width) ? std::max(key.width, 0.0) : std::numeric_limits<double>::infinity();
    }

    TextBlock block() {
        std::string_view rest = key_.text;
        while (true) {
            const std::size_t end = rest.find('\n');
            addParagraph(rest.substr(0, end));
            if (end == std::string_view::npos) {
                break;
            }
            rest.remove_prefix(end + 1);
        }
        return {key_, std::move(outline_), size_};
    }

private:
    double advanceOf(std::string_view text) const { return Run(font_, text).advance() * scale_; }

    void addParagraph(std::string_view rest) {
        if (key_.lineBreakMode == NSLineBreakMode::truncatingTail) {
            addLine(truncated(rest));
            return;
        }
        std::size_t end = fitting(rest, width_);
        while (end < rest.size()) {
            std::string_view line = rest.substr(0, end);
            line = line.substr(0, line.find_last_not_of(' ') + 1);
            addLine(std::string(line));
            rest.remove_prefix(end);
            rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
            end = fitting(rest, width_);
        }
        addLine(std::string(rest));
    }

    // How many bytes go on a line of this width: all, or up to the last space that fits, or else as many
    // letters as fit, at least one.
    std::size_t fitting(std::string_view text, double width) const {
        const Run run(font_, text);
        double x = 0.0;
        std::size_t afterSpace = 0;
        for (std::size_t index = 0; index < run.glyphs().size(); ++index) {
            const std::size_t start = run.glyphs()[index].cluster;
            if (start > 0 && text[start - 1] == ' ') {
                afterSpace = start;
            }
            x += run.positions()[index].x_advance * scale_;
            if (x > width + kRounding && text[start] != ' ' && start > 0) {
                return afterSpace > 0 ? afterSpace : start;
            }
        }
        return text.size();
    }

    std::string truncated(std::string_view text) const {
        if (advanceOf(text) <= width_ + kRounding) {
            return std::string(text);
        }
        const double room = width_ - advanceOf(kEllipsis);
        const Run run(font_, text);
        double x = 0.0;
        std::size_t end = 0;
        for (std::size_t index = 0; index < run.glyphs().size() && x <= room; ++index) {
            end = run.glyphs()[index].cluster;
            x += run.positions()[index].x_advance * scale_;
        }
        return std::string(text.substr(0, end)) + std::string(kEllipsis);
    }

    void addLine(const std::string& text) {
        const Run run(font_, text);
        const double lineWidth = run.advance() * scale_;
        double x = std::isfinite(key_.width) ? (key_.width - lineWidth) * shareBefore() : 0.0;
        const double baseline = size_.height + key_.font.ascender();
        for (std::size_t index = 0; index < run.glyphs().size(); ++index) {
            const hb_glyph_position_t& position = run.positions()[index];
            Pen pen{
                .outline = outline_,
                .scale = scale_,
                .origin = {.x = x + position.x_offset * scale_, .y = baseline - position.y_offset * scale_}};
            hb_font_get_glyph_shape(font_, run.glyphs()[index].codepoint, drawFunctions(), &pen);
            x += position.x_advance * scale_;
        }
        size_.width = std::max(size_.width, lineWidth);
        size_.height += key_.font.lineHeight();
    }

    double shareBefore() const {
        switch (key_.alignment) {
        case NSTextAlignment::center:
            return 0.5;
        case NSTextAlignment::right:
            return 1.0;
        case NSTextAlignment::left:
            break;
        }
        return 0.0;
    }

    const TextBlockKey& key_;
    hb_font_t* font_;
    double scale_; // points per font unit
    double width_;
    UIBezierPath outline_;
    CGSize size_;
};

} // namespace

TextBlock shapeText(const TextBlockKey& key) {
    return Shaper(key).block();
}

} // namespace platform
