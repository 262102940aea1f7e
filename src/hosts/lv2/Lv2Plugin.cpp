#include "hosts/lv2/Lv2Plugin.h"

#include <utility>

namespace qor::lv2 {

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
    const host::ParameterFollower::Values values = portValues();
    if (fresh_) {
        fresh_ = false;
        follower_.recall(*host_, values);
    }
    const float* const input[2] = {ports_[kInputLeft], ports_[kInputRight]};
    float* const output[2] = {ports_[kOutputLeft], ports_[kOutputRight]};
    host_->render(input, output, frames, host::SpanEvents(follower_.changes(values)));
    writeMeters();
}

host::ParameterFollower::Values Lv2Plugin::portValues() const noexcept {
    host::ParameterFollower::Values values{};
    for (std::size_t i = 0; i < kParameterCount; ++i) {
        const float* port = ports_[kFirstParameter + i];
        values[i] = port == nullptr ? host_->parameter(i) : *port;
    }
    return values;
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
