// Counts what a render thread must not do: reaching for the allocator, for a lock, for the operating system.
#pragma once

#include <cstdint>
#include <string>

namespace test {

/// What the calling thread did while it was armed. The program's own definitions of the allocator's and the
/// locks' functions stand before the C library's, so that every library in the process meets them; system
/// calls are reported by the processor's trap into a signal handler.
struct Trips {
    std::uint64_t allocations = 0; // and releases
    std::uint64_t locks = 0;       // and waits, wake-ups
    std::uint64_t systemCalls = 0;
    const void* firstCaller = nullptr; // of the first trip, for a debugger
    long firstSystemCall = -1;

    bool none() const noexcept { return allocations == 0 && locks == 0 && systemCalls == 0; }
    std::string text() const;
};

/// Watches the calling thread for the scope's length. Several scopes add up.
class Armed {
public:
    Armed() noexcept;
    ~Armed();
    Armed(const Armed&) = delete;
    Armed& operator=(const Armed&) = delete;
};

/// The calling thread's trips since the last `forgetTrips`.
Trips trips() noexcept;
void forgetTrips() noexcept;

/// Has the calling thread's system calls reported from now on, while it is armed. False if the kernel can't.
[[nodiscard]] bool watchSystemCalls() noexcept;

} // namespace test
