// Built with -fno-builtin, which is what keeps the calls calls.
#include "platform/core/MathCalls.h"

#include <cmath>

namespace platform {

QOR_UNSEEN_BEGIN // without builtins the compiler knows nothing of these three

float libraryPower(float base, float exponent) noexcept {
    return ::powf(base, exponent);
}

float librarySine(float radians) noexcept {
    return ::sinf(radians);
}

float libraryLogarithm(float value) noexcept {
    return ::logf(value);
}

QOR_UNSEEN_END

} // namespace platform
