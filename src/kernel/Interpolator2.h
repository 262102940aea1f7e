// A value smoother that the filter owns and does not use.
#pragma once

#include <cstdint>

namespace qor {

class Interpolator2 {
public:
    float value = 0.5F;
    float target = 0.5F;
    std::uint32_t word1 = 0;
    std::uint64_t steps = 1024;
    std::uint64_t word2 = 0;

    Interpolator2() { setInitialValue(0.5F); }

    void setInitialValue(float v) {
        value = v;
        target = v;
    }
};

} // namespace qor
