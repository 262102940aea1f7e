// Renders whole signals through a UnitHost.
#pragma once

#include "hosts/shared/UnitHost.h"
#include "support/Signals.h"

#include <memory>
#include <vector>

namespace test {

inline std::unique_ptr<qor::host::UnitHost> makeHost(qor::host::UnitHostOptions options = {}) {
    options.serviced = false;
    options.flushToZero = false;
    auto made = qor::host::UnitHost::create(options);
    return made ? std::move(made).value() : nullptr;
}

/// Renders in blocks of `block` frames. `events` count their frames from the start of the signal and must be
/// sorted.
inline Stereo render(qor::host::UnitHost& host, const Stereo& input, std::uint32_t block,
                     const std::vector<qor::host::HostEvent>& events = {}) {
    Stereo output = silence(input.frames());
    std::size_t next = 0;
    for (std::size_t start = 0; start < input.frames(); start += block) {
        const auto count = static_cast<std::uint32_t>(std::min<std::size_t>(block, input.frames() - start));
        std::vector<qor::host::HostEvent> due;
        for (; next < events.size() && events[next].frame < start + count; ++next) {
            due.push_back(events[next]);
            due.back().frame -= static_cast<std::uint32_t>(start);
        }
        const float* const in[2] = {input.left.data() + start, input.right.data() + start};
        float* const out[2] = {output.left.data() + start, output.right.data() + start};
        host.render(in, out, count, qor::host::SpanEvents(due));
    }
    return output;
}

inline qor::host::HostEvent parameterAt(std::uint32_t frame, std::uint32_t address, float value) {
    qor::host::HostEvent event;
    event.frame = frame;
    event.kind = qor::host::HostEventKind::Parameter;
    event.address = address;
    event.value = value;
    return event;
}

} // namespace test
