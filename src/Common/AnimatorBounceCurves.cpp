// The bouncing curves. Their frame numbers are formed in floating point and cut back to integers.
#include "Common/Animator.h"

#include <cmath>

namespace qor {

namespace {
std::int64_t frameNumber(float frame) {
    return checkedInt64(static_cast<double>(frame));
}
} // namespace

float Animator::easeInBounce(std::int64_t currentFrame, float sourceValue, float amount,
                             std::int64_t numFrames) const {
    const float mirrored = static_cast<float>(numFrames) - static_cast<float>(currentFrame);
    return amount - easeOutBounce(frameNumber(mirrored), 0.0f, amount, numFrames) + sourceValue;
}

float Animator::easeOutBounce(std::int64_t currentFrame, float sourceValue, float amount,
                              std::int64_t numFrames) const {
    const float t = static_cast<float>(currentFrame) / static_cast<float>(numFrames);
    constexpr float k = 7.5625f;
    if (t < static_cast<float>(0.36363636363636365)) {
        return amount * k * (t * t) + sourceValue;
    }
    if (t < 0.72727275f) {
        const float u = t - 0.54545456f;
        return amount * (k * (u * u) + 0.75f) + sourceValue;
    }
    if (t < 0.90909094f) {
        const float u = t - 0.8181818f;
        return amount * (k * (u * u) + 0.9375f) + sourceValue;
    }
    const float u = t - 0.95454544f;
    return amount * (k * (u * u) + 0.984375f) + sourceValue;
}

float Animator::easeInOutBounce(std::int64_t currentFrame, float sourceValue, float amount,
                                std::int64_t numFrames) const {
    const auto f = static_cast<float>(currentFrame);
    const auto n = static_cast<float>(numFrames);
    if (f < n / 2.0f) {
        return easeInBounce(frameNumber(f * 2.0f), 0.0f, amount, numFrames) * 0.5f + sourceValue;
    }
    return easeOutBounce(frameNumber(f * 2.0f - n), 0.0f, amount, numFrames) * 0.5f + amount * 0.5f +
           sourceValue;
}

} // namespace qor
