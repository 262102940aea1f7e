// The drawing half of the dynamics display: two needles and two dots over the panel's dial.
#pragma once

#include "interface/Resizing.h"
#include "platform/core/Core.h"
#include "platform/draw/Draw.h"

#include <cstdint>
#include <optional>

namespace qor {

/// Draws on the panel's canvas of 512 by 340 units, without a background, so that the indicators land on the
/// dial where both views have the same bounds. Main thread only. Without a current graphics context each
/// drawing operation stops the process.
class QORDynamicsDisplayViewBase {
public:
    using ResizingBehavior = resizing::SymbolBehavior<QORDynamicsDisplayViewBase>;
    using ResizingBehavior0 = resizing::ViewBehavior<QORDynamicsDisplayViewBase>;

    QORDynamicsDisplayViewBase() = default;
    QORDynamicsDisplayViewBase(const QORDynamicsDisplayViewBase&) = delete;
    QORDynamicsDisplayViewBase& operator=(const QORDynamicsDisplayViewBase&) = delete;
    virtual ~QORDynamicsDisplayViewBase() = default;

    UIColor colorContrast{0.0, 0.0, 0.0, 1.0};
    UIColor colorContrastInverted{1.0, 1.0, 1.0, 1.0};
    UIColor colorMain{0.753, 0.753, 0.753, 1.0};     // kept in step with the panel; not drawn with
    UIColor colorSelected1{0.76, 0.29, 0.29, 1.0};   // of the first needle and dot
    UIColor colorSelected2{0.195, 0.479, 0.75, 1.0}; // of the second

    double value1 = 1.0;         // first compression needle, 0 to 1; 1 is no reduction
    double value2 = 1.0;         // second
    double value3 = 0.0;         // first output dot, 0 to 1
    double value4 = 0.0;         // second
    double valueThreshold = 0.5; // without effect on the picture

    virtual void drawMain(const CGRect& frame = CGRectMake(0.0, 0.0, 512.0, 340.0),
                          ResizingBehavior0 resizing = ResizingBehavior0::aspectFit);
    /// The indicators aren't clamped; `valueKnob` has no effect on the picture.
    virtual void drawSymbolMeter(const CGRect& frame = CGRectMake(0.0, 0.0, 206.0, 106.0),
                                 ResizingBehavior resizing = ResizingBehavior::aspectFit,
                                 double valueMeter1 = 1.0, double valueMeter2 = 1.0, double valueMeter3 = 0.0,
                                 double valueMeter4 = 0.0, double valueKnob = 0.5);

    /// The last factors of `ResizingBehavior0::apply`. A frame that is the canvas itself leaves it as it was.
    CGSize viewScale;
};

} // namespace qor
