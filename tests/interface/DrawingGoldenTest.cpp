// The recorded operations of each drawing routine. The kept texts were reviewed against the tables of
// elements.
#include "interface/PanelScene.h"
#include "platform/draw/RecordingContext.h"
#include "support/Golden.h"

#include <functional>
#include <gtest/gtest.h>

using namespace qor;
using Symbol = QORLimiterViewBase::ResizingBehavior;

namespace {

std::string recorded(const std::function<void()>& draw) {
    RecordingContext context;
    const GraphicsScope scope(context);
    draw();
    return context.text();
}

TEST(DrawingGolden, PanelAtItsCanvasSize) {
    QORLimiterViewBase base;
    test::expectGolden("drawing/panel.txt", recorded([&] { base.drawMain(); }));
}

TEST(DrawingGolden, PanelWithEverythingActiveAndSelectedAtTwiceTheSize) {
    QORLimiterViewBase base;
    base.isAttackActive = base.isReleaseActive = base.isThresholdActive = base.isRatioActive = true;
    base.isGainActive = base.isMixActive = base.isBypassActive = base.isAuditionActive = true;
    base.isAttackSelected = base.isReleaseSelected = base.isThresholdSelected = base.isRatioSelected = true;
    base.isGainSelected = base.isMixSelected = base.isBypassSelected = base.isAuditioSelected = true;
    base.valueAttack = 0.0;
    base.valueRelease = 0.25;
    base.valueThreshold = 0.75;
    base.valueRatio = 1.0;
    base.valueGain = 0.125;
    base.valueMix = 1.5;
    test::expectGolden("drawing/panel-active-selected.txt",
                       recorded([&] { base.drawMain(CGRectMake(0, 0, 1024, 680)); }));
}

TEST(DrawingGolden, KnobWithItsDefaults) {
    QORLimiterViewBase base;
    test::expectGolden("drawing/knob.txt", recorded([&] { base.drawSymbolKnob(); }));
}

TEST(DrawingGolden, DialWithItsDefaults) {
    QORLimiterViewBase base;
    test::expectGolden("drawing/dial.txt", recorded([&] { base.drawSymbolMeter(); }));
}

TEST(DrawingGolden, HistoryWithItsDefaultsAndStretched) {
    QORLimiterViewBase base;
    test::expectGolden("drawing/history.txt", recorded([&] {
                           base.drawSymbolHistory();
                           base.drawSymbolHistory(CGRectMake(10, 20, 195, 67), Symbol::stretch);
                       }));
}

TEST(DrawingGolden, ButtonWithItsDefaultsAndSqueezed) {
    QORLimiterViewBase base;
    test::expectGolden("drawing/button.txt", recorded([&] {
                           base.drawSymbolButton();
                           base.drawSymbolButton(CGRectMake(0, 0, 80, 32), Symbol::stretch, false, "bypass");
                       }));
}

TEST(DrawingGolden, NeedlesAtRestAndInMotion) {
    QORDynamicsDisplayViewBase base;
    test::expectGolden("drawing/needles.txt", recorded([&] {
                           base.drawMain();
                           base.value1 = 0.75;
                           base.value2 = 0.25;
                           base.value3 = 0.5;
                           base.value4 = 1.5;
                           base.drawMain(CGRectMake(0, 0, 1024, 680));
                       }));
}

TEST(DrawingGolden, NeedlesSymbolWithItsDefaults) {
    QORDynamicsDisplayViewBase base;
    test::expectGolden("drawing/needles-symbol.txt", recorded([&] { base.drawSymbolMeter(); }));
}

TEST(DrawingGolden, PlateOnItsOwn) {
    PluginFrameBaseEx base;
    test::expectGolden("drawing/plate.txt", recorded([&] { base.draw(CGRectMake(8, 6, 512, 340)); }));
}

} // namespace
