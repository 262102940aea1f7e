// Times per stereo frame of the kernel's render call in each mode, beside the chains that bound it.
#include "bench/kernel/Floor.h"
#include "kernel/QOR_Limiter_Extension_DSPKernel.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace bench;
using qor::Follower;
using qor::QOR_Limiter_Extension_DSPKernel;

enum class Law { hyperbolic, threshold };

const char* nameOf(Law law) {
    return law == Law::hyperbolic ? "hyperbolic" : "threshold";
}

// Long enough that no branch predictor learns the noise by heart, short enough for the second-level cache.
constexpr int kSignalFrames = 1 << 14;

/// A kernel with buffers, in the settings that every figure is taken with.
class Setup {
public:
    Setup(Law law, int mode, bool filtered, Signal signal)
        : in_{makeSignal(signal, kSignalFrames, 1), makeSignal(signal, kSignalFrames, 2)},
          out_{std::vector<float>(in_[0].size()), std::vector<float>(in_[0].size())} {
        platform::AudioBuffer* inBuffers = inList_.list.mBuffers;
        platform::AudioBuffer* outBuffers = outList_.list.mBuffers;
        for (int c = 0; c < 2; ++c) {
            inBuffers[c].mData = in_[c].data();
            outBuffers[c].mData = out_[c].data();
        }
        kernel->init(2, 48000.0);
        kernel->setBuffers(&inList_.list, &outList_.list);
        kernel->setParameter(qor::kLimiterKnee, law == Law::hyperbolic ? 1.0F : 0.0F);
        kernel->setParameter(qor::kLimiterAttack, 0.1F);
        kernel->setParameter(qor::kLimiterRelease, 0.66F);
        kernel->setParameter(qor::kLimiterThreshold, 0.5F);
        kernel->setParameter(qor::kLimiterTrim, 0.5F);
        kernel->setParameter(qor::kLimiterMix, 1.0F);
        kernel->setParameter(qor::kLimiterMode, static_cast<float>(mode));
        kernel->setParameter(qor::kLimiterInputFilterHP, filtered ? 0.3F : 0.0F);
        kernel->setParameter(qor::kLimiterInputFilterLP, filtered ? 0.8F : 1.0F);
    }

    std::vector<float>& input(int channel) { return in_[channel]; }
    std::vector<float>& output(int channel) { return out_[channel]; }

    const std::unique_ptr<QOR_Limiter_Extension_DSPKernel> kernel =
        std::make_unique<QOR_Limiter_Extension_DSPKernel>();

private:
    std::vector<float> in_[2];
    std::vector<float> out_[2];
    platform::AudioBufferListStorage<2> inList_;
    platform::AudioBufferListStorage<2> outList_;
};

/// Runs `block(offset)` over the signal, block by block and again from its start.
template <class Block>
void walk(benchmark::State& state, int frames, Block block) {
    int offset = 0;
    for (auto _ : state) {
        block(offset);
        benchmark::ClobberMemory();
        offset = (offset + frames) % kSignalFrames;
    }
    state.counters["per_frame"] = benchmark::Counter(frames, benchmark::Counter::kIsIterationInvariantRate |
                                                                 benchmark::Counter::kInvert);
}

/// The whole render call: copy, limiter, followers.
void render(benchmark::State& state, Law law, int mode, bool filtered, Signal signal, int frames) {
    const Setup setup(law, mode, filtered, signal);
    walk(state, frames, [&](int offset) {
        setup.kernel->process(static_cast<unsigned>(frames), static_cast<unsigned>(offset));
    });
}

/// The two elements' passes of mode 0, with the copy that gives them fresh input.
void passes(benchmark::State& state, Law law, int frames) {
    Setup setup(law, 0, false, Signal::noise);
    qor::Limiter2& limiter = setup.kernel->limiter;
    walk(state, frames, [&](int offset) {
        for (int c = 0; c < 2; ++c) {
            std::copy_n(setup.input(c).data() + offset, frames, setup.output(c).data() + offset);
        }
        limiter.processBuffers(setup.output(0).data() + offset, setup.output(1).data() + offset, frames);
    });
}

void followers(benchmark::State& state, Signal signal, int frames) {
    Setup setup(Law::hyperbolic, 0, false, signal);
    Follower pair[2];
    walk(state, frames, [&](int offset) {
        pair[0].processBuffer(setup.input(0).data() + offset, frames);
        pair[1].processBuffer(setup.input(1).data() + offset, frames);
    });
    benchmark::DoNotOptimize(pair[0].value);
    benchmark::DoNotOptimize(pair[1].value);
}

/// Both channels' chains, one after the other as the passes are.
void floorOf(benchmark::State& state, Law law, int frames) {
    Setup setup(law, 0, false, Signal::noise);
    const qor::Limiter1& element = setup.kernel->limiter.limiters[0];
    const LawSettings settings{element.thresholdCoefficient, element.attackCoefficient,
                               element.releaseCoefficient};
    for (int c = 0; c < 2; ++c) {
        for (float& sample : setup.input(c)) {
            const float magnitude = std::fabs(sample);
            sample = law == Law::hyperbolic ? 1.0F / (1.0F + settings.threshold * magnitude) : magnitude;
        }
    }
    const auto chain = law == Law::hyperbolic ? hyperbolicChain : thresholdChain;
    float gains[2] = {1.0F, 1.0F};
    walk(state, frames, [&](int offset) {
        gains[0] = chain(setup.input(0).data() + offset, frames, gains[0], settings);
        gains[1] = chain(setup.input(1).data() + offset, frames, gains[1], settings);
        benchmark::DoNotOptimize(gains);
    });
}

std::string joined(std::initializer_list<std::string_view> parts) {
    std::string text;
    for (const std::string_view part : parts) {
        text += part;
    }
    return text;
}

template <class Run>
void add(std::initializer_list<std::string_view> name, Run run) {
    benchmark::RegisterBenchmark(joined(name).c_str(), run);
}

constexpr Law kLaws[] = {Law::hyperbolic, Law::threshold};

// Each mode and the floor, on noise.
void registerModes(int frames) {
    const std::string size = std::to_string(frames);
    for (const Law law : kLaws) {
        add({"floor/", nameOf(law), "/", size},
            [=](benchmark::State& state) { floorOf(state, law, frames); });
        add({"passes/", nameOf(law), "/", size},
            [=](benchmark::State& state) { passes(state, law, frames); });
        for (const bool filtered : {false, true}) {
            for (int mode = 0; mode < 4; ++mode) {
                add({"mode ", std::to_string(mode), filtered ? " filtered/" : "/", nameOf(law), "/", size},
                    [=](benchmark::State& state) {
                        render(state, law, mode, filtered, Signal::noise, frames);
                    });
            }
        }
    }
}

// What the signal does to the time, in mode 0.
void registerSignals() {
    for (const Signal signal : {Signal::noise, Signal::silence, Signal::square, Signal::denormalTail}) {
        add({"followers/", bench::nameOf(signal)},
            [=](benchmark::State& state) { followers(state, signal, 512); });
        for (const Law law : kLaws) {
            for (const bool filtered : {false, true}) {
                add({bench::nameOf(signal), filtered ? " filtered/" : "/", nameOf(law)},
                    [=](benchmark::State& state) { render(state, law, 0, filtered, signal, 512); });
            }
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    platform::setLogSink(platform::discardingSink());
    registerModes(64);
    registerModes(512);
    registerSignals();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
