// The render events of one chunk, as a linked list in memory of its own.
#pragma once

#include "hosts/shared/HostEvent.h"
#include "platform/audio/Audio.h"
#include "platform/core/RealTime.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace qor::host {

/// Takes events in the order of their times. Render thread; no allocation.
class ChunkEvents {
public:
    static constexpr std::size_t kCapacity = 512;
    static constexpr std::size_t kSysExBytes = 8192;

    void clear() noexcept QOR_NONBLOCKING;
    bool isFull() const noexcept { return count_ == kCapacity; }
    std::size_t size() const noexcept { return count_; }
    /// `time` is the absolute sample time. There must be room. A system-exclusive message that the room left
    /// for such messages does not take is dropped.
    void add(const HostEvent& event, AUEventSampleTime time) noexcept QOR_NONBLOCKING;
    const AURenderEvent* head() const noexcept { return head_; }

private:
    void addSysEx(const HostEvent& event, AUEventSampleTime time) noexcept QOR_NONBLOCKING;
    void append(AURenderEvent* event, AUEventSampleTime time, std::uint8_t type) noexcept QOR_NONBLOCKING;

    std::array<AURenderEvent, kCapacity> events_;
    std::size_t count_ = 0;
    AURenderEvent* head_ = nullptr;
    AURenderEvent* last_ = nullptr;
    alignas(AURenderEvent) std::array<std::byte, kSysExBytes> sysEx_;
    std::size_t sysExUsed_ = 0;
};

} // namespace qor::host
