// What an open editor costs. One iteration is a minute of idle calls, 1500 ticks of the meter timer; the
// share of one processor is the time of an iteration over 60 seconds.
#include "hosts/shared/EditorHost.h"
#include "platform/view/HeadlessWindow.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <cstdlib>
#include <memory>

namespace {

using namespace qor;       // NOLINT(google-build-using-namespace): a program of its own
using namespace qor::host; // NOLINT(google-build-using-namespace)

constexpr int kTicksPerMinute = 1500;
constexpr double kTick = 0.04;

struct OpenEditor {
    OpenEditor() {
        setLogSink(discardingSink());
        UnitHostOptions unitOptions;
        unitOptions.serviced = false;
        unitOptions.clock = &clock;
        auto unit = UnitHost::create(unitOptions);
        if (!unit) {
            std::abort();
        }
        units = std::move(unit).value();
        model = std::make_unique<UnitHostModel>(*units);
        EditorHostOptions options;
        options.serviced = false;
        options.clock = &clock;
        auto made = EditorHost::create(*model, options);
        if (!made) {
            std::abort();
        }
        editor = std::move(made).value();
        window = std::make_unique<HeadlessWindow>(EditorHost::kPreferredSize, editor->runLoop(), clock);
        editor->open(window->window());
        window->settle();
    }
    ~OpenEditor() {
        editor.reset();
        window.reset();
    }
    void tick() {
        clock.advance(kTick);
        editor->pump();
        window->settle();
    }

    ManualClock clock;
    std::unique_ptr<UnitHost> units;
    std::unique_ptr<UnitHostModel> model;
    std::unique_ptr<EditorHost> editor;
    std::unique_ptr<HeadlessWindow> window;
};

void showShare(benchmark::State& state) {
    // Minutes per second of work, inverted: the part of one processor that an editor takes.
    state.counters["share"] =
        benchmark::Counter(60.0, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void minuteOfSilence(benchmark::State& state) {
    OpenEditor open;
    for (auto _ : state) {
        for (int tick = 0; tick < kTicksPerMinute; ++tick) {
            open.tick();
        }
    }
    showShare(state);
}

void minuteOfMusic(benchmark::State& state) {
    OpenEditor open;
    QORDynamicsDisplayView& needles = *open.editor->controller()->displayView;
    open.units->unit().setShouldBypassEffect(true); // the timer leaves the needles to the loop below
    float level = 0.0F;
    for (auto _ : state) {
        for (int tick = 0; tick < kTicksPerMinute; ++tick) {
            level = std::fmod(level + 0.013F, 1.0F);
            needles.setCompressionValues(level, 1.0F - level);
            open.tick();
        }
    }
    showShare(state);
}

} // namespace

BENCHMARK(minuteOfSilence)->Unit(benchmark::kMillisecond);
BENCHMARK(minuteOfMusic)->Unit(benchmark::kMillisecond);
