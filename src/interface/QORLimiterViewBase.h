// The drawing half of the editor's surface: six knobs, two buttons, a mode box, the caption and the dial.
#pragma once

#include "interface/Resizing.h"
#include "platform/core/Core.h"
#include "platform/draw/Draw.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace qor {

class AudioUnitViewController;
class QOR_Limiter_Extension_AudioUnit;

/// Draws the panel on a canvas of 512 by 340 units that is fitted to a view, and leaves the touch areas
/// behind in canvas units. The surface writes the fields; drawing changes only the touch areas and
/// `viewScale`. Main thread only. Without a current graphics context each drawing operation stops the
/// process.
class QORLimiterViewBase {
public:
    using ResizingBehavior = resizing::SymbolBehavior<QORLimiterViewBase>;
    using ResizingBehavior0 = resizing::ViewBehavior<QORLimiterViewBase>;

    QORLimiterViewBase() = default;
    QORLimiterViewBase(const QORLimiterViewBase&) = delete;
    QORLimiterViewBase& operator=(const QORLimiterViewBase&) = delete;
    virtual ~QORLimiterViewBase() = default;

    Ref<AudioUnitViewController> viewController;
    /// The controller's unit; absent without a controller.
    virtual Ref<QOR_Limiter_Extension_AudioUnit> audioUnit() const;

    UIColor colorContrast{0.0, 0.0, 0.0, 1.0};         // no drawing reads it
    UIColor colorContrastInverted{1.0, 1.0, 1.0, 1.0}; // no drawing reads it
    UIColor colorMain{0.753, 0.753, 0.753, 1.0};       // of everything that is not selected
    UIColor colorSelected1{0.76, 0.29, 0.29, 1.0};     // of what is selected
    UIColor colorSelected2{0.195, 0.479, 0.75, 1.0};   // read by the dial, without effect
    UIColor colorHotspots{0.652, 0.8, 0.32, 0.198};    // no drawing reads it

    // Touched: drawn enlarged.
    bool isAttackActive = false;
    bool isReleaseActive = false;
    bool isThresholdActive = false;
    bool isRatioActive = false;
    bool isGainActive = false;
    bool isMixActive = false;
    bool isBypassActive = false;
    bool isAuditionActive = false;

    // Knob positions, 0 to 1. The knob labelled "knee" is the one of the Ratio fields.
    double valueAttack = 0.5;
    double valueRelease = 0.5;
    double valueThreshold = 0.5;
    double valueRatio = 0.5;
    double valueGain = 0.5;
    double valueMix = 0.5;

    // Switched to the selection colour.
    bool isAttackSelected = false;
    bool isReleaseSelected = false;
    bool isThresholdSelected = false;
    bool isRatioSelected = false;
    bool isGainSelected = false;
    bool isMixSelected = false;
    bool isBypassSelected = false;
    bool isAuditioSelected = false;

    // Passed to the dial, which shows nothing of them.
    double value1 = 1.0;
    double value2 = 1.0;

    // Touch areas in canvas units, made anew by every drawMain; empty before the first.
    UIBezierPath hotspotAttackPath;
    UIBezierPath hotspotReleasePath;
    UIBezierPath hotspotThresholdPath;
    UIBezierPath hotspotRatioPath;
    UIBezierPath hotspotGainPath;
    UIBezierPath hotspotMixPath;
    UIBezierPath hotspotBypassPath;
    UIBezierPath hotspotAuditionPath;
    UIBezierPath hotspotCaptionPath;
    UIBezierPath hotspotModePath;
    UIBezierPath hotspotMeterPath;

    virtual void drawMain(const CGRect& frame = CGRectMake(0.0, 0.0, 512.0, 340.0),
                          ResizingBehavior0 resizing = ResizingBehavior0::aspectFit);
    /// The pointer isn't clamped. A value that `knobValueText` can't write stops the process.
    virtual void drawSymbolKnob(const CGRect& frame = CGRectMake(0.0, 0.0, 90.0, 90.0),
                                ResizingBehavior resizing = ResizingBehavior::aspectFit,
                                double valueKnob = 0.5, std::string_view labelKnob = "parameter",
                                bool isSelected = true);
    /// The dial with the threshold's needle; the first two values have no effect on the picture.
    virtual void drawSymbolMeter(const CGRect& frame = CGRectMake(0.0, 0.0, 206.0, 106.0),
                                 ResizingBehavior resizing = ResizingBehavior::aspectFit,
                                 double valueMeter1 = 0.774, double valueMeter2 = 0.799,
                                 double valueKnob = 0.5);
    /// Part of the set of symbols; the panel doesn't show it.
    virtual void drawSymbolHistory(const CGRect& frame = CGRectMake(0.0, 0.0, 390.0, 134.0),
                                   ResizingBehavior resizing = ResizingBehavior::aspectFit);
    virtual void drawSymbolButton(const CGRect& frame = CGRectMake(0.0, 0.0, 86.0, 38.0),
                                  ResizingBehavior resizing = ResizingBehavior::aspectFit,
                                  bool isSelected = true, std::string_view labelButton = "button");

    /// The last factors of `ResizingBehavior0::apply`. A frame that is the canvas itself leaves it as it was.
    CGSize viewScale;

private:
    void drawKnob(CGContext& context, const CGPoint& centre, double value, std::string_view label,
                  bool isSelected, bool isActive);
    void drawButton(CGContext& context, const CGPoint& centre, std::string_view label, bool isSelected,
                    bool isActive);
    void drawModeBox(CGContext& context);
    void publishHotspots();
};

} // namespace qor
