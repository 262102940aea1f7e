#include "Common/AnimatorChain.h"

#include <algorithm>

namespace qor {

void AnimatorChain::add(Ref<Animator> item) {
    if (item) {
        _animators.push_back(std::move(item));
    }
}

void AnimatorChain::remove(const Ref<Animator>& item) {
    const auto found = std::find(_animators.begin(), _animators.end(), item);
    if (item && found != _animators.end()) {
        _animators.erase(found);
    }
}

void AnimatorChain::removeAll() {
    stop();
    _animators.clear();
}

Ref<Animator> AnimatorChain::getCurrentItem() const {
    if (_currentIndex > 0 && _currentIndex < getCount() - 1) {
        return _animators[static_cast<std::size_t>(_currentIndex)];
    }
    return nullptr;
}

void AnimatorChain::start() {
    _timer = NSTimer::scheduledTimerWithTimeInterval(
        static_cast<double>(interval), true, [self = shared_from_this()](NSTimer&) { self->animate(); });
}

void AnimatorChain::animate() {
    if (_animators.empty()) {
        print("WARNUNG: Es sind keine Animator Objekte definiert.");
        return;
    }
    if (_currentIndex < 0 || _currentIndex > getCount() - 1) {
        _currentIndex = getCount() - 1;
    }
    const Ref<Animator> item = _animators[static_cast<std::size_t>(_currentIndex)];
    if (const auto callback = onAnimation) {
        callback(*this, *item);
    }
    if (async) {
        item->start();
        _currentIndex = checkedAdd(_currentIndex, _direction);
    } else {
        item->animate();
        if (item->isFinished()) {
            _currentIndex = checkedAdd(_currentIndex, _direction);
        }
    }
    const bool atEnd =
        (_direction > 0 && _currentIndex >= getCount()) || (_direction < 0 && _currentIndex <= 0);
    if (atEnd) {
        if (const auto callback = onFinished) {
            callback(*this);
        }
        stop();
    }
}

void AnimatorChain::reset() {
    const Ref<AnimatorChain> keep = weak_from_this().lock();
    if (_timer) {
        _timer->invalidate();
        _timer.reset();
    }
    _currentIndex = 0;
}

} // namespace qor
