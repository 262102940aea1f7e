// The host's events as render events.
#pragma once

#include "hosts/clap/ClapHeaders.h"
#include "hosts/shared/HostEvent.h"

#include <cstdint>
#include <optional>

namespace qor::clap {

/// What one of the host's events means to the unit; kind None for other event spaces, unknown parameters,
/// types that mean nothing here, and events that are shorter than their type.
host::HostEvent toHostEvent(const clap_event_header_t* header) noexcept QOR_NONBLOCKING;

struct BypassEvent {
    std::uint32_t frame;
    bool bypassed;
};
/// The move of the host's bypass that an event stands for, if it is one.
std::optional<BypassEvent> toBypassEvent(const clap_event_header_t* header) noexcept QOR_NONBLOCKING;

/// The events of a stretch of a block, their frames counted from the stretch's start; all others have kind
/// None. An absent list has no events.
class StretchEvents final : public host::EventSource {
public:
    /// Events at or behind `end` belong to the stretch too if it is the block's last: late ones are never
    /// lost.
    StretchEvents(const clap_input_events_t* events, std::uint32_t start, std::uint32_t end,
                  bool isLast) noexcept QOR_NONBLOCKING;

    std::uint32_t size() const noexcept QOR_NONBLOCKING override { return count_; }
    host::HostEvent at(std::uint32_t index) const noexcept QOR_NONBLOCKING override;

private:
    const clap_input_events_t* events_;
    std::uint32_t count_;
    std::uint32_t start_;
    std::uint32_t end_;
    bool isLast_;
};

/// How many events a list has; 0 for an absent or incomplete list.
std::uint32_t eventCount(const clap_input_events_t* events) noexcept QOR_NONBLOCKING;

} // namespace qor::clap
