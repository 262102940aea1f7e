// Puts a block's events into the order of their frames.
#pragma once

#include "hosts/shared/HostEvent.h"

#include <array>
#include <cstdint>

namespace qor::host {

/// Formats promise sorted events, and not all hosts keep the promise. Sorts stably, by index, in memory of
/// its own; events beyond `kCapacity` of an unsorted block keep their places, and late ones among them are
/// applied at once. Render thread; no allocation.
class EventOrder {
public:
    static constexpr std::uint32_t kCapacity = 4096;

    /// Looks at the events; they must stay as they are until the block is done.
    void prepare(const EventSource& events) noexcept QOR_NONBLOCKING;
    /// The index of the n-th event in the order of frames.
    std::uint32_t operator[](std::uint32_t n) const noexcept {
        return sorted_ || n >= kCapacity ? n : order_[n].index;
    }

private:
    struct Entry {
        std::uint32_t frame;
        std::uint32_t index;
    };
    using Entries = std::array<Entry, kCapacity>;

    void sort(std::uint32_t count) noexcept QOR_NONBLOCKING;

    bool sorted_ = true;
    Entries order_{};
    Entries scratch_{};
};

} // namespace qor::host
