// Turns values that a host holds (ports, controls) into parameter events.
#pragma once

#include "hosts/shared/HostEvent.h"
#include "hosts/shared/UnitHost.h"
#include "kernel/ParameterTable.h"

#include <array>
#include <span>

namespace qor::host {

/// For formats in which a host shows values instead of sending events. Render thread; no allocation.
class ParameterFollower {
public:
    using Values = std::array<float, kParameterCount>; // by address

    /// Takes the values for a state that the host brings back: they sound the same whatever the order in
    /// which they would have been set. For the first block after an activation.
    void recall(UnitHost& host, const Values& values) noexcept QOR_NONBLOCKING;
    /// The values that have changed since, as events at the first sample, in address order. When both edges
    /// of the input filter move, neither stands in the other's way. Valid until the next call.
    std::span<const HostEvent> changes(const Values& values) noexcept QOR_NONBLOCKING;
    /// The values as passed on last.
    const Values& seen() const noexcept { return seen_; }

private:
    void add(AUParameterAddress address, float value) noexcept QOR_NONBLOCKING;

    Values seen_{};
    std::array<HostEvent, kParameterCount + 1> events_{};
    std::size_t count_ = 0;
};

} // namespace qor::host
