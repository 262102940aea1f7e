#include "hosts/shared/ParameterFollower.h"

#include <bit>
#include <cstdint>

namespace qor::host {

void ParameterFollower::recall(UnitHost& host, const Values& values) noexcept {
    for (std::size_t i = 0; i < kParameterCount; ++i) {
        seen_[i] = host.parameter(i);
    }
    // Set one after the other, the values would depend on their order; brought in line afterwards, they do
    // not.
    if (const std::span<const HostEvent> moved = changes(values); !moved.empty()) {
        const float* const noInput[2] = {nullptr, nullptr};
        float* const noOutput[2] = {nullptr, nullptr};
        host.render(noInput, noOutput, 0, SpanEvents(moved));
        host.resetInRender();
    }
    host.settleBypass();
}

std::span<const HostEvent> ParameterFollower::changes(const Values& values) noexcept {
    count_ = 0;
    bool lowerMoved = false;
    for (std::size_t i = 0; i < kParameterCount; ++i) {
        if (std::bit_cast<std::uint32_t>(values[i]) == std::bit_cast<std::uint32_t>(seen_[i])) {
            continue; // compared by their bits, so that a NaN does not come again with each block
        }
        seen_[i] = values[i];
        if (i == kLimiterInputFilterHP) {
            // Each edge is held at the other one: the lower one first goes out of the way.
            lowerMoved = true;
            add(i, 0.0F);
        } else {
            add(i, values[i]);
        }
    }
    if (lowerMoved) {
        add(kLimiterInputFilterHP, seen_[kLimiterInputFilterHP]);
    }
    return {events_.data(), count_};
}

void ParameterFollower::add(AUParameterAddress address, float value) noexcept {
    HostEvent& event = events_[count_++];
    event = {};
    event.kind = HostEventKind::Parameter;
    event.address = static_cast<std::uint32_t>(address);
    event.value = value;
}

} // namespace qor::host
