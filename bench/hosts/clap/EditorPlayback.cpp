// How long the render calls take while the editor stays closed, and while it is opened and closed without a
// pause: in turns of two seconds within one run, so that the rest of the machine disturbs both alike.
//   editor_playback [TURNS]        default: 10 of each; needs a display
#include "ClapEditorUnderTest.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <thread>
#include <vector>

#include <pthread.h>
#include <unistd.h>

#include <X11/Xlib.h>

namespace {

using namespace test;

constexpr std::uint32_t kFrames = 64;
constexpr double kRate = 48000.0;
constexpr long kPeriod = static_cast<long>(kFrames * 1e9 / kRate); // ns
constexpr std::chrono::seconds kTurn{2};

enum Phase : int { closed, opening, between };

std::int64_t nanoseconds(clockid_t clock) {
    timespec now{};
    ::clock_gettime(clock, &now);
    return now.tv_sec * 1000000000LL + now.tv_nsec;
}

/// Renders a block in each period, like a sound card's thread, and writes down what each call took.
class MeasuredThread {
public:
    struct Calls {
        std::vector<std::int64_t> wall; // ns
        std::vector<std::int64_t> cpu;
    };

    MeasuredThread(ClapPluginUnderTest& plugin, std::size_t calls) : plugin_(plugin) {
        for (Calls& one : calls_) {
            one.wall.reserve(calls);
            one.cpu.reserve(calls);
        }
        thread_ = std::thread([this] { run(); });
    }
    ~MeasuredThread() { end(); }
    MeasuredThread(const MeasuredThread&) = delete;
    MeasuredThread& operator=(const MeasuredThread&) = delete;

    void enter(Phase phase) { phase_ = phase; }
    void end() {
        ending_ = true;
        if (thread_.joinable()) {
            thread_.join();
        }
    }
    /// After `end`.
    Calls& calls(Phase phase) { return calls_[static_cast<std::size_t>(phase)]; }
    bool isRealTime() const { return realTime_; }

private:
    void run() {
        const sched_param urgent{.sched_priority = 60};
        realTime_ = ::pthread_setschedparam(::pthread_self(), SCHED_FIFO, &urgent) == 0;
        std::uint32_t state = 1;
        float samples[2][kFrames];
        timespec next{};
        ::clock_gettime(CLOCK_MONOTONIC, &next);
        while (!ending_) {
            for (std::uint32_t i = 0; i < kFrames; ++i) {
                state = state * 1664525U + 1013904223U;
                samples[0][i] = samples[1][i] = static_cast<float>(state >> 8U) / 8388608.0F - 1.0F;
            }
            float* const places[2] = {samples[0], samples[1]};
            const int phase = phase_;
            const std::int64_t cpu = nanoseconds(CLOCK_THREAD_CPUTIME_ID);
            const std::int64_t wall = nanoseconds(CLOCK_MONOTONIC);
            plugin_.process(places, places, kFrames);
            const std::int64_t wallTaken = nanoseconds(CLOCK_MONOTONIC) - wall;
            const std::int64_t cpuTaken = nanoseconds(CLOCK_THREAD_CPUTIME_ID) - cpu;
            if (phase != between && phase == phase_ &&
                calls_[phase].wall.size() < calls_[phase].wall.capacity()) {
                calls_[phase].wall.push_back(wallTaken);
                calls_[phase].cpu.push_back(cpuTaken);
            }
            next.tv_nsec += kPeriod;
            if (next.tv_nsec >= 1000000000L) {
                next.tv_nsec -= 1000000000L;
                ++next.tv_sec;
            }
            ::clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &next, nullptr);
        }
    }

    ClapPluginUnderTest& plugin_;
    std::atomic<int> phase_{between};
    std::atomic<bool> ending_{false};
    std::atomic<bool> realTime_{false};
    std::array<Calls, 2> calls_;
    std::thread thread_;
};

void print(FILE* out, const char* name, std::vector<std::int64_t>& taken) {
    std::sort(taken.begin(), taken.end());
    const auto at = [&](double share) {
        const auto index = static_cast<std::size_t>(share * static_cast<double>(taken.size() - 1));
        return static_cast<double>(taken[index]) / 1000.0;
    };
    const auto late =
        std::count_if(taken.begin(), taken.end(), [](std::int64_t one) { return one > kPeriod; });
    std::fprintf(out, "%-22s %8zu %8.2f %8.2f %8.2f %8.2f %9.2f %6td\n", name, taken.size(), at(0.5),
                 at(0.99), at(0.999), at(0.9999), at(1.0), late);
}

} // namespace

int main(int count, char** arguments) {
    const int turns = count > 1 ? std::atoi(arguments[1]) : 10;
    Display* const display = XOpenDisplay(nullptr);
    if (turns < 1 || display == nullptr) {
        std::fprintf(stderr, "usage: editor_playback [TURNS]     with a display, as from "
                             "tests/support/with-xvfb.sh\n");
        return 2;
    }
    // The plug-in's log goes elsewhere.
    FILE* const out = ::fdopen(::dup(STDOUT_FILENO), "w");
    if (out == nullptr || std::freopen("/dev/null", "w", stdout) == nullptr) {
        return 2;
    }
    const Window parent = XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 512, 392, 0, 0, 0);
    XMapRaised(display, parent);
    XSync(display, False);

    ClapEditorUnderTest editor(Offer::timersAndDescriptors);
    if (!editor.openIn(parent) || !editor.plugin->activate(kRate)) {
        std::fprintf(stderr, "editor_playback: the plug-in does not come up\n");
        return 1;
    }
    editor.close(); // the first opening reads fonts and layout
    int openings = 0;
    MeasuredThread audio(*editor.plugin, static_cast<std::size_t>(turns) * 2 * 1000);
    for (int turn = 0; turn < turns; ++turn) {
        audio.enter(closed);
        const auto closedUntil = std::chrono::steady_clock::now() + kTurn;
        while (std::chrono::steady_clock::now() < closedUntil) {
            editor.turn();
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        audio.enter(opening);
        const auto openUntil = std::chrono::steady_clock::now() + kTurn;
        for (; std::chrono::steady_clock::now() < openUntil; ++openings) {
            editor.openIn(parent);
            XSync(display, False); // the server has the window by now: the turns draw it
            editor.turn();
            editor.turn();
            editor.close();
        }
        audio.enter(between);
    }
    audio.end();
    editor.plugin->deactivate();
    std::fprintf(out, "%d openings; the render thread %s; blocks of %u frames, %.2f ms each\n", openings,
                 audio.isRealTime() ? "has real-time priority" : "is an ordinary one", kFrames,
                 kPeriod / 1e6);
    std::fprintf(
        out, "us a call                 calls     50 %%     99 %%   99.9 %%  99.99 %%     worst   late\n");
    print(out, "closed, by the clock", audio.calls(closed).wall);
    print(out, "opening, by the clock", audio.calls(opening).wall);
    print(out, "closed, CPU", audio.calls(closed).cpu);
    print(out, "opening, CPU", audio.calls(opening).cpu);
    std::fclose(out);
    XCloseDisplay(display);
    return 0;
}
