// Contrast, brightness, freezing, and the information banner.
#include "interface/AudioUnitViewController.h"

#include "Common/Animator.h"

namespace qor {

namespace {

constexpr double kDim = 0.5;
constexpr double kBright = 1.0;
constexpr float kFrameSeconds = 0.009F; // of the banner's animations

/// From 0, gone, to 1, all there.
void fadeAndScale(UIView& banner, float value) {
    const auto v = static_cast<double>(value);
    banner.setAlpha(v);
    banner.setTransform(CGAffineTransformScale(CGAffineTransformIdentity, v, v));
}

} // namespace

void AudioUnitViewController::onContrastButton(UIButton& sender) {
    UISlider& slider = unwrapImplicit(brightnessSlider);
    slider.setHidden(!slider.isHidden());
    sender.setAlpha(slider.isHidden() ? kDim : kBright);
    touchesLocked = !slider.isHidden();
}

void AudioUnitViewController::onBrightnessSlider(UISlider& sender) {
    touchesLocked = true;
    const float contrast = sender.value();
    unwrapImplicit(pluginFrame).contrast = contrast;
    unwrapImplicit(pluginFrame).setNeedsDisplay();
    unwrapImplicit(mainView).setContrast(static_cast<double>(contrast));
    unwrapImplicit(displayView).setContrast(static_cast<double>(contrast));
}

void AudioUnitViewController::onFreezeButton(UIButton& sender) {
    isSizeable = !isSizeable;
    sender.setAlpha(isSizeable ? kDim : kBright);
}

void AudioUnitViewController::showInfo(const std::string& string) {
    constexpr std::int64_t kFrames = 320;
    unwrapImplicit(infoMessage).setText(string);
    unwrapImplicit(infoView).setHidden(false);
    unwrapImplicit(infoView).setAlpha(0.0);
    const auto animator = makeRef<Animator>(static_cast<float>(unwrapImplicit(infoView).alpha()), 1.0F,
                                            kFrames, kFrameSeconds, EnumEasing::EASING_easeOutExpo);
    animator->onAnimation = [strong = self()](Animator&, float value) {
        fadeAndScale(unwrapImplicit(strong->infoView), value);
    };
    animator->onFinished = [strong = self()](Animator&, float) { strong->hideInfo(); };
    animator->start();
}

void AudioUnitViewController::hideInfo() {
    constexpr std::int64_t kFrames = 120;
    const auto animator = makeRef<Animator>(static_cast<float>(unwrapImplicit(infoView).alpha()), 0.0F,
                                            kFrames, kFrameSeconds, EnumEasing::EASING_easeInExpo);
    animator->onAnimation = [strong = self()](Animator&, float value) {
        fadeAndScale(unwrapImplicit(strong->infoView), value);
    };
    animator->onFinished = [strong = self()](Animator&, float) {
        unwrapImplicit(strong->infoView).setHidden(true);
        unwrapImplicit(strong->infoMessage).setText("");
    };
    animator->start();
}

} // namespace qor
