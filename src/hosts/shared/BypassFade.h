// A host's bypass: a short crossfade between the unit's output and its input.
#pragma once

#include "platform/core/RealTime.h"

#include <atomic>
#include <cstdint>

namespace qor::host {

/// Fades between what the unit made and the untouched input in 10 ms, linearly, so that switching makes no
/// click. Fully on or off it changes no bit of either. The switch may be set on any thread, the rest is for
/// the render thread.
class BypassFade {
public:
    static constexpr double kSeconds = 0.010;

    void setSampleRate(double sampleRate) noexcept {
        step_ = static_cast<float>(1.0 / (kSeconds * sampleRate));
    }
    void setBypassed(bool bypassed) noexcept { target_.store(bypassed, std::memory_order_relaxed); }
    bool isBypassed() const noexcept { return target_.load(std::memory_order_relaxed); }
    /// Ends a fade in progress at once; for activation.
    void settle() noexcept { share_ = isBypassed() ? 1.0F : 0.0F; }

    /// Works on a stereo stretch in place. Returns whether the input was let through at all.
    bool process(const float* const dry[2], float* const output[2], std::uint32_t count) noexcept
        QOR_NONBLOCKING {
        const float target = isBypassed() ? 1.0F : 0.0F;
        if (share_ == 0.0F && target == 0.0F) {
            return false;
        }
        std::uint32_t i = 0;
        for (; i < count && share_ != target; ++i) {
            share_ = target > share_ ? (share_ + step_ > target ? target : share_ + step_)
                                     : (share_ - step_ < target ? target : share_ - step_);
            for (int c = 0; c < 2; ++c) {
                output[c][i] += (dry[c][i] - output[c][i]) * share_;
            }
        }
        if (target == 1.0F) {
            for (int c = 0; c < 2; ++c) {
                for (std::uint32_t j = i; j < count; ++j) {
                    output[c][j] = dry[c][j];
                }
            }
        }
        return true;
    }

private:
    std::atomic<bool> target_{false};
    float share_ = 0.0F; // of the input in the output
    float step_ = 1.0F;
};

} // namespace qor::host
