// What an open editor costs in a window of a display. One iteration is a minute of a host's idle calls, fifty
// a second; the time is the main thread's CPU time within them. The display's own share stands beside it.
#include "hosts/shared/EditorWindow.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <sys/socket.h>
#include <unistd.h>

namespace {

using namespace qor;       // NOLINT(google-build-using-namespace): a program of its own
using namespace qor::host; // NOLINT(google-build-using-namespace)

constexpr double kMinute = 60.0; // seconds
constexpr double kIdle = 0.02;   // seconds from one idle call to the next
constexpr double kSampleRate = 48000.0;
constexpr std::uint32_t kFrames = 960; // between two idle calls

double threadTime() {
    timespec now{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

/// CPU seconds of the process at the other end of a connection; 0 where that cannot be told.
double peerTime(int descriptor) {
    ucred peer{};
    socklen_t size = sizeof peer;
    if (::getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0) {
        return 0.0;
    }
    double ticks = 0.0;
    if (std::FILE* file = std::fopen(("/proc/" + std::to_string(peer.pid) + "/stat").c_str(), "r")) {
        unsigned long user = 0;
        unsigned long system = 0;
        if (std::fscanf(file, "%*d (%*[^)]) %*c %*d %*d %*d %*d %*d %*u %*u %*u %*u %*u %lu %lu", &user,
                        &system) == 2) {
            ticks = static_cast<double>(user + system);
        }
        std::fclose(file);
    }
    return ticks / static_cast<double>(::sysconf(_SC_CLK_TCK));
}

template <class Value>
Value need(Result<Value> made, benchmark::State& state) {
    if (!made) {
        state.SkipWithError(made.error().localizedDescription().c_str());
        return {};
    }
    return std::move(made).value();
}

struct OpenEditor {
    OpenEditor(benchmark::State& state, double scale) {
        setLogSink(discardingSink());
        UnitHostOptions unitOptions;
        unitOptions.serviced = false;
        unitOptions.clock = &clock;
        units = need(UnitHost::create(unitOptions), state);
        EditorHostOptions options;
        options.serviced = false;
        options.clock = &clock;
        model = std::make_unique<UnitHostModel>(*units);
        editor = need(EditorHost::create(*model, options), state);
        platform::NativeWindowOptions windowOptions;
        windowOptions.size = EditorHost::kPreferredSize;
        windowOptions.scale = scale;
        window = editor ? need(EditorWindow::open(*editor, windowOptions), state) : nullptr;
        if (!window || !units->activate(kSampleRate)) {
            return;
        }
        std::minstd_rand random(1);
        std::uniform_real_distribution<float> level(-1.0F, 1.0F);
        for (auto& side : noise) {
            for (float& sample : side) {
                sample = level(random);
            }
        }
        window->native().show();
        for (int i = 0; i < 100; ++i) {
            window->pump();
            ::usleep(2000); // the display's side of the first picture
        }
    }
    /// What the audio thread does meanwhile: noise whose level swells and falls, twice a second.
    void play(int call, bool music) {
        const float level = music ? 0.5F + 0.5F * std::sin(static_cast<float>(call) * 0.25F) : 0.0F;
        for (std::size_t side = 0; side < noise.size(); ++side) {
            for (std::size_t i = 0; i < kFrames; ++i) {
                in[side][i] = noise[side][i] * level;
            }
        }
        const float* const input[2] = {in[0].data(), in[1].data()};
        float* const output[2] = {out[0].data(), out[1].data()};
        units->render(input, output, kFrames, SpanEvents({}));
    }

    ManualClock clock;
    std::unique_ptr<UnitHost> units;
    std::unique_ptr<UnitHostModel> model;
    std::unique_ptr<EditorHost> editor;
    std::unique_ptr<EditorWindow> window;
    std::array<std::array<float, kFrames>, 2> noise{};
    std::array<std::array<float, kFrames>, 2> in{};
    std::array<std::array<float, kFrames>, 2> out{};
};

void minute(benchmark::State& state, bool music) {
    OpenEditor open(state, static_cast<double>(state.range(0)));
    double total = 0.0;
    double display = 0.0;
    std::uint64_t drawn = 0;
    for (auto _ : state) {
        if (!open.window) {
            return;
        }
        const double before = peerTime(open.window->native().fileDescriptor());
        const auto drawnBefore = open.editor->controller()->displayView->drawCount();
        double spent = 0.0;
        for (int call = 0; call < static_cast<int>(std::lround(kMinute / kIdle)); ++call) {
            open.play(call, music);
            open.clock.advance(kIdle);
            const double start = threadTime();
            open.window->pump();
            spent += threadTime() - start;
        }
        state.SetIterationTime(spent);
        total += spent;
        drawn += open.editor->controller()->displayView->drawCount() - drawnBefore;
        display += peerTime(open.window->native().fileDescriptor()) - before;
    }
    const auto minutes = static_cast<double>(state.iterations());
    state.counters["share_%"] = total / minutes / kMinute * 100.0;
    state.counters["display_%"] = display / minutes / kMinute * 100.0;
    state.counters["pictures"] = static_cast<double>(drawn) / minutes;
}

void minuteOfSilence(benchmark::State& state) {
    minute(state, false);
}

void minuteOfMusic(benchmark::State& state) {
    minute(state, true);
}

} // namespace

BENCHMARK(minuteOfSilence)->Arg(1)->Arg(2)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(minuteOfMusic)->Arg(1)->Arg(2)->UseManualTime()->Unit(benchmark::kMillisecond);
