// The limiter as an LV2 plug-in.
#pragma once

#include "hosts/lv2/Lv2Ports.h"
#include "hosts/shared/ParameterFollower.h"
#include "hosts/shared/PluginRuntime.h"
#include "hosts/shared/UnitHost.h"

#include <array>
#include <memory>

namespace qor::lv2 {

/// One instance: ports in front of a `UnitHost`. `create`, `activate` and `deactivate` belong to the host's
/// instantiation thread, `connect` and `run` to its audio thread.
class Lv2Plugin {
public:
    /// Null if the unit cannot be made or takes no such rate.
    static std::unique_ptr<Lv2Plugin> create(double sampleRate);

    void connect(std::uint32_t port, void* data) noexcept QOR_NONBLOCKING;
    bool activate();
    void deactivate() { host_->deactivate(); }
    void run(std::uint32_t frames) noexcept QOR_NONBLOCKING;

private:
    Lv2Plugin(std::shared_ptr<host::PluginRuntime> runtime, std::unique_ptr<host::UnitHost> host,
              double sampleRate)
        : runtime_(std::move(runtime)), host_(std::move(host)), sampleRate_(sampleRate) {}

    host::ParameterFollower::Values portValues() const noexcept QOR_NONBLOCKING;
    void writeMeters() noexcept QOR_NONBLOCKING;

    std::shared_ptr<host::PluginRuntime> runtime_; // outlives the host
    std::unique_ptr<host::UnitHost> host_;
    double sampleRate_;
    bool fresh_ = true; // no block since activation: the ports are a recalled state, not moves
    std::array<float*, kPortCount> ports_{};
    host::ParameterFollower follower_;
};

} // namespace qor::lv2
