// What the wires of one thread share.
#pragma once

#include "hosts/realtime/Tripwire.h"

namespace test {

/// Lies in the program's own thread storage, which needs no allocation to reach.
struct WireState {
    bool armed = false;
    Trips trips;
    volatile unsigned char systemCallSelector = 0; // read by the kernel at each system call: 1 traps
    bool systemCallsWatched = false;
};
extern thread_local WireState wireState;

} // namespace test
