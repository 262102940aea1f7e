// The signal that plug-ins are timed with.
#pragma once

#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <random>
#include <vector>

namespace bench {

/// Noise up to +3 dB, that the limiter works on, and room for the output.
class NoiseStage {
public:
    NoiseStage() {
        std::minstd_rand random(1);
        std::uniform_real_distribution<float> level(-1.41F, 1.41F);
        for (auto& side : in_) {
            side.resize(kFrames);
            for (float& sample : side) {
                sample = level(random);
            }
        }
        for (auto& side : out_) {
            side.resize(kFrames);
        }
    }

    /// Runs `block(input, output, frames)` over the signal, block by block and again from its start; counts
    /// the time per stereo frame.
    template <class Block>
    void walk(benchmark::State& state, const Block& block) {
        const auto frames = static_cast<std::uint32_t>(state.range(0));
        std::uint32_t offset = 0;
        for (auto _ : state) {
            const float* const input[2] = {in_[0].data() + offset, in_[1].data() + offset};
            float* const output[2] = {out_[0].data(), out_[1].data()};
            block(input, output, frames);
            benchmark::ClobberMemory();
            offset = (offset + frames) % kFrames;
        }
        state.counters["per_frame"] = benchmark::Counter(
            frames, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    }

private:
    static constexpr std::uint32_t kFrames = 1 << 14;

    std::array<std::vector<float>, 2> in_;
    std::array<std::vector<float>, 2> out_;
};

} // namespace bench
