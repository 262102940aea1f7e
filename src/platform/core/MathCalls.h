// The math library's single-precision functions, called as they are.
#pragma once

namespace platform {

// Compilers replace a call with known arguments by a value of their own, or `powf` of a known base by `exp2f`
// or `exp10f`, and the last bit then depends on the compiler. These reach the math library in every build.

float libraryPower(float base, float exponent) noexcept;
float librarySine(float radians) noexcept;
/// The natural logarithm.
float libraryLogarithm(float value) noexcept;

} // namespace platform
