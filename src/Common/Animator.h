// A float that moves by frames from a source to a destination along an easing curve.
#pragma once

#include "Common/EnumEasing.h"
#include "platform/core/Core.h"

#include <cstdint>

namespace qor {

/// Driven by its own repeating timer (`start`) or by calls of `animate` from outside. N frames make N calls
/// of `onAnimation` and take N + 1 ticks to finish. Lives in a `Ref` once it is started: its timer keeps it
/// alive until `stop`. Thread of the timer's run loop only. An overflow of a frame number ends the process.
class Animator : public std::enable_shared_from_this<Animator> {
public:
    /// Frame, source, amount, number of frames.
    using Curve = Block<float(std::int64_t, float, float, std::int64_t)>;
    using CurveFunction = float (Animator::*)(std::int64_t, float, float, std::int64_t) const;

    /// How many animators live.
    inline static std::int64_t classCount = 0;

    Animator();
    explicit Animator(float sourceValue, float destinationValue, std::int64_t frames, float interval = 0.009f,
                      EnumEasing type = EnumEasing::EASING_easeNone);
    virtual ~Animator();
    Animator(const Animator&) = delete;
    Animator& operator=(const Animator&) = delete;

    std::int64_t _startFrame = 0; // where a sequencer starts it
    std::int64_t _frameCount = 0; // frames as given to `setup`, for `rewind`
    Ref<NSTimer> _timer;
    float _source = 0.0f;
    float _value = 0.0f;
    float _destination = 0.0f;
    float _amount = 0.0f;
    std::int64_t _frames = -1; // below 0: finished
    std::int64_t _step = 0;
    float _interval = 0.005f; // seconds between frames
    Curve _action;
    EnumEasing _type() const noexcept { return type_; }

    // The curves; frame numbers are converted to float, the arithmetic is single precision.
    virtual float easeNone(std::int64_t currentFrame, float sourceValue, float amount,
                           std::int64_t numFrames) const;
    virtual float easeInQuad(std::int64_t currentFrame, float sourceValue, float amount,
                             std::int64_t numFrames) const;
    virtual float easeOutQuad(std::int64_t currentFrame, float sourceValue, float amount,
                              std::int64_t numFrames) const;
    virtual float easeInOutQuad(std::int64_t currentFrame, float sourceValue, float amount,
                                std::int64_t numFrames) const;
    virtual float easeOutInQuad(std::int64_t currentFrame, float sourceValue, float amount,
                                std::int64_t numFrames) const;
    virtual float easeInCubic(std::int64_t currentFrame, float sourceValue, float amount,
                              std::int64_t numFrames) const;
    virtual float easeOutCubic(std::int64_t currentFrame, float sourceValue, float amount,
                               std::int64_t numFrames) const;
    virtual float easeInOutCubic(std::int64_t currentFrame, float sourceValue, float amount,
                                 std::int64_t numFrames) const;
    virtual float easeOutInCubic(std::int64_t currentFrame, float sourceValue, float amount,
                                 std::int64_t numFrames) const;
    virtual float easeInQuart(std::int64_t currentFrame, float sourceValue, float amount,
                              std::int64_t numFrames) const;
    virtual float easeOutQuart(std::int64_t currentFrame, float sourceValue, float amount,
                               std::int64_t numFrames) const;
    virtual float easeInOutQuart(std::int64_t currentFrame, float sourceValue, float amount,
                                 std::int64_t numFrames) const;
    virtual float easeOutInQuart(std::int64_t currentFrame, float sourceValue, float amount,
                                 std::int64_t numFrames) const;
    virtual float easeInQuint(std::int64_t currentFrame, float sourceValue, float amount,
                              std::int64_t numFrames) const;
    virtual float easeOutQuint(std::int64_t currentFrame, float sourceValue, float amount,
                               std::int64_t numFrames) const;
    virtual float easeInOutQuint(std::int64_t currentFrame, float sourceValue, float amount,
                                 std::int64_t numFrames) const;
    virtual float easeOutInQuint(std::int64_t currentFrame, float sourceValue, float amount,
                                 std::int64_t numFrames) const;
    virtual float easeInSine(std::int64_t currentFrame, float sourceValue, float amount,
                             std::int64_t numFrames) const;
    virtual float easeOutSine(std::int64_t currentFrame, float sourceValue, float amount,
                              std::int64_t numFrames) const;
    virtual float easeInOutSine(std::int64_t currentFrame, float sourceValue, float amount,
                                std::int64_t numFrames) const;
    virtual float easeOutInSine(std::int64_t currentFrame, float sourceValue, float amount,
                                std::int64_t numFrames) const;
    virtual float easeInExpo(std::int64_t currentFrame, float sourceValue, float amount,
                             std::int64_t numFrames) const;
    virtual float easeOutExpo(std::int64_t currentFrame, float sourceValue, float amount,
                              std::int64_t numFrames) const;
    virtual float easeInOutExpo(std::int64_t currentFrame, float sourceValue, float amount,
                                std::int64_t numFrames) const;
    virtual float easeOutInExpo(std::int64_t currentFrame, float sourceValue, float amount,
                                std::int64_t numFrames) const;
    virtual float easeInCirc(std::int64_t currentFrame, float sourceValue, float amount,
                             std::int64_t numFrames) const;
    virtual float easeOutCirc(std::int64_t currentFrame, float sourceValue, float amount,
                              std::int64_t numFrames) const;
    virtual float easeInOutCirc(std::int64_t currentFrame, float sourceValue, float amount,
                                std::int64_t numFrames) const;
    virtual float easeOutInCirc(std::int64_t currentFrame, float sourceValue, float amount,
                                std::int64_t numFrames) const;
    virtual float easeInElastic(std::int64_t currentFrame, float sourceValue, float amount,
                                std::int64_t numFrames) const;
    virtual float easeOutElastic(std::int64_t currentFrame, float sourceValue, float amount,
                                 std::int64_t numFrames) const;
    virtual float easeInOutElastic(std::int64_t currentFrame, float sourceValue, float amount,
                                   std::int64_t numFrames) const;
    virtual float easeOutInElastic(std::int64_t currentFrame, float sourceValue, float amount,
                                   std::int64_t numFrames) const;
    virtual float easeInBack(std::int64_t currentFrame, float sourceValue, float amount,
                             std::int64_t numFrames) const;
    virtual float easeOutBack(std::int64_t currentFrame, float sourceValue, float amount,
                              std::int64_t numFrames) const;
    virtual float easeInOutBack(std::int64_t currentFrame, float sourceValue, float amount,
                                std::int64_t numFrames) const;
    virtual float easeOutInBack(std::int64_t currentFrame, float sourceValue, float amount,
                                std::int64_t numFrames) const;
    virtual float easeInBounce(std::int64_t currentFrame, float sourceValue, float amount,
                               std::int64_t numFrames) const;
    virtual float easeOutBounce(std::int64_t currentFrame, float sourceValue, float amount,
                                std::int64_t numFrames) const;
    virtual float easeInOutBounce(std::int64_t currentFrame, float sourceValue, float amount,
                                  std::int64_t numFrames) const;
    virtual float easeOutInBounce(std::int64_t currentFrame, float sourceValue, float amount,
                                  std::int64_t numFrames) const;

    bool looped = false;                       // swings back and forth
    Block<void(Animator&, float)> onAnimation; // before each step, with the value so far
    Block<void(Animator&, float)> onFinished;
    Block<void(Animator&)> onLoop; // at each turning point

    /// Arms the animator. `frames` below 0, or no way to go, leaves a single tick to the end.
    virtual void setup(float source, float destination, std::int64_t frames, float interval = 0.009f,
                       EnumEasing type = EnumEasing::EASING_easeNone);
    /// Swaps source and destination.
    virtual void reverse();
    /// Jumps to the destination with the callbacks of one frame.
    virtual void undo();
    virtual float getDestinationValue() const { return _destination; }
    virtual float getSourceValue() const { return _source; }
    virtual float getValue() const { return _value; }
    /// One frame.
    virtual void animate();
    virtual bool isFinished() const { return _frames < 0; }
    /// Runs on a new timer; one that runs already is left running.
    virtual void start();
    /// Ends the timer and the run; the value stays.
    virtual void stop();
    /// Arms it again with the frames of the last `setup`, the default interval and a straight line.
    virtual void rewind();
    /// Selects the curve.
    virtual void setType(EnumEasing type);
    /// Seconds; a running timer keeps its period.
    virtual void setInterval(float interval) { _interval = interval; }

private:
    virtual void reset();
    /// Half the way along `out`, then the other half along `in`.
    float easeOutIn(CurveFunction out, CurveFunction in, std::int64_t currentFrame, float sourceValue,
                    float amount, std::int64_t numFrames) const;

    EnumEasing type_ = EnumEasing::EASING_easeNone;
};

} // namespace qor
