// The noise companion of the modulator: it stores its settings; nothing here renders noise.
#pragma once

#include <cstdint>

namespace qor {

class NoiseOscillator {
public:
    std::uint32_t seed = 33333;
    float frequency = 1.0F; // normalised, 0.0 to 1.0
    float level = 1.0F;
    std::uint64_t word1 = 0;
    float samplerate = 44100.0F; // hertz
    float period = 0.0F;         // samples
    std::uint32_t words[5] = {};

    NoiseOscillator() {
        init();
        setSamplerate(44100.0F);
        setFrequency(frequency);
    }

    void init() {
        for (std::uint32_t& word : words) {
            word = 0;
        }
    }

    /// Hertz. The period stays from 1 sample to one second.
    void setSamplerate(float s) {
        samplerate = s;
        period = frequency * s;
        if (period < 1.0F) {
            period = 1.0F;
        }
        if (period > s) {
            period = s;
        }
    }

    /// Limited to 0.0 to 1.0. Unlike a change of rate it lets the period fall below one sample.
    void setFrequency(float f) {
        frequency = f < 0.0F ? 0.0F : (f > 1.0F ? 1.0F : f);
        period = frequency * samplerate;
    }
};

} // namespace qor
