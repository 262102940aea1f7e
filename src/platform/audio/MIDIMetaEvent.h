// A MIDI meta event in memory, as the platform's sequencer takes it.
#pragma once

#include <cstddef>
#include <cstdint>

namespace platform {

/// The event's `dataLength` bytes begin at `data` and go on behind the structure.
struct MIDIMetaEvent {
    std::uint8_t metaEventType;
    std::uint8_t unused1;
    std::uint8_t unused2;
    std::uint8_t unused3;
    std::uint32_t dataLength;
    std::uint8_t data[1];
};
static_assert(offsetof(MIDIMetaEvent, data) == 8 && sizeof(MIDIMetaEvent) == 12);

} // namespace platform
