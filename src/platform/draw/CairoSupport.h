// Small helpers around Cairo's objects; used inside the drawing layer only.
#pragma once

#include "platform/core/NSError.h"
#include "platform/draw/UIImage.h"

#include <cairo.h>
#include <memory>
#include <string>

namespace platform {

struct CairoSurfaceRelease {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using CairoSurface = std::unique_ptr<cairo_surface_t, CairoSurfaceRelease>;

/// A surface on the picture's own pixels; the picture must outlive it and stay as it is.
inline CairoSurface surfaceOver(const UIImage& image) {
    auto* bytes = reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(image.pixels().data()));
    return CairoSurface(cairo_image_surface_create_for_data(bytes, CAIRO_FORMAT_ARGB32, image.pixelWidth(),
                                                            image.pixelHeight(), image.pixelWidth() * 4));
}

/// Appends to the `std::string` that the closure points to.
inline cairo_status_t appendBytes(void* closure, const unsigned char* data, unsigned length) {
    static_cast<std::string*>(closure)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

inline constexpr const char* kDrawingErrorDomain = "QORDrawingErrorDomain";

inline NSError drawingError(std::string message) {
    return {kDrawingErrorDomain, 1, {{NSLocalizedDescriptionKey, std::move(message)}}};
}

} // namespace platform
