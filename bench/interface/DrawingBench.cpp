// How long the editor's picture takes, and that drawing it keeps no memory.
#include "interface/PanelScene.h"
#include "platform/draw/BitmapContext.h"
#include "platform/draw/TextBlock.h"

#include <benchmark/benchmark.h>
#include <malloc.h>

using namespace qor;

namespace {

constexpr CGRect kBounds = CGRectMake(0.0, 0.0, 512.0, 340.0);

// A picture of the canvas at the scale that the benchmark's argument gives.
std::unique_ptr<BitmapContext> canvas(const benchmark::State& state) {
    auto made = BitmapContext::make(kBounds.size, static_cast<double>(state.range(0)));
    return std::move(made).value();
}

void report(benchmark::State& state, std::size_t heapBefore, std::uint64_t layoutsBefore) {
    state.counters["heap_growth_bytes"] =
        static_cast<double>(mallinfo2().uordblks) - static_cast<double>(heapBefore);
    state.counters["new_layouts"] = static_cast<double>(layoutsMade() - layoutsBefore);
}

// Plate, panel and needles on a cleared picture: what a knob's move costs at most.
void fullPanel(benchmark::State& state) {
    const auto context = canvas(state);
    const GraphicsScope scope(*context);
    PanelScene scene;
    int step = 0;
    const auto draw = [&] {
        scene.panel.valueAttack = step % 101 / 100.0;
        scene.setMeters(step % 97 / 97.0, step % 89 / 89.0, step % 83 / 83.0, step % 79 / 79.0);
        ++step;
        context->clear();
        scene.draw(kBounds);
    };
    for (int warm = 0; warm < 202; ++warm) { // every value text has been seen
        draw();
    }
    const std::size_t heap = mallinfo2().uordblks;
    const std::uint64_t layouts = layoutsMade();
    for (auto _ : state) {
        draw();
    }
    report(state, heap, layouts);
}

// The needles alone on a cleared picture: what each tick of the meters costs.
void overlay(benchmark::State& state) {
    const auto context = canvas(state);
    const GraphicsScope scope(*context);
    QORDynamicsDisplayViewBase needles;
    int step = 0;
    const auto draw = [&] {
        needles.value1 = step % 97 / 97.0;
        needles.value2 = step % 89 / 89.0;
        needles.value3 = step % 83 / 83.0;
        needles.value4 = step % 79 / 79.0;
        ++step;
        context->clear();
        needles.drawMain(kBounds);
    };
    draw();
    const std::size_t heap = mallinfo2().uordblks;
    const std::uint64_t layouts = layoutsMade();
    for (auto _ : state) {
        draw();
    }
    report(state, heap, layouts);
}

// The first picture of a process: fonts opened, texts laid out.
void firstPanel(benchmark::State& state) {
    for (auto _ : state) {
        const auto context = canvas(state);
        const GraphicsScope scope(*context);
        PanelScene scene;
        scene.draw(kBounds);
    }
}

BENCHMARK(firstPanel)->Arg(2)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(fullPanel)->Arg(1)->Arg(2)->Arg(3)->Unit(benchmark::kMillisecond);
BENCHMARK(overlay)->Arg(1)->Arg(2)->Arg(3)->Unit(benchmark::kMillisecond);
BENCHMARK(fullPanel)->Name("fullPanelTenThousand")->Arg(1)->Iterations(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(overlay)->Name("overlayTenThousand")->Arg(2)->Iterations(10000)->Unit(benchmark::kMillisecond);

} // namespace
