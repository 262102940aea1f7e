// The math library's single-precision functions, called as they are.
#pragma once

#include "platform/core/RealTime.h"

namespace platform {

// Compilers replace a call with known arguments by a value of their own, or `powf` of a known base by `exp2f`
// or `exp10f`, and the last bit then depends on the compiler. These reach the math library in every build.

float libraryPower(float base, float exponent) noexcept QOR_NONBLOCKING;
float librarySine(float radians) noexcept QOR_NONBLOCKING;
/// The natural logarithm.
float libraryLogarithm(float value) noexcept QOR_NONBLOCKING;

} // namespace platform
