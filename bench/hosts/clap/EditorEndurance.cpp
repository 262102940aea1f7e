// Opens and closes the built plug-in's editor many times in one process, first without and then with an audio
// thread, and prints what the process holds every so often. Needs a display.
//   editor_endurance [OPENINGS]        default: 10000, half of them with audio
#include "ClapAudioThread.h"
#include "ClapEditorUnderTest.h"
#include "DisplayErrors.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

#include <malloc.h>
#include <unistd.h>

#include <X11/Xlib.h>

namespace {

using namespace test;

std::ptrdiff_t entriesOf(const char* folder) {
    return std::distance(std::filesystem::directory_iterator(folder), {});
}

/// KiB.
long residentSize() {
    long all = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> all >> resident;
    return resident * (::sysconf(_SC_PAGESIZE) / 1024);
}

void printState(FILE* out, int openings, const ClapEditorUnderTest& editor) {
    std::fprintf(out, "%9d %12zu %12ld %6td %8td %7zu %12zu %9d\n", openings, ::mallinfo2().uordblks / 1024,
                 residentSize(), entriesOf("/proc/self/fd"), entriesOf("/proc/self/task"),
                 editor.host.timers.size(), editor.host.descriptors.size(), displayErrors());
    std::fflush(out);
}

int endure(FILE* out, Display* display, Window parent, int openings, bool withAudio) {
    ClapEditorUnderTest editor(Offer::timersAndDescriptors);
    std::optional<ClapAudioThread> audio;
    if (withAudio && editor.plugin->activate()) {
        audio.emplace(*editor.plugin);
    }
    std::fprintf(
        out, "%s audio\n openings     heap KiB resident KiB  files  threads  timers  descriptors   errors\n",
        withAudio ? "with" : "without");
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < openings; ++i) {
        if (i % 1000 == 0 || i == 100) {
            printState(out, i, editor);
        }
        if (!editor.openIn(parent)) {
            std::fprintf(stderr, "editor_endurance: opening %d failed\n", i);
            return 1;
        }
        XSync(display, False); // the server has the window by now: the turns draw it
        editor.turn();
        editor.turn();
        editor.close();
    }
    const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
    printState(out, openings, editor);
    std::fprintf(out, "%.2f ms an opening\n", taken.count() / openings);
    if (audio) {
        std::fprintf(out, "%llu blocks of audio\n", static_cast<unsigned long long>(audio->blocks()));
        audio.reset();
        editor.plugin->deactivate();
    }
    return 0;
}

} // namespace

int main(int count, char** arguments) {
    const int openings = count > 1 ? std::atoi(arguments[1]) : 10000;
    Display* const display = XOpenDisplay(nullptr);
    if (openings < 2 || display == nullptr) {
        std::fprintf(stderr, "usage: editor_endurance [OPENINGS]     with a display, as from "
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
    const int failed = endure(out, display, parent, openings / 2, false) +
                       endure(out, display, parent, openings - openings / 2, true);
    std::fclose(out);
    XCloseDisplay(display);
    return failed;
}
