// A context that draws into an SVG or PDF document.
#pragma once

#include "platform/core/Result.h"
#include "platform/draw/CairoContext.h"

#include <cstdint>
#include <memory>
#include <string>

namespace platform {

/// One page of vectors; texts are outlines, so that no font is needed to see it.
class VectorContext final : public CairoContext {
public:
    enum class Format : std::uint8_t { svg, pdf };

    /// A page of `points` times `scale` points. Fails for lengths that aren't above 0 and finite.
    static Result<std::unique_ptr<VectorContext>> make(Format format, const CGSize& points,
                                                       double scale = 1.0);

    /// Ends the document and returns its bytes; nothing can be drawn after it.
    Result<std::string> finish();

private:
    VectorContext(cairo_t* cairo, std::unique_ptr<std::string> bytes)
        : CairoContext(cairo), bytes_(std::move(bytes)) {}

    std::unique_ptr<std::string> bytes_; // filled by the surface, so it must not move
};

} // namespace platform
