// The one conversion from floating point to integers that the signal code uses.
#pragma once

#include <concepts>
#include <cstdint>
#include <limits>

namespace platform {

/// Truncates toward zero. A value beyond the integer's range gives the nearer end of it, NaN gives 0.
template <std::integral Integer, std::floating_point Float>
constexpr Integer saturatingCast(Float value) noexcept {
    using Limits = std::numeric_limits<Integer>;
    constexpr auto kLeast = static_cast<Float>(Limits::min());
    // The first power of two above the range; unlike the range's maximum it is exact in every format.
    constexpr Float kEnd = Float(2) * static_cast<Float>(std::uint64_t{1} << (Limits::digits - 1));
    if (value >= kEnd) {
        return Limits::max();
    }
    if (value <= kLeast) {
        return Limits::min();
    }
    if (value > kLeast) {
        return static_cast<Integer>(value);
    }
    return 0;
}

} // namespace platform
