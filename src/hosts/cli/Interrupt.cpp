#include "hosts/cli/Interrupt.h"

#include <csignal>
#include <initializer_list>

namespace qor::cli {

namespace {

volatile std::sig_atomic_t flag = 0; // set by the handler, on the thread that reads it

} // namespace

void catchInterrupts() noexcept {
    struct sigaction action {};
    action.sa_handler = [](int) { flag = 1; };
    // A second one ends the process at once.
    action.sa_flags = static_cast<int>(SA_RESETHAND) | SA_RESTART;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        sigaction(signal, &action, nullptr);
    }
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
}

bool interrupted() noexcept {
    return flag != 0;
}

} // namespace qor::cli
