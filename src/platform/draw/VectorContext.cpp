#include "platform/draw/VectorContext.h"

#include "platform/core/Text.h"
#include "platform/draw/CairoSupport.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>

namespace platform {

Result<std::unique_ptr<VectorContext>> VectorContext::make(Format format, const CGSize& points,
                                                           double scale) {
    constexpr double kLongestSide = 1e5;
    const double width = points.width * scale;
    const double height = points.height * scale;
    if (!(width > 0.0 && height > 0.0 && width <= kLongestSide && height <= kLongestSide)) {
        return drawingError("A page of " + text(points.width) + " by " + text(points.height) +
                            " points at scale " + text(scale) +
                            " isn't possible: each side must be above 0 and at most " + text(kLongestSide));
    }
    auto bytes = std::make_unique<std::string>();
    const CairoSurface surface(
        format == Format::svg ? cairo_svg_surface_create_for_stream(appendBytes, bytes.get(), width, height)
                              : cairo_pdf_surface_create_for_stream(appendBytes, bytes.get(), width, height));
    if (format == Format::svg) {
        // A point is a logical pixel; SVG's own "pt" would show the page a third larger.
        cairo_svg_surface_set_document_unit(surface.get(), CAIRO_SVG_UNIT_PX);
    } else {
        // The same drawing gives the same bytes, whenever it is made.
        cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATE_DATE, "2000-01-01T00:00:00Z");
    }
    const std::unique_ptr<cairo_t, decltype(&cairo_destroy)> cairo(cairo_create(surface.get()),
                                                                   cairo_destroy);
    if (cairo_status(cairo.get()) != CAIRO_STATUS_SUCCESS) {
        return drawingError(std::string("The page can't be made: ") +
                            cairo_status_to_string(cairo_status(cairo.get())));
    }
    cairo_scale(cairo.get(), scale, scale);
    return std::unique_ptr<VectorContext>(new VectorContext(cairo.get(), std::move(bytes)));
}

Result<std::string> VectorContext::finish() {
    const cairo_status_t drawn = cairo_status(cairo());
    cairo_surface_t* const surface = cairo_get_target(cairo());
    cairo_surface_finish(surface);
    const cairo_status_t written = cairo_surface_status(surface);
    const cairo_status_t failed = drawn != CAIRO_STATUS_SUCCESS ? drawn : written;
    if (failed != CAIRO_STATUS_SUCCESS) {
        return drawingError(std::string("The page can't be written: ") + cairo_status_to_string(failed));
    }
    return std::move(*bytes_);
}

} // namespace platform
