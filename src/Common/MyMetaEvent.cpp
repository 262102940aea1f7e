#include "Common/MyMetaEvent.h"

#include "Common/MIDIConstants.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace qor {

using platform::MIDIMetaEvent;

MyMetaEvent::MyMetaEvent(std::uint8_t type, std::span<const std::uint8_t> data)
    : size(static_cast<std::int64_t>(sizeof(MIDIMetaEvent) + data.size())),
      mem(std::make_unique<std::uint8_t[]>(static_cast<std::size_t>(size))) {
    auto* const event = reinterpret_cast<MIDIMetaEvent*>(mem.get());
    event->metaEventType = type;
    event->dataLength = static_cast<std::uint32_t>(data.size());
    std::copy(data.begin(), data.end(), mem.get() + offsetof(MIDIMetaEvent, data));
}

void MyMetaEvent::withMIDIMetaEventPtr(const Block<void(const MIDIMetaEvent*)>& body) const {
    body(reinterpret_cast<const MIDIMetaEvent*>(mem.get()));
}

void test_MyMetaEvent() {
    const std::array<std::uint8_t, 3> zeros{};
    const MyMetaEvent event(META_SPECIFIC, zeros);
    event.withMIDIMetaEventPtr([](const MIDIMetaEvent*) {});
}

} // namespace qor
