// The kernel reports each system call of an armed thread as a signal before it carries it out.
#include "hosts/realtime/TripwireState.h"

#include <csignal>
#include <sys/prctl.h>
#include <ucontext.h>

namespace test {

namespace {

// As the kernel's interface numbers them; older headers lack the names.
constexpr int kSetSystemCallUserDispatch = 59;
constexpr unsigned long kDispatchOn = 1;
constexpr long kSystemCallInstructionBytes = 2;

/// Counts the call, disarms this wire until the next scope and lets the thread make the call again.
void onSystemCall(int /*signal*/, siginfo_t* info, void* context) {
    wireState.systemCallSelector = 0;
    Trips& trips = wireState.trips;
    ++trips.systemCalls;
    if (trips.firstSystemCall < 0) {
        trips.firstSystemCall = info->si_syscall;
    }
    if (trips.firstCaller == nullptr) {
        trips.firstCaller = info->si_call_addr;
    }
    static_cast<ucontext_t*>(context)->uc_mcontext.gregs[REG_RIP] -= kSystemCallInstructionBytes;
}

} // namespace

bool watchSystemCalls() noexcept {
    struct sigaction action = {};
    action.sa_sigaction = onSystemCall;
    action.sa_flags = SA_SIGINFO;
    if (sigaction(SIGSYS, &action, nullptr) != 0) {
        return false;
    }
    wireState.systemCallsWatched =
        prctl(kSetSystemCallUserDispatch, kDispatchOn, 0UL, 0UL, &wireState.systemCallSelector) == 0;
    return wireState.systemCallsWatched;
}

} // namespace test
