#include "interface/PanelScene.h"

#include "interface/Contrast.h"
#include "interface/PanelCanvas.h"

namespace qor {

PanelScene::PanelScene() {
    plate_.contrast = 0.15F; // the plate's view starts darker than the plate on its own
}

void PanelScene::setContrast(float contrast) {
    const double level = contrast;
    plate_.contrast = level;
    applyContrast(panel, level);
    applyContrast(needles, level);
}

void PanelScene::setMeters(double compression1, double compression2, double peak1, double peak2) {
    needles.value1 = compression1;
    needles.value2 = compression2;
    needles.value3 = peak1;
    needles.value4 = peak2;
}

void PanelScene::draw(const CGRect& bounds) {
    // The plate takes whatever rectangle it is given, so that it is the scene that keeps the proportions.
    const CGRect fitted =
        QORLimiterViewBase::ResizingBehavior(QORLimiterViewBase::ResizingBehavior::aspectFit)
            .apply(kPanelCanvas, bounds);
    plate_.draw(fitted);
    panel.drawMain(fitted);
    needles.drawMain(fitted);
}

} // namespace qor
