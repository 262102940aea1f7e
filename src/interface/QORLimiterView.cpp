#include "interface/QORLimiterView.h"

#include "interface/AudioUnitViewController.h"
#include "interface/Contrast.h"
#include "interface/ParameterDisplay.h"

#include <utility>

namespace qor {

QORLimiterView::QORLimiterView(const CGRect& frame) : UIControl(frame) {}

void QORLimiterView::setViewController(Ref<AudioUnitViewController> controller) {
    viewController_ = std::move(controller);
    baseClass->viewController = viewController_;
}

Ref<QOR_Limiter_Extension_AudioUnit> QORLimiterView::audioUnit() const {
    return viewController_ ? viewController_->audioUnit() : nullptr;
}

void QORLimiterView::setFocus(bool /*focus*/) {
    setNeedsDisplay();
}

void QORLimiterView::setContrast(double contrast) {
    applyContrast(*baseClass, contrast);
    setNeedsDisplay();
}

void QORLimiterView::setParameter(std::int64_t address, float value) {
    showParameter(*baseClass, address, value);
    print("editor received parameter : address: " + text(address) + ", value: " + text(value));
    setNeedsDisplay();
}

void QORLimiterView::draw(const CGRect& /*rect*/) {
    if (!isHidden()) {
        baseClass->drawMain(bounds());
    }
}

} // namespace qor
