// The elastic and overshooting curves. q is the period, s the phase, both in frames.
#include "Common/Animator.h"

#include <cmath>
#include <numbers>

namespace qor {

namespace {
constexpr float kPi = std::numbers::pi_v<float>;
} // namespace

float Animator::easeInElastic(std::int64_t currentFrame, float sourceValue, float amount,
                              std::int64_t numFrames) const {
    const auto f = static_cast<float>(currentFrame);
    const auto n = static_cast<float>(numFrames);
    const float t = f / n;
    if (f == 0.0f) {
        return sourceValue;
    }
    if (t == 1.0f) {
        return sourceValue + amount;
    }
    const float q = n * 0.3f;
    const float s = q / 4.0f;
    const float u = t - 1.0f;
    return -(amount * powf(2.0f, 10.0f * u) * sinf((u * n - s) * 2.0f * kPi / q)) + sourceValue;
}

float Animator::easeOutElastic(std::int64_t currentFrame, float sourceValue, float amount,
                               std::int64_t numFrames) const {
    const auto f = static_cast<float>(currentFrame);
    const auto n = static_cast<float>(numFrames);
    const float t = f / n;
    if (f == 0.0f) {
        return sourceValue;
    }
    if (t == 1.0f) {
        return sourceValue + amount;
    }
    const float q = n * 0.3f;
    const float s = q / 4.0f;
    return amount * powf(2.0f, -10.0f * t) * sinf((t * n - s) * 2.0f * kPi / q) + amount + sourceValue;
}

float Animator::easeInOutElastic(std::int64_t currentFrame, float sourceValue, float amount,
                                 std::int64_t numFrames) const {
    const auto f = static_cast<float>(currentFrame);
    const auto n = static_cast<float>(numFrames);
    if (f == 0.0f) {
        return sourceValue;
    }
    const float v = f / (n / 2.0f);
    if (v == 2.0f) {
        return sourceValue + amount;
    }
    const float q = n * 0.45000002f;
    const float s = q / 4.0f;
    const float w = ((v - 1.0f) * n - s) * 2.0f;
    if (v < 1.0f) {
        return -0.5f * (amount * powf(2.0f, 10.0f * (v - 1.0f)) * sinf(w * kPi / q)) + sourceValue;
    }
    return amount * powf(2.0f, -10.0f * (v - 1.0f)) * sinf(w * kPi / q) * 0.5f + amount + sourceValue;
}

float Animator::easeInBack(std::int64_t currentFrame, float sourceValue, float amount,
                           std::int64_t numFrames) const {
    const float t = static_cast<float>(currentFrame) / static_cast<float>(numFrames);
    return amount * (t * t) * (2.70158f * t - 1.70158f) + sourceValue;
}

float Animator::easeOutBack(std::int64_t currentFrame, float sourceValue, float amount,
                            std::int64_t numFrames) const {
    const float t = static_cast<float>(currentFrame) / static_cast<float>(numFrames);
    const float u = t - 1.0f;
    return amount * (u * u * (2.70158f * u + 1.70158f) + 1.0f) + sourceValue;
}

float Animator::easeInOutBack(std::int64_t currentFrame, float sourceValue, float amount,
                              std::int64_t numFrames) const {
    const float v = static_cast<float>(currentFrame) / (static_cast<float>(numFrames) / 2.0f);
    if (v < 1.0f) {
        return amount / 2.0f * (v * v) * (3.5949094f * v - 2.5949094f) + sourceValue;
    }
    const float u = v - 2.0f;
    return amount / 2.0f * (u * u * (3.5949094f * u + 2.5949094f) + 2.0f) + sourceValue;
}

} // namespace qor
