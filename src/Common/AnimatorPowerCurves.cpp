// The straight line and the curves of the second to fifth power. t is the part done, b the source, c the
// amount.
#include "Common/Animator.h"

#include <cmath>

namespace qor {

float Animator::easeNone(std::int64_t currentFrame, float b, float c, std::int64_t numFrames) const {
    const float t = static_cast<float>(currentFrame) / static_cast<float>(numFrames);
    return c * t + b;
}

float Animator::easeInQuad(std::int64_t currentFrame, float b, float c, std::int64_t numFrames) const {
    const float t = static_cast<float>(currentFrame) / static_cast<float>(numFrames);
    return c * powf(t, 2.0f) + b;
}

float Animator::easeOutQuad(std::int64_t currentFrame, float b, float c, std::int64_t numFrames) const {
    const float t = static_cast<float>(currentFrame) / static_cast<float>(numFrames);
    return -c * t * (t - 2.0f) + b;
}

float Animator::easeInOutQuad(std::int64_t currentFrame, float b, float c, std::int64_t numFrames) const {
    const float v = static_cast<float>(currentFrame) / (static_cast<float>(numFrames) / 2.0f);
    if (v < 1.0f) {
        return c / 2.0f * powf(v, 2.0f) + b;
    }
    return -c / 2.0f * ((v - 1.0f) * (v - 1.0f - 2.0f) - 1.0f) + b;
}

float Animator::easeOutInQuad(std::int64_t currentFrame, float sourceValue, float amount,
                              std::int64_t numFrames) const {
    const float h = amount / 2.0f;
    if (currentFrame < numFrames / 2) {
        return easeOutQuad(checkedMultiply(currentFrame, 2), sourceValue, h, numFrames);
    }
    return easeInQuad(checkedSubtract(checkedMultiply(currentFrame, 2), numFrames), sourceValue + h, h,
                      numFrames);
}

float Animator::easeInCubic(std::int64_t currentFrame, float b, float c, std::int64_t numFrames) const {
    const float t = static_cast<float>(currentFrame) / static_cast<float>(numFrames);
    return c * powf(t, 3.0f) + b;
}

float Animator::easeOutCubic(std::int64_t currentFrame, float b, float c, std::int64_t numFrames) const {
    const float t = static_cast<float>(currentFrame) / static_cast<float>(numFrames);
    const float u = t - 1.0f;
    return c * (powf(u, 3.0f) + 1.0f) + b;
}

float Animator::easeInOutCubic(std::int64_t currentFrame, float b, float c, std::int64_t numFrames) const {
    const float v = static_cast<float>(currentFrame) / (static_cast<float>(numFrames) / 2.0f);
    if (v < 1.0f) {
        return c / 2.0f * powf(v, 3.0f) + b;
    }
    return c / 2.0f * (powf(v - 2.0f, 3.0f) + 2.0f) + b;
}

float Animator::easeOutInCubic(std::int64_t currentFrame, float sourceValue, float amount,
                               std::int64_t numFrames) const {
    const float h = amount / 2.0f;
    if (currentFrame < numFrames / 2) {
        return easeOutCubic(checkedMultiply(currentFrame, 2), sourceValue, h, numFrames);
    }
    return easeInCubic(checkedSubtract(checkedMultiply(currentFrame, 2), numFrames), sourceValue + h, h,
                       numFrames);
}

float Animator::easeInQuart(std::int64_t currentFrame, float b, float c, std::int64_t numFrames) const {
    const float t = static_cast<float>(currentFrame) / static_cast<float>(numFrames);
    return c * powf(t, 4.0f) + b;
}

float Animator::easeOutQuart(std::int64_t currentFrame, float b, float c, std::int64_t numFrames) const {
    // The fourth power with the odd powers' plus: it starts at b + 2c and falls to b + c. Kept so.
    const float t = static_cast<float>(currentFrame) / static_cast<float>(numFrames);
    const float u = t - 1.0f;
    return c * (powf(u, 4.0f) + 1.0f) + b;
}

float Animator::easeInOutQuart(std::int64_t currentFrame, float b, float c, std::int64_t numFrames) const {
    const float v = static_cast<float>(currentFrame) / (static_cast<float>(numFrames) / 2.0f);
    if (v < 1.0f) {
        return c / 2.0f * powf(v, 4.0f) + b;
    }
    // The plus of the odd powers again: a jump to b + 1.5c in the middle. Kept so.
    return c / 2.0f * (powf(v - 2.0f, 4.0f) + 2.0f) + b;
}

float Animator::easeOutInQuart(std::int64_t currentFrame, float sourceValue, float amount,
                               std::int64_t numFrames) const {
    const float h = amount / 2.0f;
    if (currentFrame < numFrames / 2) {
        return easeOutQuart(checkedMultiply(currentFrame, 2), sourceValue, h, numFrames);
    }
    return easeInQuart(checkedSubtract(checkedMultiply(currentFrame, 2), numFrames), sourceValue + h, h,
                       numFrames);
}

float Animator::easeInQuint(std::int64_t currentFrame, float b, float c, std::int64_t numFrames) const {
    const float t = static_cast<float>(currentFrame) / static_cast<float>(numFrames);
    return c * powf(t, 5.0f) + b;
}

float Animator::easeOutQuint(std::int64_t currentFrame, float b, float c, std::int64_t numFrames) const {
    const float t = static_cast<float>(currentFrame) / static_cast<float>(numFrames);
    const float u = t - 1.0f;
    return c * (powf(u, 5.0f) + 1.0f) + b;
}

float Animator::easeInOutQuint(std::int64_t currentFrame, float b, float c, std::int64_t numFrames) const {
    const float v = static_cast<float>(currentFrame) / (static_cast<float>(numFrames) / 2.0f);
    if (v < 1.0f) {
        return c / 2.0f * powf(v, 5.0f) + b;
    }
    return c / 2.0f * (powf(v - 2.0f, 5.0f) + 2.0f) + b;
}

float Animator::easeOutInQuint(std::int64_t currentFrame, float sourceValue, float amount,
                               std::int64_t numFrames) const {
    const float h = amount / 2.0f;
    if (currentFrame < numFrames / 2) {
        return easeOutQuint(checkedMultiply(currentFrame, 2), sourceValue, h, numFrames);
    }
    return easeInQuint(checkedSubtract(checkedMultiply(currentFrame, 2), numFrames), sourceValue + h, h,
                       numFrames);
}

} // namespace qor
