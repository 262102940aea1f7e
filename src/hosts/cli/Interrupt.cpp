#include "hosts/cli/Interrupt.h"

#include <atomic>
#include <csignal>
#include <initializer_list>

namespace qor::cli {

namespace {

std::atomic<bool> flag{false}; // the handler may run on any thread
static_assert(std::atomic<bool>::is_always_lock_free);

} // namespace

void catchInterrupts() noexcept {
    struct sigaction action {};
    action.sa_handler = [](int) { flag = true; };
    // A second one ends the process at once. Waiting for a pipe must end, so calls are not restarted.
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        sigaction(signal, &action, nullptr);
    }
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
}

bool interrupted() noexcept {
    return flag;
}

} // namespace qor::cli
