// Keeps audio that no limiter can make sense of out of the unit, and notices when it got in all the same.
#pragma once

#include "platform/core/RealTime.h"

#include <bit>
#include <cstdint>

namespace qor::host {

/// +48 dBFS: beyond this a sample is a fault, not music.
inline constexpr float kLoudestInput = 256.0F;

/// All set in infinities and NaNs, and in no other float.
inline constexpr std::uint32_t kExponentBits = 0x7F800000;

/// Copies samples, what is not finite as 0 and what is louder than `kLoudestInput` cut to it. A null source
/// is silence. The places may be the same. Bits decide what is finite, so that the loop has no branch.
inline void copyGuarded(const float* source, float* target, std::uint32_t count) noexcept QOR_NONBLOCKING {
    if (source == nullptr) {
        for (std::uint32_t i = 0; i < count; ++i) {
            target[i] = 0.0F;
        }
        return;
    }
    for (std::uint32_t i = 0; i < count; ++i) {
        const auto bits = std::bit_cast<std::uint32_t>(source[i]);
        const std::uint32_t keep = (bits & kExponentBits) != kExponentBits ? ~0U : 0U;
        const auto finite = std::bit_cast<float>(bits & keep);
        const float below = finite > kLoudestInput ? kLoudestInput : finite;
        target[i] = below < -kLoudestInput ? -kLoudestInput : below;
    }
}

/// Copies samples held down to full scale.
inline void copyHeldDown(const float* source, float* target, std::uint32_t count) noexcept QOR_NONBLOCKING {
    for (std::uint32_t i = 0; i < count; ++i) {
        const float below = source[i] > 1.0F ? 1.0F : source[i];
        target[i] = below < -1.0F ? -1.0F : below;
    }
}

/// True if no sample is infinite or NaN. Looks at the bits, all of them in any case: that the processor can
/// do for several samples at once.
inline bool allFinite(const float* samples, std::uint32_t count) noexcept QOR_NONBLOCKING {
    std::uint32_t notFinite = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        notFinite |= (std::bit_cast<std::uint32_t>(samples[i]) & kExponentBits) == kExponentBits ? 1U : 0U;
    }
    return notFinite == 0;
}

} // namespace qor::host
