#include "hosts/standalone/StopSignal.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace qor::app {

namespace {

constexpr std::array<int, 3> kSignals{SIGTERM, SIGINT, SIGHUP};

volatile std::sig_atomic_t seen = 0;
volatile std::sig_atomic_t wakeUp = -1; // written to by the handler

void handle(int /*signal*/) {
    seen = 1;
    const char byte = 0;
    static_cast<void>(!::write(static_cast<int>(wakeUp), &byte, 1));
}

} // namespace

StopSignal::Ends StopSignal::openPipe() noexcept {
    std::array<int, 2> ends{-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        return {}; // the program still sees the signal at its next turn
    }
    return {.reader = ends[0], .writer = ends[1]};
}

StopSignal::StopSignal() : StopSignal(openPipe()) {}

StopSignal::StopSignal(const Ends& ends) : reader_(ends.reader), writer_(ends.writer) {
    seen = 0;
    wakeUp = ends.writer;
    struct sigaction action {};
    action.sa_handler = handle;
    action.sa_flags = static_cast<int>(SA_RESETHAND) | SA_RESTART;
    for (const int signal : kSignals) {
        ::sigaction(signal, &action, nullptr);
    }
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
}

StopSignal::~StopSignal() {
    for (const int signal : kSignals) {
        static_cast<void>(std::signal(signal, SIG_DFL));
    }
    wakeUp = -1;
}

bool StopSignal::came() const noexcept {
    return seen != 0;
}

} // namespace qor::app
