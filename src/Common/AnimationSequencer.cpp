#include "Common/AnimationSequencer.h"

#include <algorithm>

namespace qor {

void AnimationSequencer::add(Ref<Animator> item, std::int64_t at) {
    if (!item) {
        print("FEHLER: Das Animator Objekt ist ungültig.");
        return;
    }
    item->_startFrame = at;
    _animators.push_back(std::move(item));
    std::stable_sort(_animators.begin(), _animators.end(),
                     [](const Ref<Animator>& a, const Ref<Animator>& b) {
                         return unwrapImplicit(a)._startFrame < unwrapImplicit(b)._startFrame;
                     });
    calculateFrames();
}

void AnimationSequencer::remove(const Ref<Animator>& item) {
    const auto found = std::find(_animators.begin(), _animators.end(), item);
    if (item && found != _animators.end()) {
        _animators.erase(found);
    }
    calculateFrames();
}

void AnimationSequencer::removeAll() {
    _animators.clear();
    _maxFrames = 0;
}

void AnimationSequencer::start() {
    _timer = NSTimer::scheduledTimerWithTimeInterval(
        static_cast<double>(interval), true, [self = shared_from_this()](NSTimer&) {
            self->_currentFrame = checkedAdd(self->_currentFrame, 1);
            self->animate();
        });
}

void AnimationSequencer::rewind() {
    for (const Ref<Animator>& item : _animators) {
        unwrapImplicit(item).rewind();
    }
}

void AnimationSequencer::seek(std::int64_t to) {
    _currentFrame = to;
    _currentIndex = 0;
    if (_maxFrames < _currentFrame) {
        stop();
        return;
    }
    for (const Ref<Animator>& item : _animators) {
        if (unwrapImplicit(item)._startFrame < _currentFrame) {
            item->stop();
            _currentIndex = checkedAdd(_currentIndex, 1);
        } else {
            item->rewind();
        }
    }
}

void AnimationSequencer::animate() {
    if (_suspended) {
        return;
    }
    if (_animators.empty()) {
        print("WARNUNG: Es sind keine Animator Objekte definiert.");
        return;
    }
    findAnimators();
    const std::vector<Ref<Animator>> walk = _animatedItems; // callbacks may change the list
    for (const Ref<Animator>& item : walk) {
        if (const auto callback = onAnimation) {
            callback(*this, *item);
        }
        item->animate();
        if (item->isFinished()) {
            const auto found = std::find(_animatedItems.begin(), _animatedItems.end(), item);
            if (found != _animatedItems.end()) {
                _animatedItems.erase(found);
            }
        }
    }
    if (_currentFrame >= _maxFrames) {
        if (const auto callback = onFinished) {
            callback(*this);
        }
        stop();
    }
}

void AnimationSequencer::findAnimators() {
    if (_currentIndex > getCount()) {
        fatalError(kRangeMessage);
    }
    for (std::int64_t i = _currentIndex; i < getCount(); ++i) {
        if (i < 0) {
            fatalError(kIndexMessage);
        }
        const Ref<Animator>& item = _animators[static_cast<std::size_t>(i)];
        if (!item) {
            print("ERROR: Animationsobjekt is undefiniert!");
            return;
        }
        if (item->_startFrame <= _currentFrame && !item->isFinished()) {
            _currentIndex = i;
            scheduleItem(item);
        }
    }
}

void AnimationSequencer::scheduleItem(const Ref<Animator>& item) {
    if (std::find(_animatedItems.begin(), _animatedItems.end(), item) == _animatedItems.end()) {
        _animatedItems.push_back(item);
    }
}

void AnimationSequencer::calculateFrames() {
    for (const Ref<Animator>& item : _animators) {
        const std::int64_t end = checkedAdd(unwrapImplicit(item)._startFrame, item->_frames);
        _maxFrames = std::max(_maxFrames, end);
    }
}

void AnimationSequencer::reset() {
    const Ref<AnimationSequencer> keep = weak_from_this().lock();
    if (_timer) {
        _timer->invalidate();
        _timer.reset();
    }
    _currentIndex = 0;
    _currentFrame = 0;
}

} // namespace qor
