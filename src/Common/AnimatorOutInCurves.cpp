// The curves that go out and in: each is made of the two forms of its kind, so what is odd in one of them
// shows here too.
#include "Common/Animator.h"

namespace qor {

float Animator::easeOutIn(CurveFunction out, CurveFunction in, std::int64_t currentFrame, float sourceValue,
                          float amount, std::int64_t numFrames) const {
    const float h = amount / 2.0f;
    const std::int64_t twice = checkedMultiply(currentFrame, 2);
    if (currentFrame < numFrames / 2) { // an odd number of frames is halved as an integer
        return (this->*out)(twice, sourceValue, h, numFrames);
    }
    return (this->*in)(checkedSubtract(twice, numFrames), sourceValue + h, h, numFrames);
}

float Animator::easeOutInQuad(std::int64_t currentFrame, float sourceValue, float amount,
                              std::int64_t numFrames) const {
    return easeOutIn(&Animator::easeOutQuad, &Animator::easeInQuad, currentFrame, sourceValue, amount,
                     numFrames);
}

float Animator::easeOutInCubic(std::int64_t currentFrame, float sourceValue, float amount,
                               std::int64_t numFrames) const {
    return easeOutIn(&Animator::easeOutCubic, &Animator::easeInCubic, currentFrame, sourceValue, amount,
                     numFrames);
}

float Animator::easeOutInQuart(std::int64_t currentFrame, float sourceValue, float amount,
                               std::int64_t numFrames) const {
    return easeOutIn(&Animator::easeOutQuart, &Animator::easeInQuart, currentFrame, sourceValue, amount,
                     numFrames);
}

float Animator::easeOutInQuint(std::int64_t currentFrame, float sourceValue, float amount,
                               std::int64_t numFrames) const {
    return easeOutIn(&Animator::easeOutQuint, &Animator::easeInQuint, currentFrame, sourceValue, amount,
                     numFrames);
}

float Animator::easeOutInSine(std::int64_t currentFrame, float sourceValue, float amount,
                              std::int64_t numFrames) const {
    return easeOutIn(&Animator::easeOutSine, &Animator::easeInSine, currentFrame, sourceValue, amount,
                     numFrames);
}

float Animator::easeOutInExpo(std::int64_t currentFrame, float sourceValue, float amount,
                              std::int64_t numFrames) const {
    return easeOutIn(&Animator::easeOutExpo, &Animator::easeInExpo, currentFrame, sourceValue, amount,
                     numFrames);
}

float Animator::easeOutInCirc(std::int64_t currentFrame, float sourceValue, float amount,
                              std::int64_t numFrames) const {
    return easeOutIn(&Animator::easeOutCirc, &Animator::easeInCirc, currentFrame, sourceValue, amount,
                     numFrames);
}

float Animator::easeOutInElastic(std::int64_t currentFrame, float sourceValue, float amount,
                                 std::int64_t numFrames) const {
    return easeOutIn(&Animator::easeOutElastic, &Animator::easeInElastic, currentFrame, sourceValue, amount,
                     numFrames);
}

float Animator::easeOutInBack(std::int64_t currentFrame, float sourceValue, float amount,
                              std::int64_t numFrames) const {
    return easeOutIn(&Animator::easeOutBack, &Animator::easeInBack, currentFrame, sourceValue, amount,
                     numFrames);
}

float Animator::easeOutInBounce(std::int64_t currentFrame, float sourceValue, float amount,
                                std::int64_t numFrames) const {
    return easeOutIn(&Animator::easeOutBounce, &Animator::easeInBounce, currentFrame, sourceValue, amount,
                     numFrames);
}

} // namespace qor
