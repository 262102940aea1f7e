// What happens at a place in a block: parameter changes and MIDI, as the plug-in formats deliver them.
#pragma once

#include "platform/core/RealTime.h"

#include <cstdint>
#include <span>

namespace qor::host {

enum class HostEventKind : std::uint8_t { None, Parameter, Midi, SysEx };

struct HostEvent {
    std::uint32_t frame = 0; // from the start of the block
    HostEventKind kind = HostEventKind::None;
    std::uint8_t length = 0; // of a MIDI message in `bytes`
    std::uint8_t bytes[3] = {};
    std::uint32_t address = 0; // of a parameter
    float value = 0.0F;
    std::span<const std::uint8_t> sysEx; // not owned; valid for the render call
};

/// A block's events in the host's order, read one by one where they are due, so that no number of them needs
/// room of its own. Render thread.
class EventSource {
public:
    virtual std::uint32_t size() const noexcept QOR_NONBLOCKING = 0;
    /// What the host gave at a place; kind None for what means nothing to us.
    virtual HostEvent at(std::uint32_t index) const noexcept QOR_NONBLOCKING = 0;

protected:
    ~EventSource() = default; // never deleted through this class
};

/// Events that lie in an array.
class SpanEvents final : public EventSource {
public:
    explicit SpanEvents(std::span<const HostEvent> events) noexcept : events_(events) {}
    std::uint32_t size() const noexcept QOR_NONBLOCKING override {
        return static_cast<std::uint32_t>(events_.size());
    }
    HostEvent at(std::uint32_t index) const noexcept QOR_NONBLOCKING override { return events_[index]; }

private:
    std::span<const HostEvent> events_;
};

} // namespace qor::host
