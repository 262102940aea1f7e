#include "interface/PanelScene.h"

namespace qor {

PanelScene::PanelScene() {
    plate_.contrast = 0.15F; // the plate's view starts darker than the plate on its own
}

void PanelScene::setContrast(float contrast) {
    const double c = contrast;
    plate_.contrast = c;
    const UIColor lines(1.0 - c, 1.0 - c, 1.0 - c, 1.0);
    const UIColor inverted(c, c, c, 1.0);
    panel.colorContrast = lines;
    panel.colorContrastInverted = inverted;
    panel.colorMain = lines;
    needles.colorContrast = lines;
    needles.colorContrastInverted = inverted;
    needles.colorMain = lines;
}

void PanelScene::setMeters(double compression1, double compression2, double peak1, double peak2) {
    needles.value1 = compression1;
    needles.value2 = compression2;
    needles.value3 = peak1;
    needles.value4 = peak2;
}

void PanelScene::draw(const CGRect& bounds) {
    plate_.draw(bounds);
    panel.drawMain(bounds);
    needles.drawMain(bounds);
}

} // namespace qor
