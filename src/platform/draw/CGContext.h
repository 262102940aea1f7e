// The drawing surface: a stack of states (matrix, clip, colours, dash) and the operations that paint.
#pragma once

#include "platform/draw/CGAffineTransform.h"
#include "platform/draw/UIBezierPath.h"
#include "platform/draw/UIColor.h"

#include <string_view>
#include <vector>

namespace platform {

class TextBlock;
class UIImage;

/// One surface with its own stack of matrices. A matrix that flattens the plane or is not finite is allowed:
/// nothing is drawn through it until the state before it is restored. One thread at a time.
class CGContext {
public:
    CGContext() = default;
    CGContext(const CGContext&) = delete;
    CGContext& operator=(const CGContext&) = delete;
    virtual ~CGContext() = default;

    void saveGState();
    /// Without a saved state nothing happens.
    void restoreGState();
    void translateCTM(double tx, double ty);
    void scaleCTM(double sx, double sy);
    /// In radians, clockwise on the screen.
    void rotateCTM(double angle);
    /// Narrows the clip to its intersection with the rectangle, for as long as the state lasts.
    void clipToRect(const CGRect& rect);
    /// Lengths of drawn and left-out pieces in units of the matrix; none, or lengths that are negative, not
    /// finite or all 0, mean a solid line.
    void setLineDash(double phase, std::vector<double> lengths);
    void setStrokeColor(const UIColor& color);
    void setFillColor(const UIColor& color);

    /// Strokes with the path's width, cap and join and the state's colour and dash.
    void strokePath(const UIBezierPath& path);
    void fillPath(const UIBezierPath& path);
    /// Draws a laid-out text with its top left corner at `origin`.
    void drawText(const TextBlock& text, const CGPoint& origin, const UIColor& color);
    /// Draws an image stretched over the rectangle.
    void drawImage(const UIImage& image, const CGRect& rect);

    /// From user space to the space that the context started with.
    const CGAffineTransform& ctm() const { return state_.ctm; }
    /// How many states are saved.
    std::size_t stateDepth() const { return saved_.size(); }

protected:
    struct State {
        CGAffineTransform ctm;
        UIColor stroke;
        UIColor fill;
        double dashPhase = 0.0;
        std::vector<double> dashLengths;
        bool drawsNothing = false; // clipped through a matrix that flattens
    };
    const State& state() const { return state_; }

    // What a surface does. Painting operations are called only while something can be seen through the
    // matrix, unless the surface asks for all of them.
    virtual bool wantsInvisible() const { return false; }
    virtual void onSave() {}
    virtual void onRestore() {}
    virtual void onTranslate(double, double) {}
    virtual void onScale(double, double) {}
    virtual void onRotate(double) {}
    virtual void onDash() {}
    virtual void onClip(const CGRect& rect) = 0;
    virtual void onStroke(const UIBezierPath& path) = 0;
    virtual void onFill(const UIBezierPath& path) = 0;
    virtual void onText(const TextBlock& text, const CGPoint& origin, const UIColor& color) = 0;
    virtual void onImage(const UIImage& image, const CGRect& rect) = 0;

private:
    bool drawable() const;

    State state_;
    std::vector<State> saved_;
};

/// The context on top of this thread's stack, null if there is none.
CGContext* UIGraphicsGetCurrentContext();
/// Not owned; must stay until it is popped.
void UIGraphicsPushContext(CGContext& context);
void UIGraphicsPopContext();

/// Makes a context the current one for the scope's length.
class GraphicsScope {
public:
    explicit GraphicsScope(CGContext& context) { UIGraphicsPushContext(context); }
    ~GraphicsScope() { UIGraphicsPopContext(); }
    GraphicsScope(const GraphicsScope&) = delete;
    GraphicsScope& operator=(const GraphicsScope&) = delete;
};

// The same operations under the platform's names.
inline void CGContextSaveGState(CGContext& context) {
    context.saveGState();
}
inline void CGContextRestoreGState(CGContext& context) {
    context.restoreGState();
}
inline void CGContextTranslateCTM(CGContext& context, double tx, double ty) {
    context.translateCTM(tx, ty);
}
inline void CGContextScaleCTM(CGContext& context, double sx, double sy) {
    context.scaleCTM(sx, sy);
}
inline void CGContextRotateCTM(CGContext& context, double angle) {
    context.rotateCTM(angle);
}
inline void CGContextClipToRect(CGContext& context, const CGRect& rect) {
    context.clipToRect(rect);
}

} // namespace platform
