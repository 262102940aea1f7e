// Peak and loudness of a whole stereo signal.
#pragma once

#include "hosts/cli/LoudnessGate.h"

#include <ebur128.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace qor::cli {

/// Measures what is added to it, in memory that does not grow with the signal's length. Samples that are not
/// finite are counted and otherwise taken as silence.
class LevelMeter {
public:
    /// `sampleRate` in Hz.
    explicit LevelMeter(int sampleRate);

    void add(const float* left, const float* right, std::size_t frames);

    /// The largest magnitude in dB relative to 1.0; negative infinity for silence.
    double peak() const noexcept;
    /// Integrated loudness (EBU R 128) in LUFS; negative infinity for silence and for less than 0.4 s.
    double loudness() const noexcept;
    std::uint64_t nonFiniteSamples() const noexcept { return nonFinite_; }

private:
    struct Destroy {
        void operator()(ebur128_state* state) const noexcept { ebur128_destroy(&state); }
    };
    float finite(float sample) noexcept;
    void addLoudness(std::size_t frames) noexcept;

    std::unique_ptr<ebur128_state, Destroy> state_; // null if there was no memory for it
    LoudnessGate gate_;
    std::size_t hop_;       // frames between two blocks of the gate: 0.1 s
    std::size_t inHop_ = 0; // frames since the last block
    std::uint64_t hops_ = 0;
    std::vector<float> interleaved_;
    float peak_ = 0.0F;
    std::uint64_t nonFinite_ = 0;
};

} // namespace qor::cli
