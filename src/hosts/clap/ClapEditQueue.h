// What a person does in the editor, on its way to the host.
#pragma once

#include "hosts/clap/ClapHeaders.h"
#include "hosts/shared/EditGestures.h"
#include "platform/core/RealTime.h"

#include <array>
#include <atomic>
#include <cstdint>

namespace qor::clap {

struct Edit {
    clap_id id = CLAP_INVALID_ID;
    host::EditPhase phase = host::EditPhase::value;
    double value = 0.0;
};

/// From the main thread to wherever the host takes events: the audio thread while it processes, otherwise the
/// main thread. Neither allocates nor waits. Every gesture matters, so values give way first when the host
/// takes nothing.
class ClapEditQueue {
public:
    static constexpr std::uint32_t kCapacity = 1024; // a power of two
    static constexpr std::uint32_t kKeptForGestures = 256;

    /// Main thread. Returns false for what finds no room.
    bool push(const Edit& edit) noexcept {
        const std::uint32_t head = head_.load(std::memory_order_relaxed);
        const std::uint32_t used = head - tail_.load(std::memory_order_acquire);
        const std::uint32_t limit =
            edit.phase == host::EditPhase::value ? kCapacity - kKeptForGestures : kCapacity;
        if (used >= limit) {
            return false;
        }
        edits_[head % kCapacity] = edit;
        head_.store(head + 1, std::memory_order_release);
        return true;
    }
    /// The host's thread: gives what waits to `take`, in order, until it refuses one, which stays.
    template <class Take>
    void drain(Take take) noexcept {
        std::uint32_t tail = tail_.load(std::memory_order_relaxed);
        const std::uint32_t head = head_.load(std::memory_order_acquire);
        while (tail != head && take(edits_[tail % kCapacity])) {
            tail_.store(++tail, std::memory_order_release);
        }
    }

private:
    std::array<Edit, kCapacity> edits_;
    std::atomic<std::uint32_t> head_{0};
    std::atomic<std::uint32_t> tail_{0};
};

/// Hands the waiting edits to the host at a frame of the block.
void sendEdits(ClapEditQueue& edits, const clap_output_events_t* events, std::uint32_t frame) noexcept
    QOR_NONBLOCKING_IN_RENDER;

} // namespace qor::clap
