// What the CLAP plug-in costs beside the bare UnitHost: for sound, for an instance, and for loading.
#include "ClapTestHost.h"
#include "hosts/shared/UnitHost.h"

#include <benchmark/benchmark.h>

#include <array>
#include <dlfcn.h>
#include <random>
#include <vector>

namespace {

using namespace test;

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
        for (auto& side : out_) {
            side.resize(kSignalFrames);
        }
    }

    /// Runs `block` over the signal, block by block and again from its start.
    template <class Block>
    void walk(benchmark::State& state, const Block& block) {
        const auto frames = static_cast<std::uint32_t>(state.range(0));
        std::uint32_t offset = 0;
        for (auto _ : state) {
            const float* const input[2] = {in_[0].data() + offset, in_[1].data() + offset};
            float* const output[2] = {out_[0].data(), out_[1].data()};
            block(input, output, frames);
            benchmark::ClobberMemory();
            offset = (offset + frames) % kSignalFrames;
        }
        state.counters["per_frame"] = benchmark::Counter(
            frames, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    }

private:
    std::array<std::vector<float>, 2> in_;
    std::array<std::vector<float>, 2> out_;
};

void bareUnitHost(benchmark::State& state) {
    Stage stage;
    const auto host = qor::host::UnitHost::create().value();
    if (!host->activate(kRate)) {
        state.SkipWithError("the host did not come up");
        return;
    }
    stage.walk(state, [&](const float* const input[2], float* const output[2], std::uint32_t frames) {
        host->render(input, output, frames, qor::host::SpanEvents({}));
    });
}

/// With so many parameter events in each block, spread over it.
void plugin(benchmark::State& state, std::uint32_t eventsPerBlock) {
    Stage stage;
    ClapTestHost host;
    ClapPluginUnderTest plugin(host);
    plugin.activate(kRate);
    const auto frames = static_cast<std::uint32_t>(state.range(0));
    ClapEventList events;
    for (std::uint32_t i = 0; i < eventsPerBlock; ++i) {
        events.value(i * frames / eventsPerBlock, 5, i % 2 == 0 ? 1.0 : 0.9);
    }
    stage.walk(state, [&](const float* const input[2], float* const output[2], std::uint32_t count) {
        plugin.process(input, output, count, events.table());
    });
}

void instance(benchmark::State& state) {
    ClapTestHost host;
    const ClapPluginUnderTest keepsTheThreads(host);
    for (auto _ : state) {
        ClapPluginUnderTest plugin(host);
        plugin.activate(kRate);
    }
}

void firstInstance(benchmark::State& state) {
    ClapTestHost host;
    for (auto _ : state) {
        ClapPluginUnderTest plugin(host);
        plugin.activate(kRate);
    }
}

/// Opens the object anew each time; the libraries that it needs are open already.
void loading(benchmark::State& state) {
    for (auto _ : state) {
        void* const object = dlopen(QOR_CLAP_OBJECT, RTLD_NOW | RTLD_LOCAL);
        benchmark::DoNotOptimize(dlsym(object, "clap_entry"));
        dlclose(object);
    }
}

BENCHMARK(loading)->Unit(benchmark::kMicrosecond); // first: later ones keep the object open
BENCHMARK(bareUnitHost)->Arg(32)->Arg(64)->Arg(512);
BENCHMARK_CAPTURE(plugin, still, 0)->Arg(32)->Arg(64)->Arg(512);
BENCHMARK_CAPTURE(plugin, automated, 4)->Arg(64)->Arg(512);
BENCHMARK(instance)->Unit(benchmark::kMicrosecond);
BENCHMARK(firstInstance)->Unit(benchmark::kMicrosecond);

} // namespace
