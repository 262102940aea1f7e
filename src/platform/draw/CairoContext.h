// A context that draws on any Cairo surface.
#pragma once

#include "platform/draw/CGContext.h"

#include <cmath>

// Cairo's own name, so that its header isn't needed here. NOLINTNEXTLINE(bugprone-reserved-identifier)
using cairo_t = struct _cairo;

namespace platform {

/// Draws on `cairo`, which stays alive as long as the context. The matrix and clip that it has at the start
/// are those of the surface: user space begins as points under that matrix. No state of this class can bring
/// Cairo into its error state.
class CairoContext : public CGContext {
public:
    explicit CairoContext(cairo_t* cairo);
    ~CairoContext() override;

    /// False once Cairo has failed (no memory).
    bool ok() const;
    /// A rectangle in the surface's own units outside of which nothing has been drawn so far; empty at first.
    CGRect inked() const;

protected:
    cairo_t* cairo() const { return cairo_; }

    void onSave() override;
    void onRestore() override;
    void onClip(const CGRect& rect) override;
    void onStroke(const UIBezierPath& path) override;
    void onFill(const UIBezierPath& path) override;
    void onText(const TextBlock& text, const CGPoint& origin, const UIColor& color) override;
    void onImage(const UIImage& image, const CGRect& rect) override;

private:
    struct Extent {
        double left = INFINITY;
        double top = INFINITY;
        double right = -INFINITY;
        double bottom = -INFINITY;
        void include(double x, double y);
    };

    CGAffineTransform deviceMap() const;
    bool addPath(const UIBezierPath& path, const CGAffineTransform& map);
    /// The path that was added last is about to be drawn, reaching this far beyond its points.
    void willDraw(double margin);
    void fillWith(const UIBezierPath& path, const CGAffineTransform& map, const UIColor& color);

    cairo_t* cairo_;
    CGAffineTransform base_;
    Extent path_; // of the points of the path that was added last, in device space
    Extent ink_;
};

} // namespace platform
