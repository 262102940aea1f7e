// What the whole unit and its host cost beside the bare kernel, and what an instance costs to have.
#include "hosts/shared/UnitHost.h"
#include "kernel/ParameterTable.h"
#include "unit/UnitComponent.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstring>
#include <malloc.h>
#include <memory>
#include <random>
#include <vector>

namespace {

using namespace qor;
using qor::host::SpanEvents;
using qor::host::UnitHost;

constexpr std::uint32_t kSignalFrames = 1 << 14;
constexpr double kRate = 48000.0;

/// Noise up to +3 dB, that the limiter works on, and room for the output.
class Stage {
public:
    Stage() {
        std::minstd_rand random(1);
        std::uniform_real_distribution<float> level(-1.41F, 1.41F);
        for (auto& side : in_) {
            side.resize(kSignalFrames);
            for (float& sample : side) {
                sample = level(random);
            }
        }
        for (int c = 0; c < 2; ++c) {
            out_[c].resize(kSignalFrames);
            inList_.list.mBuffers[c] = {1, kSignalFrames * 4, in_[c].data()};
            outList_.list.mBuffers[c] = {1, kSignalFrames * 4, out_[c].data()};
        }
    }

    const float* input(int channel) const { return in_[channel].data() + offset_; }
    float* output(int channel) { return out_[channel].data(); }
    AudioBufferList* inputList() { return &inList_.list; }
    AudioBufferList* outputList() { return &outList_.list; }

    /// Runs `block` over the signal, block by block and again from its start.
    template <class Block>
    void walk(benchmark::State& state, const Block& block) {
        const auto frames = static_cast<std::uint32_t>(state.range(0));
        for (auto _ : state) {
            block(frames, offset_);
            benchmark::ClobberMemory();
            offset_ = (offset_ + frames) % kSignalFrames;
        }
        state.counters["per_frame"] = benchmark::Counter(
            frames, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    }

private:
    std::array<std::vector<float>, 2> in_;
    std::array<std::vector<float>, 2> out_;
    AudioBufferListStorage<2> inList_;
    AudioBufferListStorage<2> outList_;
    std::uint32_t offset_ = 0;
};

void kernelAlone(benchmark::State& state) {
    Stage stage;
    const auto kernel = std::make_unique<QOR_Limiter_Extension_DSPKernel>();
    kernel->init(2, kRate);
    for (const ParameterRow& row : kParameterTable) {
        kernel->setParameter(row.address, row.defaultValue);
    }
    kernel->setBuffers(stage.inputList(), stage.outputList());
    stage.walk(state, [&](std::uint32_t frames, std::uint32_t offset) { kernel->process(frames, offset); });
}

/// The unit's render block with a host that copies its input on every pull.
void unitAlone(benchmark::State& state, float finalLimiter) {
    Stage stage;
    const auto unit = QOR_Limiter_Extension_AudioUnit::init(kQORLimiterComponent, {}).value();
    benchmark::DoNotOptimize((*unit->outputBusses())[0].setFormat(AVAudioFormat(kRate, 2)).ok());
    if (!unit->allocateRenderResources()) {
        state.SkipWithError("the unit did not allocate");
        return;
    }
    unit->kernelAdapter->setParameterEx(static_cast<std::int32_t>(kLimiterInputFilterLP), 1.0F);
    unit->setParameter(static_cast<std::int32_t>(kLimiterFinalLimiter), finalLimiter);
    const AUInternalRenderBlock block = unit->internalRenderBlock();
    RunLoop::main().pump();
    const AURenderPullInputBlock pull = [&stage](AudioUnitRenderActionFlags*, const AudioTimeStamp*,
                                                 std::uint32_t frames, long, AudioBufferList* list) {
        for (int c = 0; c < 2; ++c) {
            std::memcpy(list->mBuffers[c].mData, stage.input(c), frames * sizeof(float));
        }
        return noErr;
    };
    AudioTimeStamp time;
    AudioUnitRenderActionFlags flags = 0;
    stage.walk(state, [&](std::uint32_t frames, std::uint32_t) {
        block(&flags, &time, frames, 0, stage.outputList(), nullptr, pull);
        time.mSampleTime += frames;
    });
}

std::unique_ptr<UnitHost> makeActiveHost() {
    auto host = UnitHost::create({.serviced = false}).value();
    return host->activate(kRate) ? std::move(host) : nullptr;
}

void unitInItsHost(benchmark::State& state, float finalLimiter) {
    Stage stage;
    const auto host = makeActiveHost();
    if (host == nullptr || !host->setParameter(kLimiterFinalLimiter, finalLimiter)) {
        state.SkipWithError("the host did not come up");
        return;
    }
    float* const output[2] = {stage.output(0), stage.output(1)};
    stage.walk(state, [&](std::uint32_t frames, std::uint32_t) {
        const float* const input[2] = {stage.input(0), stage.input(1)};
        host->render(input, output, frames, SpanEvents({}));
    });
}

void construction(benchmark::State& state) {
    for (auto _ : state) {
        auto host = UnitHost::create({.serviced = false}).value();
        benchmark::DoNotOptimize(host);
        state.PauseTiming();
        host = nullptr;
        state.ResumeTiming();
    }
}

void allocation(benchmark::State& state) {
    const auto host = UnitHost::create({.serviced = false}).value();
    for (auto _ : state) {
        benchmark::DoNotOptimize(host->activate(kRate).ok());
        state.PauseTiming();
        host->deactivate();
        host->pump();
        state.ResumeTiming();
    }
}

std::size_t bytesInUse() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

/// Instances that stand at once, each with one block rendered.
void instancesAtOnce(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    double bytes = 0.0;
    for (auto _ : state) {
        const std::size_t before = bytesInUse();
        std::vector<std::unique_ptr<UnitHost>> hosts;
        for (std::size_t i = 0; i < count; ++i) {
            hosts.push_back(makeActiveHost());
            hosts.back()->pump();
        }
        bytes = static_cast<double>(bytesInUse() - before) / static_cast<double>(count);
        state.PauseTiming();
        hosts.clear();
        state.ResumeTiming();
    }
    state.counters["bytes_each"] = bytes;
    state.counters["time_each"] =
        benchmark::Counter(static_cast<double>(count),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

[[maybe_unused]] const bool quiet = (setLogSink(discardingSink()), true);

BENCHMARK(kernelAlone)->Arg(64)->Arg(512);
BENCHMARK_CAPTURE(unitAlone, finalOff, 0.0F)->Arg(64)->Arg(512);
BENCHMARK_CAPTURE(unitAlone, finalOn, 1.0F)->Arg(64)->Arg(512);
BENCHMARK_CAPTURE(unitInItsHost, finalOff, 0.0F)->Arg(64)->Arg(512);
BENCHMARK_CAPTURE(unitInItsHost, finalOn, 1.0F)->Arg(64)->Arg(512);
BENCHMARK(construction)->Unit(benchmark::kMicrosecond);
BENCHMARK(allocation)->Unit(benchmark::kMicrosecond);
BENCHMARK(instancesAtOnce)->Arg(1)->Arg(1000)->Unit(benchmark::kMillisecond);

} // namespace
