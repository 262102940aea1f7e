#include "Common/Impulse.h"

#include <cmath>

namespace qor {

Impulse::Impulse(std::int64_t frames, float amount, float interval, float intensity) {
    Impulse::setup(frames, amount, interval, intensity);
}

void Impulse::setup(std::int64_t frames, float amount, float interval, float intensity) {
    _frames = frames;
    _step = 0;
    if (_frames < 0) {
        _frames = 0;
    }
    _source = amount;
    _amount = amount;
    _intensity = intensity;
    _interval = interval;
}

void Impulse::setMinMax(bool enabled, float min, float max) {
    _collision = enabled;
    _minVal = min;
    _maxVal = max;
}

void Impulse::start() {
    _timer = NSTimer::scheduledTimerWithTimeInterval(
        static_cast<double>(_interval), true, [self = shared_from_this()](NSTimer&) { self->animate(); });
}

void Impulse::stop() {
    const Ref<Impulse> keep = weak_from_this().lock();
    if (_timer) {
        _timer->invalidate();
        _timer.reset();
    }
    reset();
}

void Impulse::animate() {
    _amount = _amount * _intensity;
    if (fabsf(_amount) < _threshold) {
        _amount = 0.0f;
        if (const auto callback = onFinished) {
            callback(*this);
        }
        stop();
        return;
    }
    _step = checkedAdd(_step, 1);
    _value = _value + _amount;
    if (_collision && (_value <= _minVal || _value >= _maxVal)) {
        bounce();
    }
    if (const auto callback = onAnimation) {
        callback(*this);
    }
}

void Impulse::bounce() {
    _amount = -_amount;
    _value = _value + _amount;
    if (const auto callback = onCollision) {
        callback(*this);
    }
}

void Impulse::reset() {
    _frames = -1;
    _step = 0;
    _amount = 0.0f;
    _value = 0.0f;
}

} // namespace qor
