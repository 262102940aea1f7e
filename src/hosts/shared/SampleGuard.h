// Keeps audio that no limiter can make sense of out of the unit, and notices when it got in all the same.
#pragma once

#include <cstdint>

namespace qor::host {

/// +48 dBFS: beyond this a sample is a fault, not music.
inline constexpr float kLoudestInput = 256.0F;

/// Copies samples, what is not finite as 0 and what is louder than `kLoudestInput` cut to it. A null source
/// is silence. The places may be the same.
inline void copyGuarded(const float* source, float* target, std::uint32_t count) noexcept {
    if (source == nullptr) {
        for (std::uint32_t i = 0; i < count; ++i) {
            target[i] = 0.0F;
        }
        return;
    }
    for (std::uint32_t i = 0; i < count; ++i) {
        const float x = source[i];
        // x - x is 0 for every finite number and NaN for all others.
        const float finite = x - x == 0.0F ? x : 0.0F;
        const float below = finite > kLoudestInput ? kLoudestInput : finite;
        target[i] = below < -kLoudestInput ? -kLoudestInput : below;
    }
}

/// Copies samples held down to full scale.
inline void copyHeldDown(const float* source, float* target, std::uint32_t count) noexcept {
    for (std::uint32_t i = 0; i < count; ++i) {
        const float below = source[i] > 1.0F ? 1.0F : source[i];
        target[i] = below < -1.0F ? -1.0F : below;
    }
}

/// True if no sample is infinite or NaN.
inline bool allFinite(const float* samples, std::uint32_t count) noexcept {
    bool finite = true;
    for (std::uint32_t i = 0; i < count; ++i) {
        finite = finite && (samples[i] - samples[i] == 0.0F);
    }
    return finite;
}

} // namespace qor::host
