#include "Common/AnimatorStack.h"

#include <algorithm>

namespace qor {

void AnimatorStack::add(Ref<Animator> item) {
    if (item) {
        _animators.push_back(std::move(item));
    }
}

void AnimatorStack::start() {
    _timer = NSTimer::scheduledTimerWithTimeInterval(
        static_cast<double>(interval), true, [self = shared_from_this()](NSTimer&) { self->animate(); });
}

void AnimatorStack::animate() {
    bool busy = false;
    const std::vector<Ref<Animator>> walk = _animators; // callbacks may add and remove
    for (const Ref<Animator>& item : walk) {
        if (item->isFinished()) {
            continue;
        }
        if (const auto callback = onAnimation) {
            callback(*this, *item);
        }
        item->animate();
        busy = true;
        if (!item->isFinished()) {
            continue;
        }
        const auto found = std::find(_animators.begin(), _animators.end(), item);
        if (found == _animators.end()) {
            continue;
        }
        _animators.erase(found);
        if (const auto callback = onRemovedItem) {
            callback(*this, *item);
        }
    }
    if (!busy) {
        if (const auto callback = onFinished) {
            callback(*this);
        }
        stop();
    }
}

void AnimatorStack::reset() {
    const Ref<AnimatorStack> keep = weak_from_this().lock();
    if (_timer) {
        _timer->invalidate();
        _timer.reset();
    }
    _animators.clear();
}

} // namespace qor
