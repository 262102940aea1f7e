#include "Common/Animator.h"

#include <array>

namespace qor {

namespace {

/// In the order of the raw values.
constexpr std::array<Animator::CurveFunction, 41> kCurves = {
    &Animator::easeNone,        &Animator::easeInQuad,       &Animator::easeOutQuad,
    &Animator::easeInOutQuad,   &Animator::easeOutInQuad,    &Animator::easeInCubic,
    &Animator::easeOutCubic,    &Animator::easeInOutCubic,   &Animator::easeOutInCubic,
    &Animator::easeInQuart,     &Animator::easeOutQuart,     &Animator::easeInOutQuart,
    &Animator::easeOutInQuart,  &Animator::easeInQuint,      &Animator::easeOutQuint,
    &Animator::easeInOutQuint,  &Animator::easeOutInQuint,   &Animator::easeInSine,
    &Animator::easeOutSine,     &Animator::easeInOutSine,    &Animator::easeOutInSine,
    &Animator::easeInExpo,      &Animator::easeOutExpo,      &Animator::easeInOutExpo,
    &Animator::easeOutInExpo,   &Animator::easeInCirc,       &Animator::easeOutCirc,
    &Animator::easeInOutCirc,   &Animator::easeOutInCirc,    &Animator::easeInElastic,
    &Animator::easeOutElastic,  &Animator::easeInOutElastic, &Animator::easeOutInElastic,
    &Animator::easeInBack,      &Animator::easeOutBack,      &Animator::easeInOutBack,
    &Animator::easeOutInBack,   &Animator::easeInBounce,     &Animator::easeOutBounce,
    &Animator::easeInOutBounce, &Animator::easeOutInBounce,
};

} // namespace

Animator::Animator() {
    ++classCount;
    Animator::setType(EnumEasing::EASING_easeNone);
}

Animator::Animator(float sourceValue, float destinationValue, std::int64_t frames, float interval,
                   EnumEasing type)
    : Animator() {
    Animator::setup(sourceValue, destinationValue, frames, interval, type);
}

Animator::~Animator() {
    --classCount;
}

void Animator::setup(float source, float destination, std::int64_t frames, float interval, EnumEasing type) {
    _source = source;
    _destination = destination;
    _value = _source;
    _amount = _destination - _source;
    _frames = frames;
    _frameCount = _frames;
    _step = 0;
    _interval = interval;
    setType(type);
    if (_frames < 0) {
        _frames = 0;
    }
    if (_amount == 0.0f) {
        _frames = 0;
    }
}

void Animator::reverse() {
    setup(_destination, _source, _frames, _interval, type_);
}

void Animator::undo() {
    _frames = 1;
    _step = 0;
    setup(_source, _destination, _frames);
    animate();
    animate();
}

void Animator::animate() {
    if (_frames < 0) {
        return;
    }
    if (_step < _frames) {
        if (const auto callback = onAnimation) {
            callback(*this, _value);
        }
        _step = checkedAdd(_step, 1);
        if (!_action) {
            fatalError(kImplicitUnwrapMessage);
        }
        _value = _action(_step, _source, _amount, _frames);
        return;
    }
    const Ref<Animator> keep = weak_from_this().lock(); // `stop` may let the timer's hold go, the last one
    _value = _destination;
    if (looped) {
        if (const auto callback = onLoop) {
            callback(*this);
        }
        reverse();
        return;
    }
    stop();
    if (const auto callback = onFinished) {
        callback(*this, _value);
    }
}

void Animator::start() {
    // The timer is the only owner of an animator that nobody kept.
    _timer = NSTimer::scheduledTimerWithTimeInterval(
        static_cast<double>(_interval), true, [self = shared_from_this()](NSTimer&) { self->animate(); });
}

void Animator::stop() {
    const Ref<Animator> keep = weak_from_this().lock(); // the timer's block may be the last owner
    if (_timer) {
        _timer->invalidate();
        _timer.reset();
    }
    reset();
}

void Animator::rewind() {
    setup(_source, _destination, _frameCount);
}

void Animator::setType(EnumEasing type) {
    type_ = type;
    const auto raw = static_cast<std::size_t>(type);
    const CurveFunction curve = raw < kCurves.size() ? kCurves[raw] : &Animator::easeNone;
    _action = [this, curve](std::int64_t currentFrame, float sourceValue, float amount,
                            std::int64_t numFrames) {
        return (this->*curve)(currentFrame, sourceValue, amount, numFrames);
    };
}

void Animator::reset() {
    _step = 0;
    _frames = -1;
    looped = false;
}

} // namespace qor
