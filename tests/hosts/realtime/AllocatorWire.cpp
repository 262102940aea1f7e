// The allocator's functions, in place of the C library's: they count and pass on. Operator new and delete of
// every library in the process end here.
#include "hosts/realtime/TripwireState.h"

#include <cerrno>
#include <cstddef>

#define QOR_EXPORTED extern "C" __attribute__((visibility("default")))

// NOLINTBEGIN(bugprone-reserved-identifier, readability-inconsistent-declaration-parameter-name): names of
// the C library's

// The C library's own entries, under the names that it exports for such programs.
extern "C" {
void* __libc_malloc(std::size_t size) noexcept;
void* __libc_calloc(std::size_t count, std::size_t size) noexcept;
void* __libc_realloc(void* memory, std::size_t size) noexcept;
void* __libc_memalign(std::size_t alignment, std::size_t size) noexcept;
void __libc_free(void* memory) noexcept;
}

namespace {

void trip(const void* caller) noexcept {
    test::WireState& state = test::wireState;
    if (state.armed) {
        ++state.trips.allocations;
        if (state.trips.firstCaller == nullptr) {
            state.trips.firstCaller = caller;
        }
    }
}

} // namespace

QOR_EXPORTED void* malloc(std::size_t size) noexcept {
    trip(__builtin_return_address(0));
    return __libc_malloc(size);
}

QOR_EXPORTED void* calloc(std::size_t count, std::size_t size) noexcept {
    trip(__builtin_return_address(0));
    return __libc_calloc(count, size);
}

QOR_EXPORTED void* realloc(void* memory, std::size_t size) noexcept {
    trip(__builtin_return_address(0));
    return __libc_realloc(memory, size);
}

QOR_EXPORTED void free(void* memory) noexcept {
    trip(__builtin_return_address(0));
    __libc_free(memory);
}

QOR_EXPORTED void* memalign(std::size_t alignment, std::size_t size) noexcept {
    trip(__builtin_return_address(0));
    return __libc_memalign(alignment, size);
}

QOR_EXPORTED void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    trip(__builtin_return_address(0));
    return __libc_memalign(alignment, size);
}

QOR_EXPORTED int posix_memalign(void** memory, std::size_t alignment, std::size_t size) noexcept {
    trip(__builtin_return_address(0));
    *memory = __libc_memalign(alignment, size);
    return *memory == nullptr ? ENOMEM : 0;
}

// NOLINTEND(bugprone-reserved-identifier, readability-inconsistent-declaration-parameter-name)
