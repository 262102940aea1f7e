// The symbols that the panel is made of, each on a canvas of its own.
#include "interface/PanelCanvas.h"
#include "interface/QORLimiterViewBase.h"
#include "interface/TextInRect.h"

#include <numbers>

namespace qor {

namespace {

constexpr CGRect kKnobCanvas = CGRectMake(0.0, 0.0, 90.0, 90.0);
constexpr CGRect kHistoryCanvas = CGRectMake(0.0, 0.0, 390.0, 134.0);
constexpr CGRect kButtonCanvas = CGRectMake(0.0, 0.0, 86.0, 38.0);

constexpr double radians(double degrees) {
    return degrees * std::numbers::pi / 180.0;
}

void strokeWith(UIBezierPath& path, const UIColor& color, double width, CGLineCap cap, CGLineJoin join) {
    color.setStroke();
    path.setLineWidth(width);
    path.setLineCapStyle(cap);
    path.setLineJoinStyle(join);
    path.stroke();
}

void fillOval(const CGRect& rect, const UIColor& color) {
    color.setFill();
    UIBezierPath::bezierPathWithOvalInRect(rect).fill();
}

// A straight hand of width 4 from its tip above the pivot, turned clockwise from upright.
void strokeHand(CGContext& context, const CGPoint& pivot, double degrees, double tip, const UIColor& color) {
    CGContextSaveGState(context);
    CGContextTranslateCTM(context, pivot.x, pivot.y);
    CGContextRotateCTM(context, radians(degrees));
    UIBezierPath hand;
    hand.moveToPoint({.x = 0.0, .y = tip});
    hand.addLineToPoint({.x = 0.0, .y = 0.0});
    strokeWith(hand, color, 4.0, CGLineCap::round, CGLineJoin::round);
    CGContextRestoreGState(context);
}

} // namespace

void QORLimiterViewBase::drawSymbolKnob(const CGRect& frame, ResizingBehavior resizing, double valueKnob,
                                        std::string_view labelKnob, bool isSelected) {
    CGContext& context = unwrap(UIGraphicsGetCurrentContext());
    CGContextSaveGState(context);
    resizing::fit(context, kKnobCanvas.size, resizing.apply(kKnobCanvas, frame));

    const UIColor color = isSelected ? colorSelected1 : colorMain;
    const double degrees = (2.0 * valueKnob - 1.0) * 145.0;
    const std::string valueText = knobValueText(valueKnob);

    UIBezierPath ring = UIBezierPath::bezierPathWithOvalInRect(CGRectMake(21.0, 19.5, 50.0, 50.0));
    color.setStroke();
    ring.setLineWidth(3.0);
    ring.stroke();
    // The pivot lies one unit below the ring's centre.
    strokeHand(context, {.x = 46.0, .y = 45.5}, degrees, -18.0, color);
    fillOval(CGRectMake(23.5, 71.0, 5.0, 5.0), color);
    fillOval(CGRectMake(63.5, 71.0, 5.0, 5.0), color);
    drawTextInRect(context, labelKnob, CGRectMake(9.0, 0.0, 73.0, 9.0), UIFont::systemFontOfSize(10.0),
                   color);
    drawTextInRect(context, valueText, CGRectMake(9.0, 76.0, 73.0, 9.0), UIFont::systemFontOfSize(10.0),
                   colorMain);

    CGContextRestoreGState(context);
}

void QORLimiterViewBase::drawSymbolMeter(const CGRect& frame, ResizingBehavior resizing,
                                         double /*valueMeter1*/, double /*valueMeter2*/, double valueKnob) {
    CGContext& context = unwrap(UIGraphicsGetCurrentContext());
    CGContextSaveGState(context);
    resizing::fit(context, kDialCanvas.size, resizing.apply(kDialCanvas, frame));

    UIBezierPath arc;
    arc.moveToPoint({.x = 198.5, .y = 103.0});
    arc.addLineToPoint({.x = 9.0, .y = 103.0});
    arc.addCurveToPoint({.x = 72.55, .y = 8.55}, {.x = 9.0, .y = 59.31}, {.x = 35.55, .y = 22.16});
    arc.addCurveToPoint({.x = 103.75, .y = 3.0}, {.x = 82.32, .y = 4.95}, {.x = 92.82, .y = 3.0});
    arc.addCurveToPoint({.x = 198.5, .y = 103.0}, {.x = 156.08, .y = 3.0}, {.x = 198.5, .y = 47.77});
    arc.closePath();
    CGContextSaveGState(context);
    context.setLineDash(0.0, {2.0, 3.0});
    strokeWith(arc, colorMain, 2.0, CGLineCap::round, CGLineJoin::round);
    CGContextRestoreGState(context);

    fillOval(CGRectMake(98.0, 92.0, 10.0, 10.0), colorMain);

    UIBezierPath baseLine;
    baseLine.moveToPoint({.x = 3.0, .y = 103.0});
    baseLine.addLineToPoint({.x = 203.0, .y = 103.0});
    strokeWith(baseLine, colorMain, 2.0, CGLineCap::round, CGLineJoin::bevel);

    strokeHand(context, {.x = 103.5, .y = 97.5}, (2.0 * valueKnob - 1.0) * 90.0, -88.0,
               colorMain.colorWithAlphaComponent(0.2));

    CGContextRestoreGState(context);
}

void QORLimiterViewBase::drawSymbolHistory(const CGRect& frame, ResizingBehavior resizing) {
    CGContext& context = unwrap(UIGraphicsGetCurrentContext());
    CGContextSaveGState(context);
    resizing::fit(context, kHistoryCanvas.size, resizing.apply(kHistoryCanvas, frame));

    UIBezierPath border = UIBezierPath::bezierPathWithRoundedRect(CGRectMake(3.5, 3.5, 384.0, 128.0), 3.0);
    strokeWith(border, colorMain, 3.0, CGLineCap::round, CGLineJoin::round);

    CGContextRestoreGState(context);
}

void QORLimiterViewBase::drawSymbolButton(const CGRect& frame, ResizingBehavior resizing, bool isSelected,
                                          std::string_view labelButton) {
    CGContext& context = unwrap(UIGraphicsGetCurrentContext());
    CGContextSaveGState(context);
    resizing::fit(context, kButtonCanvas.size, resizing.apply(kButtonCanvas, frame));

    const UIColor color = isSelected ? colorSelected1 : colorMain;
    const CGRect face = CGRectMake(3.0, 3.0, 80.0, 32.0);
    UIBezierPath border = UIBezierPath::bezierPathWithRoundedRect(face, 3.0);
    strokeWith(border, color, 2.0, CGLineCap::round, CGLineJoin::bevel);
    drawTextInRect(context, labelButton, face, unwrap(UIFont::fontWithName("HelveticaNeue", 12.0)), color);

    CGContextRestoreGState(context);
}

} // namespace qor
