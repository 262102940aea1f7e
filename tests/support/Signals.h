// Test signals and comparison of audio.
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

namespace test {

struct Stereo {
    std::vector<float> left;
    std::vector<float> right;

    std::size_t frames() const { return left.size(); }
    float peak() const {
        float highest = 0.0F;
        for (const std::vector<float>* side : {&left, &right}) {
            for (const float sample : *side) {
                highest = std::max(highest, std::fabs(sample));
            }
        }
        return highest;
    }
};

/// Uniform noise, both sides independent.
inline Stereo noise(std::size_t frames, float level, unsigned seed = 1) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> sample(-level, level);
    Stereo signal{std::vector<float>(frames), std::vector<float>(frames)};
    for (std::size_t i = 0; i < frames; ++i) {
        signal.left[i] = sample(random);
        signal.right[i] = sample(random);
    }
    return signal;
}

inline Stereo silence(std::size_t frames) {
    return {std::vector<float>(frames), std::vector<float>(frames)};
}

/// Index of the first sample whose bits differ, or the length if none does.
inline std::size_t firstDifference(const std::vector<float>& a, const std::vector<float>& b) {
    const std::size_t length = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < length; ++i) {
        if (std::bit_cast<std::uint32_t>(a[i]) != std::bit_cast<std::uint32_t>(b[i])) {
            return i;
        }
    }
    return length;
}

inline bool sameBits(const Stereo& a, const Stereo& b) {
    return a.frames() == b.frames() && firstDifference(a.left, b.left) == a.frames() &&
           firstDifference(a.right, b.right) == a.frames();
}

} // namespace test
