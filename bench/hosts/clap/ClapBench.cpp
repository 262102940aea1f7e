// What the CLAP plug-in costs beside the bare UnitHost: for sound, for an instance, and for loading.
#include "../NoiseStage.h"
#include "ClapTestHost.h"
#include "hosts/shared/UnitHost.h"

#include <benchmark/benchmark.h>

#include <dlfcn.h>

namespace {

using namespace test;

constexpr double kRate = 48000.0;

void bareUnitHost(benchmark::State& state) {
    bench::NoiseStage stage;
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
    bench::NoiseStage stage;
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
