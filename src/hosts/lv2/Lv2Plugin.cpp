#include "hosts/lv2/Lv2Plugin.h"

#include <bit>
#include <utility>

namespace qor::lv2 {

namespace {

bool sameBits(float a, float b) noexcept {
    return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
}

host::HostEvent parameterEvent(AUParameterAddress address, float value) noexcept {
    host::HostEvent event;
    event.kind = host::HostEventKind::Parameter;
    event.address = static_cast<std::uint32_t>(address);
    event.value = value;
    return event;
}

} // namespace

std::unique_ptr<Lv2Plugin> Lv2Plugin::create(double sampleRate) {
    auto runtime = host::PluginRuntime::acquire();
    auto made = host::UnitHost::create();
    if (!made) {
        return nullptr;
    }
    std::unique_ptr<Lv2Plugin> plugin(new Lv2Plugin(std::move(runtime), std::move(made).value(), sampleRate));
    // A host may run without having activated, and must hear of a rate that cannot be had right away.
    return plugin->activate() ? std::move(plugin) : nullptr;
}

void Lv2Plugin::connect(std::uint32_t port, void* data) noexcept {
    if (port < kPortCount) {
        ports_[port] = static_cast<float*>(data);
    }
}

bool Lv2Plugin::activate() {
    fresh_ = true;
    return host_->activate(sampleRate_).ok();
}

void Lv2Plugin::run(std::uint32_t frames) noexcept {
    if (const float* enabled = ports_[kEnabled]; enabled != nullptr) {
        host_->setBypassed(!(*enabled > 0.0F));
    }
    if (fresh_) {
        recallPorts();
    }
    const std::uint32_t changes = collectChanges();
    const float* const input[2] = {ports_[kInputLeft], ports_[kInputRight]};
    float* const output[2] = {ports_[kOutputLeft], ports_[kOutputRight]};
    host_->render(input, output, frames, host::SpanEvents({changes_.data(), changes}));
    writeMeters();
}

// What stands at the ports when sound begins is a state that the host brings back. Set one after the other,
// the values would depend on their order; set first and brought in line afterwards, they sound as they did.
void Lv2Plugin::recallPorts() noexcept {
    fresh_ = false;
    for (std::size_t i = 0; i < kParameterCount; ++i) {
        seen_[i] = host_->parameter(i);
    }
    if (const std::uint32_t changes = collectChanges(); changes != 0) {
        const float* const noInput[2] = {nullptr, nullptr};
        float* const noOutput[2] = {nullptr, nullptr};
        host_->render(noInput, noOutput, 0, host::SpanEvents({changes_.data(), changes}));
        host_->resetInRender();
    }
    host_->settleBypass();
}

// Each edge of the input filter is held at the other one, so when both move, the lower one first goes out of
// the way.
std::uint32_t Lv2Plugin::collectChanges() noexcept {
    std::uint32_t count = 0;
    bool lowerMoved = false;
    for (std::size_t i = 0; i < kParameterCount; ++i) {
        const float* port = ports_[kFirstParameter + i];
        if (port == nullptr || sameBits(*port, seen_[i])) {
            continue;
        }
        seen_[i] = *port;
        if (i == kLimiterInputFilterHP) {
            lowerMoved = true;
            changes_[count++] = parameterEvent(i, 0.0F);
            continue;
        }
        changes_[count++] = parameterEvent(i, *port);
    }
    if (lowerMoved) {
        changes_[count++] = parameterEvent(kLimiterInputFilterHP, seen_[kLimiterInputFilterHP]);
    }
    return count;
}

void Lv2Plugin::writeMeters() noexcept {
    const host::Meters meters = host_->meters();
    const std::array<float, kMeterPorts.size()> values{meters.dynamics1, meters.dynamics2, meters.peak1,
                                                       meters.peak2};
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (float* port = ports_[kFirstMeter + i]; port != nullptr) {
            *port = values[i];
        }
    }
}

} // namespace qor::lv2
