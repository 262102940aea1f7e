// A decaying push: a value moved by steps that shrink geometrically.
#pragma once

#include "platform/core/Core.h"

#include <cstdint>

namespace qor {

/// Runs until its step is smaller than a threshold, with optional bounces off a lower and an upper limit. The
/// first frame already moves by amount times intensity. Lives in a `Ref` once it is started. Thread of the
/// timer's run loop only.
class Impulse : public std::enable_shared_from_this<Impulse> {
public:
    Impulse() = default;
    explicit Impulse(std::int64_t frames, float amount, float interval = 0.009f, float intensity = 0.75f);
    virtual ~Impulse() = default;
    Impulse(const Impulse&) = delete;
    Impulse& operator=(const Impulse&) = delete;

    Ref<NSTimer> _timer;
    std::int64_t _frames = -1; // below 0: finished; says nothing of the length
    std::int64_t _step = 0;
    float _amount = 0.0f; // the current step with its sign
    float _value = 0.0f;
    float _source = 0.0f; // the amount given to `setup`
    float _intensity = 0.75f;
    float _threshold = 0.001f;
    float _interval = 0.009f; // seconds between frames
    float _minVal = -1024.0f;
    float _maxVal = 1024.0f;
    bool _collision = false;
    Block<void(Impulse&)> onAnimation; // after each moving frame
    Block<void(Impulse&)> onFinished;  // the last moment at which the end value can be read
    Block<void(Impulse&)> onCollision;

    /// Arms the impulse from its present value.
    virtual void setup(std::int64_t frames, float amount, float interval = 0.009f, float intensity = 0.75f);
    virtual void setMinMax(bool enabled, float min, float max);
    /// Runs on a new timer; one that runs already is left running.
    virtual void start();
    /// Ends the timer and the run; the value becomes 0.
    virtual void stop();
    /// One frame; on a finished impulse it ends again at once.
    virtual void animate();
    virtual bool isFinished() const { return _frames < 0; }
    virtual float getSourceValue() const { return _source; }

private:
    virtual void reset();
    void bounce();
};

} // namespace qor
