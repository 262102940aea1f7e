// The straight line and the curves of the second to fifth power. t is the part done, b the source, c the
// amount.
#include "Common/Animator.h"

#include <cmath>

namespace qor {

float Animator::easeNone(std::int64_t currentFrame, float sourceValue, float amount,
                         std::int64_t numFrames) const {
    const float t = static_cast<float>(currentFrame) / static_cast<float>(numFrames);
    return amount * t + sourceValue;
}

float Animator::easeInQuad(std::int64_t currentFrame, float sourceValue, float amount,
                           std::int64_t numFrames) const {
    const float t = static_cast<float>(currentFrame) / static_cast<float>(numFrames);
    return amount * powf(t, 2.0f) + sourceValue;
}

float Animator::easeOutQuad(std::int64_t currentFrame, float sourceValue, float amount,
                            std::int64_t numFrames) const {
    const float t = static_cast<float>(currentFrame) / static_cast<float>(numFrames);
    return -amount * t * (t - 2.0f) + sourceValue;
}

float Animator::easeInOutQuad(std::int64_t currentFrame, float sourceValue, float amount,
                              std::int64_t numFrames) const {
    const float v = static_cast<float>(currentFrame) / (static_cast<float>(numFrames) / 2.0f);
    if (v < 1.0f) {
        return amount / 2.0f * powf(v, 2.0f) + sourceValue;
    }
    return -amount / 2.0f * ((v - 1.0f) * (v - 1.0f - 2.0f) - 1.0f) + sourceValue;
}

float Animator::easeInCubic(std::int64_t currentFrame, float sourceValue, float amount,
                            std::int64_t numFrames) const {
    const float t = static_cast<float>(currentFrame) / static_cast<float>(numFrames);
    return amount * powf(t, 3.0f) + sourceValue;
}

float Animator::easeOutCubic(std::int64_t currentFrame, float sourceValue, float amount,
                             std::int64_t numFrames) const {
    const float t = static_cast<float>(currentFrame) / static_cast<float>(numFrames);
    const float u = t - 1.0f;
    return amount * (powf(u, 3.0f) + 1.0f) + sourceValue;
}

float Animator::easeInOutCubic(std::int64_t currentFrame, float sourceValue, float amount,
                               std::int64_t numFrames) const {
    const float v = static_cast<float>(currentFrame) / (static_cast<float>(numFrames) / 2.0f);
    if (v < 1.0f) {
        return amount / 2.0f * powf(v, 3.0f) + sourceValue;
    }
    return amount / 2.0f * (powf(v - 2.0f, 3.0f) + 2.0f) + sourceValue;
}

float Animator::easeInQuart(std::int64_t currentFrame, float sourceValue, float amount,
                            std::int64_t numFrames) const {
    const float t = static_cast<float>(currentFrame) / static_cast<float>(numFrames);
    return amount * powf(t, 4.0f) + sourceValue;
}

float Animator::easeOutQuart(std::int64_t currentFrame, float sourceValue, float amount,
                             std::int64_t numFrames) const {
    // The fourth power with the odd powers' plus: it starts at the source plus twice the amount and falls to
    // the end. Kept so.
    const float t = static_cast<float>(currentFrame) / static_cast<float>(numFrames);
    const float u = t - 1.0f;
    return amount * (powf(u, 4.0f) + 1.0f) + sourceValue;
}

float Animator::easeInOutQuart(std::int64_t currentFrame, float sourceValue, float amount,
                               std::int64_t numFrames) const {
    const float v = static_cast<float>(currentFrame) / (static_cast<float>(numFrames) / 2.0f);
    if (v < 1.0f) {
        return amount / 2.0f * powf(v, 4.0f) + sourceValue;
    }
    // The plus of the odd powers again: a jump to one and a half times the amount in the middle. Kept so.
    return amount / 2.0f * (powf(v - 2.0f, 4.0f) + 2.0f) + sourceValue;
}

float Animator::easeInQuint(std::int64_t currentFrame, float sourceValue, float amount,
                            std::int64_t numFrames) const {
    const float t = static_cast<float>(currentFrame) / static_cast<float>(numFrames);
    return amount * powf(t, 5.0f) + sourceValue;
}

float Animator::easeOutQuint(std::int64_t currentFrame, float sourceValue, float amount,
                             std::int64_t numFrames) const {
    const float t = static_cast<float>(currentFrame) / static_cast<float>(numFrames);
    const float u = t - 1.0f;
    return amount * (powf(u, 5.0f) + 1.0f) + sourceValue;
}

float Animator::easeInOutQuint(std::int64_t currentFrame, float sourceValue, float amount,
                               std::int64_t numFrames) const {
    const float v = static_cast<float>(currentFrame) / (static_cast<float>(numFrames) / 2.0f);
    if (v < 1.0f) {
        return amount / 2.0f * powf(v, 5.0f) + sourceValue;
    }
    return amount / 2.0f * (powf(v - 2.0f, 5.0f) + 2.0f) + sourceValue;
}

} // namespace qor
