#include "interface/QORLimiterViewBase.h"

#include "interface/AudioUnitViewController.h"
#include "interface/PanelCanvas.h"
#include "interface/TextInRect.h"

namespace qor {

namespace {

constexpr CGRect kKnobSymbol = CGRectMake(-45.0, -45.0, 90.0, 90.0);
constexpr CGRect kButtonSymbol = CGRectMake(-39.0, -16.0, 80.0, 32.0);
constexpr CGRect kModeBox = CGRectMake(232.0, 64.0, 49.0, 23.0);
constexpr double kActiveScale = 1.5;
constexpr double kRestingScale = 1.1;

UIFont condensedBold(double size) {
    return unwrap(UIFont::fontWithName("HelveticaNeue-CondensedBold", size));
}

// Runs `draw` with the symbol's top left corner as origin, clipped to the symbol and enlarged about the
// centre.
template <class Draw>
void placed(CGContext& context, const CGPoint& centre, bool isActive, const CGRect& symbol, Draw draw) {
    const double scale = isActive ? kActiveScale : kRestingScale;
    CGContextSaveGState(context);
    CGContextTranslateCTM(context, centre.x, centre.y);
    CGContextScaleCTM(context, scale, scale);
    CGContextSaveGState(context);
    CGContextClipToRect(context, symbol);
    CGContextTranslateCTM(context, CGRectGetMinX(symbol), CGRectGetMinY(symbol));
    draw(CGRectMake(0.0, 0.0, CGRectGetWidth(symbol), CGRectGetHeight(symbol)));
    CGContextRestoreGState(context);
    CGContextRestoreGState(context);
}

} // namespace

Ref<QOR_Limiter_Extension_AudioUnit> QORLimiterViewBase::audioUnit() const {
    return viewController ? viewController->audioUnit() : nullptr;
}

void QORLimiterViewBase::drawMain(const CGRect& frame, ResizingBehavior0 resizing) {
    CGContext& context = unwrap(UIGraphicsGetCurrentContext());
    CGContextSaveGState(context);
    resizing::fit(context, kPanelCanvas.size, resizing.apply(kPanelCanvas, frame, *this));

    UIBezierPath outerFrame =
        UIBezierPath::bezierPathWithRoundedRect(CGRectMake(16.5, 19.5, 480.0, 300.0), 10.0);
    colorMain.setStroke();
    outerFrame.setLineWidth(3.0);
    outerFrame.setLineCapStyle(CGLineCap::round);
    outerFrame.setLineJoinStyle(CGLineJoin::round);
    outerFrame.stroke();

    drawKnob(context, {.x = 83.0, .y = 94.0}, valueAttack, "attack", isAttackSelected, isAttackActive);
    drawKnob(context, {.x = 182.0, .y = 94.0}, valueRelease, "release", isReleaseSelected, isReleaseActive);
    drawModeBox(context);
    drawKnob(context, {.x = 329.0, .y = 94.0}, valueThreshold, "threshold", isThresholdSelected,
             isThresholdActive);
    drawKnob(context, {.x = 428.0, .y = 94.0}, valueRatio, "knee", isRatioSelected, isRatioActive);
    drawOnDial(context, [this](const CGRect& dial) {
        drawSymbolMeter(dial, ResizingBehavior::stretch, value1, value2, valueThreshold);
    });
    drawKnob(context, {.x = 83.5, .y = 201.5}, valueGain, "gain", isGainSelected, isGainActive);
    drawKnob(context, {.x = 428.5, .y = 201.5}, valueMix, "mix", isMixSelected, isMixActive);
    drawButton(context, {.x = 87.9, .y = 283.86}, "bypass", isBypassSelected, isBypassActive);
    drawButton(context, {.x = 423.9, .y = 281.86}, "audition", isAuditioSelected, isAuditionActive);
    drawTextInRect(context, "QOR LIMITER", CGRectMake(153.0, 267.0, 206.0, 30.0), condensedBold(22.0),
                   colorMain);
    publishHotspots();

    CGContextRestoreGState(context);
}

void QORLimiterViewBase::drawKnob(CGContext& context, const CGPoint& centre, double value,
                                  std::string_view label, bool isSelected, bool isActive) {
    placed(context, centre, isActive, kKnobSymbol, [&](const CGRect& frame) {
        drawSymbolKnob(frame, ResizingBehavior::stretch, value, label, isSelected);
    });
}

void QORLimiterViewBase::drawButton(CGContext& context, const CGPoint& centre, std::string_view label,
                                    bool isSelected, bool isActive) {
    placed(context, centre, isActive, kButtonSymbol, [&](const CGRect& frame) {
        drawSymbolButton(frame, ResizingBehavior::stretch, isSelected, label);
    });
}

void QORLimiterViewBase::drawModeBox(CGContext& context) {
    UIBezierPath box = UIBezierPath::bezierPathWithRoundedRect(kModeBox, 3.0);
    colorSelected1.colorWithAlphaComponent(0.3).setFill();
    box.fill();
    colorMain.colorWithAlphaComponent(0.2).setStroke();
    box.setLineWidth(1.0);
    box.setLineCapStyle(CGLineCap::round);
    box.setLineJoinStyle(CGLineJoin::round);
    box.stroke();
    drawTextInRect(context, "STEREO", kModeBox, condensedBold(10.0), colorMain);
}

void QORLimiterViewBase::publishHotspots() {
    const auto area = [](double x, double y, double width, double height) {
        return UIBezierPath::bezierPathWithRect(CGRectMake(x, y, width, height));
    };
    hotspotAttackPath = area(39.0, 44.0, 90.0, 98.0);
    hotspotReleasePath = area(137.0, 44.0, 90.0, 98.0);
    hotspotThresholdPath = area(284.0, 45.0, 90.0, 98.0);
    hotspotRatioPath = area(384.0, 45.0, 90.0, 98.0);
    hotspotGainPath = area(39.0, 153.0, 90.0, 98.0);
    hotspotMixPath = area(384.0, 158.0, 90.0, 98.0);
    hotspotBypassPath = area(44.0, 266.0, 90.0, 36.0);
    hotspotAuditionPath = area(380.0, 264.0, 90.0, 36.0);
    hotspotCaptionPath = area(166.0, 264.0, 180.0, 36.0);
    hotspotModePath = area(227.0, 54.0, 57.0, 45.0);
    hotspotMeterPath = area(166.0, 151.0, 180.0, 90.0);
}

} // namespace qor
