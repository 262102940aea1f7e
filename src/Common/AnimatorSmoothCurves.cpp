// The sine, exponential and circular curves. t is the part done.
#include "Common/Animator.h"

#include <cmath>
#include <numbers>

namespace qor {

namespace {
constexpr float kPi = std::numbers::pi_v<float>;
} // namespace

float Animator::easeInSine(std::int64_t currentFrame, float sourceValue, float amount,
                           std::int64_t numFrames) const {
    const float t = static_cast<float>(currentFrame) / static_cast<float>(numFrames);
    return -amount * cosf(t * kPi / 2.0f) + amount + sourceValue;
}

float Animator::easeOutSine(std::int64_t currentFrame, float sourceValue, float amount,
                            std::int64_t numFrames) const {
    const float t = static_cast<float>(currentFrame) / static_cast<float>(numFrames);
    return amount * sinf(t * kPi / 2.0f) + sourceValue;
}

float Animator::easeInOutSine(std::int64_t currentFrame, float sourceValue, float amount,
                              std::int64_t numFrames) const {
    const auto f = static_cast<float>(currentFrame);
    const auto n = static_cast<float>(numFrames);
    return -amount / 2.0f * (cosf(kPi * f / n) - 1.0f) + sourceValue;
}

float Animator::easeInExpo(std::int64_t currentFrame, float sourceValue, float amount,
                           std::int64_t numFrames) const {
    const auto f = static_cast<float>(currentFrame);
    const auto n = static_cast<float>(numFrames);
    if (f == 0.0f) {
        return sourceValue;
    }
    const float t = f / n;
    return amount * powf(2.0f, 10.0f * (t - 1.0f)) + sourceValue;
}

float Animator::easeOutExpo(std::int64_t currentFrame, float sourceValue, float amount,
                            std::int64_t numFrames) const {
    const auto f = static_cast<float>(currentFrame);
    const auto n = static_cast<float>(numFrames);
    if (f == n) {
        return sourceValue + amount;
    }
    const float t = f / n;
    return amount * (1.0f - powf(2.0f, -10.0f * t)) + sourceValue;
}

float Animator::easeInOutExpo(std::int64_t currentFrame, float sourceValue, float amount,
                              std::int64_t numFrames) const {
    const auto f = static_cast<float>(currentFrame);
    const auto n = static_cast<float>(numFrames);
    if (f == 0.0f) {
        return sourceValue;
    }
    if (f == n) {
        return sourceValue + amount;
    }
    // Halved where the other curves double: within the range the second branch is never reached. Kept so.
    const float v = f / n / 2.0f;
    if (v < 1.0f) {
        return amount / 2.0f * powf(2.0f, 10.0f * (v - 1.0f)) + sourceValue;
    }
    return amount / 2.0f * (2.0f - powf(2.0f, -10.0f * (v - 1.0f))) + sourceValue;
}

float Animator::easeInCirc(std::int64_t currentFrame, float sourceValue, float amount,
                           std::int64_t numFrames) const {
    const float t = static_cast<float>(currentFrame) / static_cast<float>(numFrames);
    return -amount * (sqrtf(1.0f - t * t) - 1.0f) + sourceValue;
}

float Animator::easeOutCirc(std::int64_t currentFrame, float sourceValue, float amount,
                            std::int64_t numFrames) const {
    const float t = static_cast<float>(currentFrame) / static_cast<float>(numFrames);
    const float u = t - 1.0f;
    return amount * sqrtf(1.0f - u * u) + sourceValue;
}

float Animator::easeInOutCirc(std::int64_t currentFrame, float sourceValue, float amount,
                              std::int64_t numFrames) const {
    const float v = static_cast<float>(currentFrame) / (static_cast<float>(numFrames) / 2.0f);
    if (v < 1.0f) {
        return -amount / 2.0f * (sqrtf(1.0f - v * v) - 1.0f) + sourceValue;
    }
    const float u = v - 2.0f;
    return amount / 2.0f * (sqrtf(1.0f - u * u) + 1.0f) + sourceValue;
}

} // namespace qor
