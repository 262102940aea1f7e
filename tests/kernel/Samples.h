// Sample buffers for the tests of the signal classes.
#pragma once

#include <cmath>
#include <cstddef>
#include <vector>

namespace test {

using Samples = std::vector<float>;

/// A sine; `frequency` in radians per sample.
inline Samples wave(int count, float frequency, float level = 1.0F) {
    Samples samples(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        samples[static_cast<std::size_t>(i)] = level * std::sin(frequency * static_cast<float>(i));
    }
    return samples;
}

} // namespace test
