// The system peak limiter's cost per stereo frame, by what it has to do.
#include "platform/audio/PeakLimiterDSP.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <vector>

namespace {

using namespace platform;

constexpr std::uint32_t kFrames = 512;

/// White noise of the given peak.
std::vector<float> noise(float peak, std::uint32_t seed) {
    std::mt19937 random(seed);
    std::vector<float> samples(kFrames);
    for (float& sample : samples) {
        sample = peak * static_cast<float>(static_cast<double>(random()) / 2147483647.5 - 1.0);
    }
    return samples;
}

void limit(benchmark::State& state, float peak, float preGain) {
    const auto leftIn = noise(peak, 1);
    const auto rightIn = noise(peak, 2);
    std::vector<float> left(kFrames);
    std::vector<float> right(kFrames);
    PeakLimiterDSP limiter;
    limiter.set(0.03F, 0.06F, preGain);
    limiter.prepare(48000.0);
    for ([[maybe_unused]] auto _ : state) {
        left = leftIn;
        right = rightIn;
        limiter.process(left.data(), right.data(), kFrames);
        benchmark::DoNotOptimize(left.data());
        benchmark::DoNotOptimize(right.data());
        benchmark::ClobberMemory();
    }
    state.counters["s_per_frame"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * kFrames,
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

BENCHMARK_CAPTURE(limit, below_the_ceiling, 0.9F, 0.0F);
BENCHMARK_CAPTURE(limit, below_the_ceiling_with_pre_gain, 0.9F, -0.01F);
BENCHMARK_CAPTURE(limit, limiting, 4.0F, -0.01F);

/// The pre-gain glides all the time.
void limitGliding(benchmark::State& state) {
    std::vector<float> left = noise(0.5F, 1);
    std::vector<float> right = noise(0.5F, 2);
    PeakLimiterDSP limiter;
    limiter.set(0.03F, 0.06F, 0.0F);
    limiter.prepare(192000.0);
    float preGain = 0.0F;
    for ([[maybe_unused]] auto _ : state) {
        preGain = -0.001F - preGain;
        limiter.set(0.03F, 0.06F, preGain);
        limiter.process(left.data(), right.data(), kFrames);
        benchmark::DoNotOptimize(left.data());
        benchmark::ClobberMemory();
    }
    state.counters["s_per_frame"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * kFrames,
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(limitGliding);

} // namespace
