#include "interface/QORDynamicsDisplayView.h"

#include "interface/Contrast.h"

namespace qor {

void QORDynamicsDisplayView::setFocus(bool /*focus*/) {
    setNeedsDisplay();
}

void QORDynamicsDisplayView::setContrast(double contrast) {
    applyContrast(*baseClass, contrast);
    setNeedsDisplay();
}

void QORDynamicsDisplayView::setThresholdValue(float value) {
    baseClass->valueThreshold = value;
}

void QORDynamicsDisplayView::setCompressionValues(float value1, float value2) {
    const double first = value1;
    const double second = value2;
    if (first == baseClass->value1 && second == baseClass->value2) {
        return;
    }
    baseClass->value1 = first;
    baseClass->value2 = second;
    setNeedsDisplay();
}

void QORDynamicsDisplayView::setOutputValues(float value3, float value4) {
    const double first = value3;
    const double second = value4;
    if (first == baseClass->value3 && second == baseClass->value4) {
        return;
    }
    baseClass->value3 = first;
    baseClass->value4 = second;
    setNeedsDisplay();
}

void QORDynamicsDisplayView::resetDisplay() {
    baseClass->value1 = 1.0;
    baseClass->value2 = 1.0;
    setNeedsDisplay();
}

void QORDynamicsDisplayView::draw(const CGRect& /*rect*/) {
    if (!isHidden()) {
        baseClass->drawMain(bounds());
    }
}

} // namespace qor
