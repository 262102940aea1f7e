#include "platform/net/ImageDecoding.h"

#include <gdk-pixbuf/gdk-pixbuf.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace platform {

namespace {

constexpr int kMostPixels = 16384;

struct Unref {
    void operator()(void* object) const { g_object_unref(object); }
};
using Loader = std::unique_ptr<GdkPixbufLoader, Unref>;
using Pixels = std::unique_ptr<GdkPixbuf, Unref>;

NSError imageError(const std::string& why) {
    return {NSCocoaErrorDomain, 1, {{NSLocalizedDescriptionKey, "The data is no picture: " + why}}};
}

NSError taken(GError* error) {
    NSError result = imageError(error != nullptr ? error->message : "unknown format");
    g_clear_error(&error);
    return result;
}

/// A size of nothing keeps the loader from making room for a picture that is too large.
void refuseHuge(GdkPixbufLoader* loader, int width, int height, void* refused) {
    if (width > kMostPixels || height > kMostPixels) {
        *static_cast<bool*>(refused) = true;
        gdk_pixbuf_loader_set_size(loader, 0, 0);
    }
}

/// `component` by `alpha`, rounded, both out of 255.
std::uint32_t multiplied(std::uint32_t component, std::uint32_t alpha) {
    return (component * alpha + 127) / 255;
}

UIImage toImage(const GdkPixbuf* pixbuf) {
    const int width = gdk_pixbuf_get_width(pixbuf);
    const int height = gdk_pixbuf_get_height(pixbuf);
    const auto channels = static_cast<std::size_t>(gdk_pixbuf_get_n_channels(pixbuf));
    const auto stride = static_cast<std::size_t>(gdk_pixbuf_get_rowstride(pixbuf));
    const guint8* const bytes = gdk_pixbuf_read_pixels(pixbuf);
    std::vector<std::uint32_t> pixels;
    pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (std::size_t y = 0; y < static_cast<std::size_t>(height); ++y) {
        for (std::size_t x = 0; x < static_cast<std::size_t>(width); ++x) {
            const guint8* const from = bytes + y * stride + x * channels;
            const std::uint32_t alpha = channels == 4 ? from[3] : 255;
            pixels.push_back(alpha << 24 | multiplied(from[0], alpha) << 16 |
                             multiplied(from[1], alpha) << 8 | multiplied(from[2], alpha));
        }
    }
    return {width, height, 1.0, std::move(pixels)};
}

} // namespace

Result<UIImage> imageWithData(const Data& data) {
    if (data.empty()) {
        return imageError("it is empty");
    }
    const Loader loader(gdk_pixbuf_loader_new());
    bool refused = false;
    g_signal_connect(loader.get(), "size-prepared", G_CALLBACK(refuseHuge), &refused);
    GError* error = nullptr;
    const bool written = gdk_pixbuf_loader_write(loader.get(), data.data(), data.size(), &error) != FALSE;
    GError* closing = nullptr;
    const bool closed = gdk_pixbuf_loader_close(loader.get(), &closing) != FALSE;
    if (refused) {
        g_clear_error(&error);
        g_clear_error(&closing);
        return imageError("it has more than 16384 pixels in a direction");
    }
    if (!written || !closed) {
        if (error != nullptr) {
            g_clear_error(&closing);
            return taken(error);
        }
        return taken(closing);
    }
    GdkPixbuf* const decoded = gdk_pixbuf_loader_get_pixbuf(loader.get());
    if (decoded == nullptr) {
        return imageError("it holds no pixels");
    }
    const Pixels upright(gdk_pixbuf_apply_embedded_orientation(decoded));
    return toImage(upright != nullptr ? upright.get() : decoded);
}

} // namespace platform
