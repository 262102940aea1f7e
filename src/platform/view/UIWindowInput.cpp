// The way of input from a window to recognizers and views.
#include "platform/core/RunLoop.h"
#include "platform/view/UIGestureRecognizer.h"
#include "platform/view/UIWindow.h"

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

constexpr double kTapPause = 0.35;    // seconds between the taps of a double tap
constexpr double kTapDistance = 10.0; // points

double now() {
    return RunLoop::current().clock().now();
}

std::vector<Ref<UIGestureRecognizer>> recognizersAbove(UIView* view) {
    std::vector<Ref<UIGestureRecognizer>> found;
    for (UIView* each = view; each != nullptr; each = each->superview()) {
        for (const Ref<UIGestureRecognizer>& recognizer : each->gestureRecognizers()) {
            if (recognizer->isEnabled()) {
                found.push_back(recognizer);
            }
        }
        if (each->isModal()) {
            break;
        }
    }
    return found;
}

} // namespace

UIWindow::ActiveTouch* UIWindow::find(int number) {
    const auto found = std::find_if(active_.begin(), active_.end(),
                                    [number](const ActiveTouch& active) { return active.number == number; });
    return found == active_.end() ? nullptr : &*found;
}

UIEvent UIWindow::makeEvent(std::uint32_t modifierFlags) const {
    UIEvent event;
    for (const ActiveTouch& active : active_) {
        event.allTouches.push_back(active.touch);
    }
    event.modifierFlags = modifierFlags;
    event.timestamp = now();
    return event;
}

int UIWindow::countTap(const CGPoint& location, double time) {
    const bool near =
        std::hypot(location.x - lastTap_.location.x, location.y - lastTap_.location.y) <= kTapDistance;
    const bool again = near && time - lastTap_.time <= kTapPause;
    lastTap_ = {.location = location, .time = time, .count = again ? lastTap_.count + 1 : 1};
    return lastTap_.count;
}

void UIWindow::touchDown(int touch, const CGPoint& location, std::uint32_t modifierFlags) {
    if (find(touch) != nullptr) {
        touchUp(touch, location, modifierFlags);
    }
    layoutIfNeeded();
    UIView* hit = hitTest(location, nullptr);
    if (firstResponder_ != nullptr && (hit == nullptr || !hit->isDescendantOfView(*firstResponder_))) {
        setFirstResponder(nullptr);
    }
    ActiveTouch began{
        .number = touch,
        .touch = makeRef<UITouch>(location, hit == nullptr ? nullptr : hit->shared_from_this(), now()),
        .recognizers = recognizersAbove(hit)};
    began.touch->setTapCount(countTap(location, now()));
    for (const Ref<UIGestureRecognizer>& recognizer : began.recognizers) {
        if (std::find(involved_.begin(), involved_.end(), recognizer) == involved_.end()) {
            involved_.push_back(recognizer);
        }
    }
    active_.push_back(began);
    UIEvent event = makeEvent(modifierFlags);
    for (const Ref<UIGestureRecognizer>& recognizer : began.recognizers) {
        recognizer->touchesBegan({began.touch}, event);
    }
    const ActiveTouch* active = find(touch);
    if (began.touch->view() && active != nullptr && !active->viewCancelled) {
        began.touch->view()->touchesBegan({began.touch}, &event);
    }
}

void UIWindow::touchMoved(int touch, const CGPoint& location, std::uint32_t modifierFlags) {
    const ActiveTouch* found = find(touch);
    if (found == nullptr || found->touch->locationInWindow() == location) {
        return;
    }
    const ActiveTouch moved = *found;
    if (std::hypot(location.x - lastTap_.location.x, location.y - lastTap_.location.y) > kTapDistance) {
        lastTap_ = {}; // a drag is no tap
    }
    moved.touch->update(UITouchPhase::moved, location, now());
    UIEvent event = makeEvent(modifierFlags);
    for (const Ref<UIGestureRecognizer>& recognizer : moved.recognizers) {
        recognizer->touchesMoved({moved.touch}, event);
    }
    const ActiveTouch* active = find(touch);
    if (moved.touch->view() && active != nullptr && !active->viewCancelled) {
        moved.touch->view()->touchesMoved({moved.touch}, &event);
    }
}

void UIWindow::touchUp(int touch, const CGPoint& location, std::uint32_t modifierFlags) {
    const ActiveTouch* found = find(touch);
    if (found == nullptr) {
        return;
    }
    const ActiveTouch ended = *found;
    ended.touch->update(UITouchPhase::ended, location, now());
    UIEvent event = makeEvent(modifierFlags);
    for (const Ref<UIGestureRecognizer>& recognizer : ended.recognizers) {
        recognizer->touchesEnded({ended.touch}, event);
    }
    const ActiveTouch* active = find(touch);
    if (ended.touch->view() && active != nullptr && !active->viewCancelled) {
        ended.touch->view()->touchesEnded({ended.touch}, &event);
    }
    forget(touch);
}

void UIWindow::cancelTouches() {
    while (!active_.empty()) {
        const ActiveTouch cancelled = active_.front();
        cancelled.touch->update(UITouchPhase::cancelled, cancelled.touch->locationInWindow(), now());
        UIEvent event = makeEvent(UIKeyModifierNone);
        for (const Ref<UIGestureRecognizer>& recognizer : cancelled.recognizers) {
            recognizer->touchesCancelled({cancelled.touch}, event);
        }
        if (cancelled.touch->view() && !cancelled.viewCancelled) {
            cancelled.touch->view()->touchesCancelled({cancelled.touch}, &event);
        }
        forget(cancelled.number);
    }
}

void UIWindow::forget(int number) {
    std::erase_if(active_, [number](const ActiveTouch& active) { return active.number == number; });
    if (active_.empty()) {
        const std::vector<Ref<UIGestureRecognizer>> done = std::move(involved_);
        involved_.clear();
        for (const Ref<UIGestureRecognizer>& recognizer : done) {
            recognizer->allTouchesEnded();
        }
    }
}

void UIWindow::cancelTouchesInViews(const UIGestureRecognizer& recognizer) {
    UIEvent event = makeEvent(UIKeyModifierNone);
    for (ActiveTouch& active : active_) {
        const bool seen = std::any_of(active.recognizers.begin(), active.recognizers.end(),
                                      [&](const auto& each) { return each.get() == &recognizer; });
        if (seen && !active.viewCancelled) {
            active.viewCancelled = true;
            const Ref<UITouch> touch = active.touch;
            if (touch->view()) {
                touch->view()->touchesCancelled({touch}, &event);
            }
        }
    }
}

bool UIWindow::wheel(const CGPoint& location, double deltaX, double deltaY, std::uint32_t modifierFlags) {
    layoutIfNeeded();
    const UIWheelEvent event{.locationInWindow = location,
                             .deltaX = deltaX,
                             .deltaY = deltaY,
                             .modifierFlags = modifierFlags,
                             .timestamp = now()};
    UIView* hit = hitTest(location, nullptr);
    for (const Ref<UIGestureRecognizer>& recognizer : recognizersAbove(hit)) {
        if (recognizer->wheelTurned(event)) {
            return true;
        }
    }
    Ref<UIView> view = hit == nullptr ? nullptr : hit->shared_from_this();
    while (view) {
        UIView* above = view->isModal() ? nullptr : view->superview();
        if (view->scrollWheel(event)) {
            return true;
        }
        view = above == nullptr ? nullptr : above->weak_from_this().lock();
    }
    return false;
}

bool UIWindow::key(const UIKeyEvent& event) {
    UIView* modal = topModal(*this);
    UIView* start = firstResponder_;
    if (modal != nullptr && (start == nullptr || !start->isDescendantOfView(*modal))) {
        start = modal;
    }
    Ref<UIView> view = start == nullptr ? nullptr : start->weak_from_this().lock();
    if (!view) {
        view = root_;
    }
    while (view) {
        UIView* above = view->isModal() ? nullptr : view->superview();
        if (view->keyDown(event)) {
            return true;
        }
        view = above == nullptr ? nullptr : above->weak_from_this().lock();
    }
    return event.key == UIKey::tab && moveFocus(event.has(UIKeyModifierShift));
}

} // namespace platform
