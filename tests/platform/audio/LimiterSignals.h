// Signals for the tests of the peak limiter, and a plain version of its arithmetic to compare with.
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <random>
#include <string>
#include <vector>

namespace test {

using Samples = std::vector<float>;

struct StereoSignal {
    std::string name;
    Samples left;
    Samples right;
};

/// A number from -1 to 1, the same on every machine.
inline float uniform(std::mt19937& random) {
    return static_cast<float>(static_cast<double>(random()) / 2147483647.5 - 1.0);
}

inline float fromDecibels(double decibels) {
    return static_cast<float>(std::pow(10.0, decibels / 20.0));
}

inline Samples noise(std::size_t frames, double decibels, std::uint32_t seed) {
    std::mt19937 random(seed);
    Samples samples(frames);
    for (float& sample : samples) {
        sample = uniform(random) * fromDecibels(decibels);
    }
    return samples;
}

inline Samples sine(std::size_t frames, double decibels, double hertz, double rate) {
    Samples samples(frames);
    for (std::size_t i = 0; i < frames; ++i) {
        samples[i] =
            static_cast<float>(std::sin(2.0 * std::numbers::pi * hertz * static_cast<double>(i) / rate)) *
            fromDecibels(decibels);
    }
    return samples;
}

inline Samples square(std::size_t frames, double decibels, double hertz, double rate) {
    Samples samples = sine(frames, 0.0, hertz, rate);
    for (float& sample : samples) {
        sample = std::copysign(fromDecibels(decibels), sample);
    }
    return samples;
}

/// Hits at irregular times: a falling tone and a noise burst, both dying away, over quiet noise.
inline Samples drums(std::size_t frames, double decibels, double rate, std::uint32_t seed) {
    std::mt19937 random(seed);
    Samples samples(frames);
    double age = 0.0; // the first hit starts the signal
    double phase = 0.0;
    double strength = 1.0;
    for (float& sample : samples) {
        if (static_cast<double>(random()) / 4294967296.0 < 5.0 / rate) {
            age = 0.0;
            phase = 0.0;
            strength = 0.3 + 0.7 * std::abs(uniform(random));
        }
        const double tone = std::sin(phase) * std::exp(-age / 0.12);
        const double click = uniform(random) * std::exp(-age / 0.004);
        phase += 2.0 * std::numbers::pi * (50.0 + 250.0 * std::exp(-age / 0.02)) / rate;
        age += 1.0 / rate;
        sample = static_cast<float>(strength * (0.7 * tone + 0.5 * click) + 0.001 * uniform(random)) *
                 fromDecibels(decibels);
    }
    return samples;
}

inline bool sameBits(const Samples& a, const Samples& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](float x, float y) {
        return std::bit_cast<std::uint32_t>(x) == std::bit_cast<std::uint32_t>(y);
    });
}

inline float peakOf(const Samples& samples) {
    float peak = 0.0F;
    for (const float sample : samples) {
        peak = std::max(peak, std::abs(sample));
    }
    return peak;
}

/// The limiter one frame at a time, with a constant pre-gain and finite input.
class PlainLimiter {
public:
    PlainLimiter(double rate, float attack, float decay, float decibels)
        : attackKeep_(std::exp(-1.0 / (double{attack} * rate))),
          decayKeep_(std::exp(-1.0 / (double{decay} * rate))),
          preGain_(static_cast<float>(std::pow(10.0, double{decibels} / 20.0))) {}

    void process(float& left, float& right) {
        left *= preGain_;
        right *= preGain_;
        const float peak = std::max(std::abs(left), std::abs(right));
        const float ceilingGain = peak > 1.0F ? 1.0F / peak : 1.0F;
        const double wanted = 1.0 - double{ceilingGain};
        const double let = held_ * decayKeep_ - 1e-15;
        held_ = wanted > let ? wanted : let;
        const double followed = memory_ * attackKeep_ + held_ * (1.0 - attackKeep_);
        memory_ = followed < held_ ? followed : held_;
        const auto gain = static_cast<float>(1.0 - memory_);
        left *= std::min(gain, ceilingGain);
        right *= std::min(gain, ceilingGain);
    }

private:
    double attackKeep_;
    double decayKeep_;
    float preGain_;
    double held_ = 0.0;
    double memory_ = 0.0;
};

} // namespace test
