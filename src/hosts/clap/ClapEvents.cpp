#include "hosts/clap/ClapEvents.h"

#include "hosts/clap/ClapParameters.h"

#include <algorithm>
#include <limits>

namespace qor::clap {

namespace {

using host::HostEvent;
using host::HostEventKind;

/// The event as its own structure, or null if it isn't of that type or is too short to be.
template <class Event>
const Event* as(const clap_event_header_t* header, std::uint16_t type) noexcept {
    if (header == nullptr || header->space_id != CLAP_CORE_EVENT_SPACE_ID || header->type != type ||
        header->size < sizeof(Event)) {
        return nullptr;
    }
    return reinterpret_cast<const Event*>(header);
}

/// Bytes of a MIDI message by its status; 0 for what can't begin one.
std::uint8_t messageLength(std::uint8_t status) noexcept {
    switch (status & 0xF0U) {
    case 0x80:
    case 0x90:
    case 0xA0:
    case 0xB0:
    case 0xE0:
        return 3;
    case 0xC0:
    case 0xD0:
        return 2;
    case 0xF0:
        break;
    default:
        return 0; // a data byte
    }
    switch (status) {
    case 0xF0:
    case 0xF4:
    case 0xF5:
    case 0xF7:
        return 0; // system exclusive has an event of its own; the others are undefined
    case 0xF1:
    case 0xF3:
        return 2;
    case 0xF2:
        return 3;
    default:
        return 1;
    }
}

HostEvent fromMidi(const clap_event_midi_t& midi) noexcept {
    HostEvent event;
    const std::uint8_t length = messageLength(midi.data[0]);
    if (length != 0) {
        event.kind = HostEventKind::Midi;
        event.length = length;
        std::copy_n(midi.data, length, event.bytes);
    }
    return event;
}

} // namespace

HostEvent toHostEvent(const clap_event_header_t* header) noexcept {
    HostEvent event;
    if (const auto* value = as<clap_event_param_value_t>(header, CLAP_EVENT_PARAM_VALUE)) {
        const std::optional<float> accepted =
            value->param_id != kBypassId ? acceptedValue(value->param_id, value->value) : std::nullopt;
        if (accepted) {
            event.kind = HostEventKind::Parameter;
            event.address = value->param_id;
            event.value = *accepted;
        }
    } else if (const auto* midi = as<clap_event_midi_t>(header, CLAP_EVENT_MIDI)) {
        event = fromMidi(*midi);
    } else if (const auto* sysEx = as<clap_event_midi_sysex_t>(header, CLAP_EVENT_MIDI_SYSEX)) {
        if (sysEx->buffer != nullptr && sysEx->size != 0) {
            event.kind = HostEventKind::SysEx;
            event.sysEx = {sysEx->buffer, sysEx->size};
        }
    }
    if (event.kind != HostEventKind::None) {
        event.frame = header->time;
    }
    return event;
}

std::optional<BypassEvent> toBypassEvent(const clap_event_header_t* header) noexcept {
    const auto* const value = as<clap_event_param_value_t>(header, CLAP_EVENT_PARAM_VALUE);
    if (value == nullptr || value->param_id != kBypassId) {
        return std::nullopt;
    }
    const std::optional<float> accepted = acceptedValue(kBypassId, value->value);
    return accepted ? std::optional(BypassEvent{header->time, *accepted > 0.0F}) : std::nullopt;
}

std::uint32_t eventCount(const clap_input_events_t* events) noexcept {
    QOR_UNSEEN_BEGIN // the host's callback
    return events == nullptr || events->size == nullptr || events->get == nullptr ? 0 : events->size(events);
    QOR_UNSEEN_END
}

StretchEvents::StretchEvents(const clap_input_events_t* events, std::uint32_t start, std::uint32_t end,
                             bool isLast) noexcept
    : events_(events), count_(eventCount(events)), start_(start),
      end_(isLast ? std::numeric_limits<std::uint32_t>::max() : end), isLast_(isLast) {}

HostEvent StretchEvents::at(std::uint32_t index) const noexcept {
    QOR_UNSEEN_BEGIN // the host's callback
    HostEvent event = toHostEvent(events_->get(events_, index));
    QOR_UNSEEN_END
    const bool isHere = event.frame >= start_ && (event.frame < end_ || isLast_);
    if (!isHere) {
        return {}; // of another stretch
    }
    event.frame -= start_;
    return event;
}

} // namespace qor::clap
