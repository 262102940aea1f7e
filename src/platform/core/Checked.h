// Integer arithmetic that ends the process where it would overflow.
#pragma once

#include "platform/core/Fatal.h"

#include <cstdint>
#include <string_view>

namespace platform {

inline constexpr std::string_view kOverflowMessage = "Arithmetic overflow";
inline constexpr std::string_view kRangeMessage = "Range requires lowerBound <= upperBound";
inline constexpr std::string_view kIndexMessage = "Index out of range";

inline std::int64_t checkedAdd(std::int64_t a, std::int64_t b) noexcept {
    std::int64_t result = 0;
    if (__builtin_add_overflow(a, b, &result)) {
        fatalError(kOverflowMessage);
    }
    return result;
}

inline std::int64_t checkedSubtract(std::int64_t a, std::int64_t b) noexcept {
    std::int64_t result = 0;
    if (__builtin_sub_overflow(a, b, &result)) {
        fatalError(kOverflowMessage);
    }
    return result;
}

inline std::int64_t checkedMultiply(std::int64_t a, std::int64_t b) noexcept {
    std::int64_t result = 0;
    if (__builtin_mul_overflow(a, b, &result)) {
        fatalError(kOverflowMessage);
    }
    return result;
}

/// The value cut towards zero; ends the process if it is not finite or does not fit.
inline std::int64_t checkedInt64(double value) noexcept {
    constexpr double kLimit = 9223372036854775808.0; // 2^63
    if (!(value >= -kLimit && value < kLimit)) {
        fatalError("Floating-point value cannot be converted to a 64-bit integer");
    }
    return static_cast<std::int64_t>(value);
}

} // namespace platform
