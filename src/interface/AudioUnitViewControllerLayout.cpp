// The panel's place in the window, and the gestures that change it.
#include "interface/AudioUnitViewController.h"

namespace qor {

namespace {

using State = UIGestureRecognizerState;

/// `frame` scaled about its own centre.
CGRect scaledAboutCentre(const CGRect& frame, double scale) {
    const double middleX = CGRectGetMinX(frame) + CGRectGetWidth(frame) / 2.0;
    const double middleY = CGRectGetMinY(frame) + CGRectGetHeight(frame) / 2.0;
    CGRect result = CGRectApplyAffineTransform(
        frame, CGAffineTransformMakeTranslation(-CGRectGetMinX(frame) - CGRectGetWidth(frame) / 2.0,
                                                -CGRectGetMinY(frame) - CGRectGetHeight(frame) / 2.0));
    result = CGRectApplyAffineTransform(result, CGAffineTransformMakeScale(scale, scale));
    return CGRectApplyAffineTransform(result, CGAffineTransformMakeTranslation(middleX, middleY));
}

bool isWidthWithin(const CGRect& frame, double least, double most) {
    return !(CGRectGetWidth(frame) < least) && !(CGRectGetWidth(frame) > most);
}

constexpr double kMostWidth = 2048.0;

} // namespace

void AudioUnitViewController::viewDidLayoutSubviews() {
    AUViewController::viewDidLayoutSubviews();
    if (!lockAutoLayout) {
        centerpluginView();
    }
}

void AudioUnitViewController::centerpluginView() {
    const CGSize size = view()->bounds().size;
    resetpluginView(size.width, size.height);
}

void AudioUnitViewController::resetpluginView(double w, double h, double inset) {
    const double W = w - 2.0 * inset;
    const double H = h - 2.0 * inset;
    const CGSize B = view()->bounds().size;
    if (H < W && fitToHeight) {
        unwrapImplicit(currentView)
            .setFrame(CGRectMake(B.width * 0.5 - (H / ratio) * 0.5 + inset, inset, H / ratio, H));
    } else {
        unwrapImplicit(currentView)
            .setFrame(CGRectMake(inset, B.height * 0.5 - (W * ratio) * 0.5, W, W * ratio));
    }
}

void AudioUnitViewController::onPanGesture(UIPanGestureRecognizer& sender) {
    if (!isSizeable || touchesLocked) {
        return;
    }
    UIView& panel = unwrapImplicit(currentView);
    switch (sender.state()) {
    case State::began:
        lockAutoLayout = true;
        controlFrame = panel.frame();
        break;
    case State::changed: {
        const CGPoint moved = sender.translationInView(view().get());
        panel.setFrame(
            CGRectApplyAffineTransform(controlFrame, CGAffineTransformMakeTranslation(moved.x, moved.y)));
        break;
    }
    case State::ended:
        lockAutoLayout = false;
        controlFrame = panel.frame();
        touchesLocked = false;
        break;
    case State::cancelled:
        controlFrame = panel.frame();
        lockAutoLayout = false;
        touchesLocked = false;
        break;
    default:
        break;
    }
}

void AudioUnitViewController::doTranslationTransform(UIView& view, const CGRect& origin,
                                                     const CGPoint& position) {
    view.setFrame(
        CGRectApplyAffineTransform(origin, CGAffineTransformMakeTranslation(position.x, position.y)));
    view.setNeedsDisplay();
}

void AudioUnitViewController::onPinchGesture(UIPinchGestureRecognizer& sender) {
    constexpr double kLeastWidth = 128.0;
    if (!isSizeable) {
        return;
    }
    touchesLocked = false;
    UIView& panel = unwrapImplicit(currentView);
    switch (sender.state()) {
    case State::began:
        lockAutoLayout = true;
        controlFrame = panel.frame();
        break;
    case State::changed: {
        const CGRect scaled = scaledAboutCentre(controlFrame, sender.scale());
        if (isWidthWithin(scaled, kLeastWidth, kMostWidth)) {
            panel.setFrame(scaled);
        }
        break;
    }
    case State::ended:
        lockAutoLayout = false;
        controlFrame = panel.frame();
        break;
    case State::cancelled:
        lockAutoLayout = false;
        break;
    default:
        break;
    }
}

void AudioUnitViewController::doScalingTransform(UIView& view, const CGRect& origin, double scaling) {
    constexpr double kLeastWidth = 256.0; // not the pinch's
    const CGRect scaled = scaledAboutCentre(origin, scaling);
    if (isWidthWithin(scaled, kLeastWidth, kMostWidth)) {
        view.setFrame(scaled);
        view.setNeedsDisplay();
    }
}

void AudioUnitViewController::onDoubleTapGesture(UITapGestureRecognizer& /*sender*/) {
    touchesLocked = false;
    const CGSize size = view()->bounds().size;
    resetpluginView(size.width, size.height);
}

void AudioUnitViewController::onTapGesture(UITapGestureRecognizer& /*sender*/) {
    touchesLocked = false;
    controlFrame = unwrapImplicit(currentView).frame();
}

void AudioUnitViewController::onlongPressGesture(UILongPressGestureRecognizer& sender) {
    UIButton& contrast = unwrapImplicit(contrastButton);
    if (sender.state() == State::began) {
        contrast.setHidden(!contrast.isHidden());
        unwrapImplicit(freezeButton).setHidden(contrast.isHidden());
        if (contrast.isHidden()) {
            unwrapImplicit(brightnessSlider).setHidden(true);
            touchesLocked = false;
        } else {
            touchesLocked = true;
        }
    } else if (sender.state() == State::ended) {
        contrast.setAlpha(1.0);
        touchesLocked = false;
    }
}

bool AudioUnitViewController::isViewVisible(UIView& view) {
    if (view.window() == nullptr) {
        return false;
    }
    // The topmost view's own hidden flag is not looked at.
    for (UIView* current = &view; current->superview() != nullptr; current = current->superview()) {
        if (!CGRectIntersectsRect(current->superview()->bounds(), current->frame()) || current->isHidden()) {
            return false;
        }
    }
    return true;
}

} // namespace qor
