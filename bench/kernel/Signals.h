// The signals that the kernel is timed on.
#pragma once

#include <cstdint>
#include <vector>

namespace bench {

enum class Signal { noise, silence, square, denormalTail };

inline const char* nameOf(Signal signal) {
    switch (signal) {
    case Signal::noise:
        return "noise";
    case Signal::silence:
        return "silence";
    case Signal::square:
        return "square";
    case Signal::denormalTail:
        return "denormal tail";
    }
    return "";
}

/// White noise from -1 to 1, the same in each run.
inline float noiseSample(std::uint32_t& seed) {
    seed = seed * 1664525U + 1013904223U;
    return static_cast<float>(static_cast<std::int32_t>(seed)) * 0x1p-31F;
}

inline std::vector<float> makeSignal(Signal signal, int frames, std::uint32_t seed) {
    std::vector<float> samples(static_cast<std::size_t>(frames), 0.0F);
    int place = 0;
    for (float& sample : samples) {
        switch (signal) {
        case Signal::noise:
            sample = noiseSample(seed);
            break;
        case Signal::silence:
            break;
        case Signal::square:
            sample = place % 96 < 48 ? 1.0F : -1.0F;
            break;
        case Signal::denormalTail: // every sample below the smallest normal float
            sample = noiseSample(seed) * 1e-39F;
            break;
        }
        ++place;
    }
    return samples;
}

} // namespace bench
