#include "hosts/realtime/TripwireState.h"

namespace test {

thread_local constinit WireState wireState;

std::string Trips::text() const {
    return std::to_string(allocations) + " allocator calls, " + std::to_string(locks) + " lock calls, " +
           std::to_string(systemCalls) + " system calls (first: number " + std::to_string(firstSystemCall) +
           "), first caller at " + std::to_string(reinterpret_cast<std::uintptr_t>(firstCaller));
}

Armed::Armed() noexcept {
    wireState.armed = true;
    if (wireState.systemCallsWatched) {
        wireState.systemCallSelector = 1;
    }
}

Armed::~Armed() {
    wireState.systemCallSelector = 0;
    wireState.armed = false;
}

Trips trips() noexcept {
    return wireState.trips;
}

void forgetTrips() noexcept {
    wireState.trips = {};
}

} // namespace test
