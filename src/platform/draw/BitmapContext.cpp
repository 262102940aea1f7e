#include "platform/draw/BitmapContext.h"

#include "platform/core/Text.h"
#include "platform/draw/CairoSupport.h"

#include <cmath>
#include <cstring>

namespace platform {

namespace {

bool isPossible(double width, double height) {
    return width >= 1.0 && height >= 1.0 && width <= BitmapContext::kLargestSide &&
           height <= BitmapContext::kLargestSide;
}

using Cairo = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;

/// Fails without memory.
Result<Cairo> drawingOn(const CairoSurface& surface) {
    Cairo cairo(cairo_create(surface.get()), cairo_destroy);
    if (cairo_status(cairo.get()) != CAIRO_STATUS_SUCCESS) {
        return drawingError(std::string("The picture can't be made: ") +
                            cairo_status_to_string(cairo_status(cairo.get())));
    }
    return cairo;
}

} // namespace

Result<std::unique_ptr<BitmapContext>> BitmapContext::make(const CGSize& points, double scale) {
    const double width = std::round(points.width * scale);
    const double height = std::round(points.height * scale);
    if (!isPossible(width, height)) {
        return drawingError("A picture of " + text(points.width) + " by " + text(points.height) +
                            " points at scale " + text(scale) +
                            " isn't possible: each side must come to 1 to " + text(kLargestSide) + " pixels");
    }
    const CairoSurface surface(
        cairo_image_surface_create(CAIRO_FORMAT_ARGB32, static_cast<int>(width), static_cast<int>(height)));
    auto cairo = drawingOn(surface);
    if (!cairo) {
        return cairo.error();
    }
    cairo_scale(cairo.value().get(), scale, scale);
    return std::unique_ptr<BitmapContext>(new BitmapContext(cairo.value().get(), scale));
}

Result<std::unique_ptr<BitmapContext>> BitmapContext::over(std::span<std::uint32_t> pixels, int width,
                                                           int height) {
    if (!isPossible(width, height) ||
        pixels.size() < static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {
        return drawingError("Pixels of " + text(width) + " by " + text(height) +
                            " can't be drawn over: each side must come to 1 to " + text(kLargestSide) +
                            ", and all of them must be there");
    }
    const CairoSurface surface(cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(pixels.data()), CAIRO_FORMAT_ARGB32, width, height,
        width * static_cast<int>(sizeof(std::uint32_t))));
    auto cairo = drawingOn(surface);
    if (!cairo) {
        return cairo.error();
    }
    return std::unique_ptr<BitmapContext>(new BitmapContext(cairo.value().get(), 1.0));
}

int BitmapContext::pixelWidth() const {
    return cairo_image_surface_get_width(cairo_get_target(cairo()));
}

int BitmapContext::pixelHeight() const {
    return cairo_image_surface_get_height(cairo_get_target(cairo()));
}

void BitmapContext::clear() {
    cairo_surface_t* const surface = cairo_get_target(cairo());
    cairo_surface_flush(surface);
    const auto rowBytes = static_cast<std::size_t>(cairo_image_surface_get_stride(surface));
    std::memset(cairo_image_surface_get_data(surface), 0, rowBytes * static_cast<std::size_t>(pixelHeight()));
    cairo_surface_mark_dirty(surface);
}

UIImage BitmapContext::image() const {
    cairo_surface_t* const surface = cairo_get_target(cairo());
    cairo_surface_flush(surface);
    const auto width = static_cast<std::size_t>(pixelWidth());
    const auto height = static_cast<std::size_t>(pixelHeight());
    const auto rowBytes = static_cast<std::size_t>(cairo_image_surface_get_stride(surface));
    const unsigned char* const data = cairo_image_surface_get_data(surface);
    std::vector<std::uint32_t> pixels(width * height);
    for (std::size_t row = 0; row < height; ++row) {
        std::memcpy(pixels.data() + row * width, data + row * rowBytes, width * sizeof(std::uint32_t));
    }
    return {pixelWidth(), pixelHeight(), scale_, std::move(pixels)};
}

} // namespace platform
