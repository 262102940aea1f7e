#include "TOOLS/SOURCES/KeptBuffers.h"

#include <cstdlib>

namespace RVK {

namespace {

struct Kept {
    void* buffer;
    Kept* next;
};

// Plain data without a destructor: global strings are entered while the process is already ending.
Kept* newest = nullptr;
std::size_t number = 0;

} // namespace

void keepUntilExit(void* buffer) noexcept {
    if (buffer == nullptr) {
        return;
    }
    auto* const entry = static_cast<Kept*>(std::malloc(sizeof(Kept)));
    if (entry == nullptr) {
        return; // the buffer stays all the same, only unlisted
    }
    *entry = {buffer, newest};
    newest = entry;
    ++number;
}

std::size_t keptBuffers() noexcept {
    return number;
}

} // namespace RVK
