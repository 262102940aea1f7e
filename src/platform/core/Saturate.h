// The one conversion from floating point to integers that the signal code uses.
#pragma once

#include <concepts>
#include <limits>

namespace platform {

/// Truncates toward zero. A value beyond the integer's range gives the nearer end of it, NaN gives 0.
template <std::integral Integer, std::floating_point Float>
constexpr Integer saturatingCast(Float value) noexcept {
    using Limits = std::numeric_limits<Integer>;
    // The first power of two above the range; unlike the range's maximum it is exact in every format.
    constexpr Float kEnd = static_cast<Float>(Limits::max() / 2 + 1) * Float(2);
    if (value != value) {
        return 0;
    }
    if (value <= static_cast<Float>(Limits::min())) {
        return Limits::min();
    }
    if (value >= kEnd) {
        return Limits::max();
    }
    return static_cast<Integer>(value);
}

} // namespace platform
