// What the built LV2 object costs beside the bare UnitHost: for sound, for an instance, and for loading.
#include "../NoiseStage.h"
#include "hosts/lv2/Lv2Ports.h"
#include "hosts/shared/UnitHost.h"

#include <benchmark/benchmark.h>
#include <lv2/core/lv2.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <malloc.h>
#include <memory>
#include <vector>

namespace {

constexpr double kRate = 48000.0;

const LV2_Descriptor* loaded() {
    static const LV2_Descriptor* const descriptor = [] {
        void* const object = dlopen(QOR_LV2_OBJECT, RTLD_NOW | RTLD_LOCAL);
        if (object == nullptr) {
            std::fprintf(stderr, "%s\n", dlerror()); // NOLINT(concurrency-mt-unsafe): one thread so far
            std::exit(1);                            // NOLINT(concurrency-mt-unsafe): one thread so far
        }
        return reinterpret_cast<LV2_Descriptor_Function>(dlsym(object, "lv2_descriptor"))(0);
    }();
    return descriptor;
}

/// An active instance with its ports at their defaults.
class Instance {
public:
    Instance() : plugin_(loaded()), handle_(plugin_->instantiate(plugin_, kRate, "", nullptr)) {
        for (std::uint32_t port = 0; port < ports_.size(); ++port) {
            plugin_->connect_port(handle_, port, &ports_[port]);
        }
        for (std::size_t i = 0; i < qor::kParameterCount; ++i) {
            ports_[qor::lv2::kFirstParameter + i] = qor::kParameterTable[i].defaultValue;
        }
        ports_[qor::lv2::kEnabled] = 1.0F;
        plugin_->activate(handle_);
    }
    ~Instance() {
        plugin_->deactivate(handle_);
        plugin_->cleanup(handle_);
    }
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    void run(const float* const input[2], float* const output[2], std::uint32_t frames) {
        for (std::uint32_t c = 0; c < 2; ++c) {
            plugin_->connect_port(handle_, qor::lv2::kInputLeft + c, const_cast<float*>(input[c]));
            plugin_->connect_port(handle_, qor::lv2::kOutputLeft + c, output[c]);
        }
        plugin_->run(handle_, frames);
    }
    void set(std::uint32_t parameter, float value) { ports_[qor::lv2::kFirstParameter + parameter] = value; }

private:
    const LV2_Descriptor* plugin_;
    LV2_Handle handle_;
    std::array<float, qor::lv2::kPortCount> ports_{};
};

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

/// With one port moved before each block, or none.
void plugin(benchmark::State& state, bool isAutomated) {
    bench::NoiseStage stage;
    Instance instance;
    bool high = false;
    stage.walk(state, [&](const float* const input[2], float* const output[2], std::uint32_t frames) {
        if (isAutomated) {
            instance.set(qor::kLimiterMix, high ? 1.0F : 0.9F);
            high = !high;
        }
        instance.run(input, output, frames);
    });
}

void instance(benchmark::State& state) {
    const Instance keepsTheThreads;
    for (auto _ : state) {
        const Instance made;
    }
}

void firstInstance(benchmark::State& state) {
    for (auto _ : state) {
        const Instance made;
    }
}

std::size_t bytesInUse() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

/// Each of a hundred active instances that have rendered.
void memory(benchmark::State& state) {
    constexpr std::size_t kInstances = 100;
    const Instance keepsTheThreads;
    double bytes = 0.0;
    for (auto _ : state) {
        const std::size_t before = bytesInUse();
        std::vector<std::unique_ptr<Instance>> instances;
        std::array<std::vector<float>, 2> sound{std::vector<float>(512), std::vector<float>(512)};
        const float* const input[2] = {sound[0].data(), sound[1].data()};
        float* const output[2] = {sound[0].data(), sound[1].data()};
        for (std::size_t i = 0; i < kInstances; ++i) {
            instances.push_back(std::make_unique<Instance>());
            instances.back()->run(input, output, 512);
        }
        bytes = static_cast<double>(bytesInUse() - before) / static_cast<double>(kInstances);
    }
    state.counters["bytes_each"] = bytes;
}

/// Opens the object anew each time; the libraries that it needs are open already.
void loading(benchmark::State& state) {
    for (auto _ : state) {
        void* const object = dlopen(QOR_LV2_OBJECT, RTLD_NOW | RTLD_LOCAL);
        benchmark::DoNotOptimize(dlsym(object, "lv2_descriptor"));
        dlclose(object);
    }
}

[[maybe_unused]] const bool quiet = (qor::setLogSink(qor::discardingSink()), true);

BENCHMARK(loading)->Unit(benchmark::kMicrosecond); // first: later ones keep the object open
BENCHMARK(bareUnitHost)->Arg(32)->Arg(64)->Arg(512);
BENCHMARK_CAPTURE(plugin, still, false)->Arg(32)->Arg(64)->Arg(512);
BENCHMARK_CAPTURE(plugin, automated, true)->Arg(32)->Arg(64)->Arg(512);
BENCHMARK(instance)->Unit(benchmark::kMicrosecond);
BENCHMARK(firstInstance)->Unit(benchmark::kMicrosecond);
BENCHMARK(memory)->Unit(benchmark::kMillisecond);

} // namespace
