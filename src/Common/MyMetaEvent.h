// A meta event that owns its memory.
#pragma once

#include "platform/audio/MIDIMetaEvent.h"
#include "platform/core/Core.h"

#include <cstdint>
#include <memory>
#include <span>

namespace qor {

/// Packs a type and its data bytes into the platform's structure.
class MyMetaEvent {
public:
    MyMetaEvent(std::uint8_t type, std::span<const std::uint8_t> data);

    /// Calls the block once with the event, which is valid within the call only.
    void withMIDIMetaEventPtr(const Block<void(const platform::MIDIMetaEvent*)>& body) const;

    std::int64_t size; // bytes of `mem`: 12 and the data bytes
    std::unique_ptr<std::uint8_t[]> mem;
};

/// Makes an event and looks at it; a trial.
void test_MyMetaEvent();

} // namespace qor
