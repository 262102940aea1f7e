#include "interface/QORDynamicsDisplayViewBase.h"

#include "interface/PanelCanvas.h"

#include <numbers>

namespace qor {

namespace {

struct Indicator {
    CGPoint pivot;
    CGPoint from;
    CGPoint to;
    double lineWidth;
};

// A short line with round caps makes a dot. The two dots' pivots differ by a hundredth of a unit.
constexpr Indicator kSecondDot = {
    .pivot = {103.0, 97.02}, .from = {0.5, -87.52}, .to = {0.5, -86.52}, .lineWidth = 5.0};
constexpr Indicator kFirstDot = {
    .pivot = {103.0, 97.01}, .from = {0.5, -87.51}, .to = {0.5, -86.51}, .lineWidth = 5.0};
constexpr Indicator kNeedle = {
    .pivot = {103.5, 97.5}, .from = {0.0, -80.0}, .to = {0.0, 0.0}, .lineWidth = 4.0};

// At 0 it lies flat to the left, at 0.5 it stands upright, at 1 it lies flat to the right.
void draw(CGContext& context, const Indicator& indicator, double value, const UIColor& color) {
    const double degrees = (2.0 * value - 1.0) * 90.0;
    CGContextSaveGState(context);
    CGContextTranslateCTM(context, indicator.pivot.x, indicator.pivot.y);
    CGContextRotateCTM(context, degrees * std::numbers::pi / 180.0);
    UIBezierPath line;
    line.moveToPoint(indicator.from);
    line.addLineToPoint(indicator.to);
    color.setStroke();
    line.setLineWidth(indicator.lineWidth);
    line.setLineCapStyle(CGLineCap::round);
    line.setLineJoinStyle(CGLineJoin::round);
    line.stroke();
    CGContextRestoreGState(context);
}

} // namespace

void QORDynamicsDisplayViewBase::drawMain(const CGRect& frame, ResizingBehavior0 resizing) {
    CGContext& context = unwrap(UIGraphicsGetCurrentContext());
    CGContextSaveGState(context);
    resizing::fit(context, kPanelCanvas.size, resizing.apply(kPanelCanvas, frame, *this));
    drawOnDial(context, [this](const CGRect& dial) {
        drawSymbolMeter(dial, ResizingBehavior::stretch, value1, value2, value3, value4, valueThreshold);
    });
    CGContextRestoreGState(context);
}

void QORDynamicsDisplayViewBase::drawSymbolMeter(const CGRect& frame, ResizingBehavior resizing,
                                                 double valueMeter1, double valueMeter2, double valueMeter3,
                                                 double valueMeter4, double /*valueKnob*/) {
    CGContext& context = unwrap(UIGraphicsGetCurrentContext());
    CGContextSaveGState(context);
    resizing::fit(context, kDialCanvas.size, resizing.apply(kDialCanvas, frame));

    const UIColor first = colorSelected1.colorWithAlphaComponent(0.6);
    const UIColor second = colorSelected2.colorWithAlphaComponent(0.6);
    // The first needle comes last and so lies on top.
    draw(context, kSecondDot, valueMeter4, second);
    draw(context, kFirstDot, valueMeter3, first);
    draw(context, kNeedle, valueMeter2, second);
    draw(context, kNeedle, valueMeter1, first);

    CGContextRestoreGState(context);
}

} // namespace qor
