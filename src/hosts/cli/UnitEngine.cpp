#include "hosts/cli/UnitEngine.h"

#include <utility>

namespace qor::cli {

Result<std::unique_ptr<UnitEngine>> UnitEngine::create(bool plainPull) {
    host::UnitHostOptions options;
    options.plainPull = plainPull;
    options.flushToZero = false; // the samples are the unit's, to the last bit
    options.serviced = false;    // `render` pumps, so that one input has one result
    Result<std::unique_ptr<host::UnitHost>> created = host::UnitHost::create(options);
    if (!created) {
        return workFailed("the limiter could not be made: " + created.error().localizedDescription());
    }
    return std::unique_ptr<UnitEngine>(new UnitEngine(std::move(created).value()));
}

Result<void> UnitEngine::allocate(double sampleRate) {
    if (const Result<void> active = host_->activate(sampleRate); !active) {
        return workFailed("the limiter does not take " + text(sampleRate) +
                          " Hz: " + active.error().localizedDescription());
    }
    return {};
}

Result<void> UnitEngine::setParameter(AUParameterAddress address, float value) {
    return host_->setParameter(address, value);
}

void UnitEngine::setRawParameter(std::int32_t address, float value) {
    host_->unit().kernelAdapter->setParameterEx(address, value);
}

Result<void> UnitEngine::render(std::int64_t sampleTime, std::span<const AutomationEvent> events,
                                std::uint32_t frames, const float* const input[2], float* const output[2]) {
    events_.clear();
    for (const AutomationEvent& event : events) {
        host::HostEvent change;
        change.frame = static_cast<std::uint32_t>(event.time - sampleTime);
        change.kind = host::HostEventKind::Parameter;
        change.address = static_cast<std::uint32_t>(event.address);
        change.value = event.value;
        events_.push_back(change);
    }
    host_->render(input, output, frames, host::SpanEvents(events_));
    host_->pump();
    return {};
}

MeterValues UnitEngine::meters() {
    const host::Meters now = host_->meters();
    return {now.dynamics1, now.dynamics2, now.peak1, now.peak2};
}

} // namespace qor::cli
