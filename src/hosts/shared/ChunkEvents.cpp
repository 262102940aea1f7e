#include "hosts/shared/ChunkEvents.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace qor::host {

void ChunkEvents::clear() noexcept {
    count_ = 0;
    head_ = nullptr;
    last_ = nullptr;
    sysExUsed_ = 0;
}

void ChunkEvents::add(const HostEvent& event, AUEventSampleTime time) noexcept {
    switch (event.kind) {
    case HostEventKind::None:
        return;
    case HostEventKind::Parameter: {
        AURenderEvent& target = events_[count_++];
        target.parameter = {};
        target.parameter.parameterAddress = event.address;
        target.parameter.value = event.value;
        append(&target, time, AURenderEventParameter);
        return;
    }
    case HostEventKind::Midi: {
        AURenderEvent& target = events_[count_++];
        target.MIDI = {};
        target.MIDI.length = std::min<std::uint8_t>(event.length, sizeof target.MIDI.data);
        std::copy_n(event.bytes, target.MIDI.length, target.MIDI.data);
        append(&target, time, AURenderEventMIDI);
        return;
    }
    case HostEventKind::SysEx:
        addSysEx(event, time);
        return;
    }
}

// The bytes go on behind the event's own three, so such an event is as long as its message asks for.
void ChunkEvents::addSysEx(const HostEvent& event, AUEventSampleTime time) noexcept {
    constexpr std::size_t kHead = offsetof(AUMIDIEvent, data);
    const std::size_t wanted = std::max(sizeof(AURenderEvent), kHead + event.sysEx.size());
    const std::size_t rounded =
        (wanted + alignof(AURenderEvent) - 1) / alignof(AURenderEvent) * alignof(AURenderEvent);
    if (event.sysEx.size() > UINT16_MAX || rounded > kSysExBytes - sysExUsed_) {
        return;
    }
    std::byte* place = sysEx_.data() + sysExUsed_;
    sysExUsed_ += rounded;
    auto* target = new (place) AURenderEvent;
    target->MIDI = {};
    target->MIDI.length = static_cast<std::uint16_t>(event.sysEx.size());
    if (!event.sysEx.empty()) {
        std::memcpy(place + kHead, event.sysEx.data(), event.sysEx.size());
    }
    append(target, time, AURenderEventMIDISysEx);
}

void ChunkEvents::append(AURenderEvent* event, AUEventSampleTime time, std::uint8_t type) noexcept {
    event->head.next = nullptr;
    event->head.eventSampleTime = time;
    event->head.eventType = type;
    if (last_ == nullptr) {
        head_ = event;
    } else {
        last_->head.next = event;
    }
    last_ = event;
}

} // namespace qor::host
