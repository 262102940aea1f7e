// The limiter as a CLAP plug-in: one instance.
#pragma once

#include "hosts/clap/ClapEditor.h"
#include "hosts/clap/ClapHost.h"
#include "hosts/clap/ClapPulse.h"
#include "hosts/shared/PluginRuntime.h"
#include "hosts/shared/UnitHost.h"

#include <atomic>
#include <memory>
#include <optional>

namespace qor::clap {

/// Stands between the host's calls and a `UnitHost`, with nothing of its own but the host's bypass. What the
/// host gives is never trusted; threads are as the interface says, and checked in debug builds.
class ClapInstance {
public:
    explicit ClapInstance(const clap_host_t* host) noexcept : host_(host) {}
    ClapInstance(const ClapInstance&) = delete;
    ClapInstance& operator=(const ClapInstance&) = delete;

    // Main thread.
    bool init();
    bool activate(double sampleRate);
    void deactivate();
    bool save(const clap_ostream_t* stream);
    bool load(const clap_istream_t* stream);
    /// False for an unknown id.
    bool value(clap_id id, double& value) const;
    /// Runs what waits for the main thread; whenever the host calls there.
    void onMainThread();
    /// Null before `init`.
    ClapEditor* editor() noexcept { return editor_.get(); }

    // Audio thread while active.
    bool startProcessing() noexcept QOR_NONBLOCKING;
    void reset() noexcept QOR_NONBLOCKING;
    clap_process_status process(const clap_process_t& block) noexcept QOR_NONBLOCKING;
    /// Audio thread while active, otherwise main thread.
    void flush(const clap_input_events_t* events, const clap_output_events_t* edits);

    /// Frames of sound behind the input's end.
    std::uint32_t tail() const noexcept;
    const ClapHost& host() const noexcept { return host_; }
    /// `init` has succeeded.
    bool isReady() const noexcept { return editor_ != nullptr; }
    bool isActive() const noexcept { return active_.load(std::memory_order_relaxed); }

private:
    void render(const clap_process_t& block) noexcept QOR_NONBLOCKING;
    void flushInactive(const clap_input_events_t* events);

    ClapHost host_;
    std::shared_ptr<host::PluginRuntime> runtime_; // outlives the unit
    std::unique_ptr<host::UnitHost> unit_;
    ClapEditQueue edits_;
    std::optional<ClapPulse> pulse_; // from `init` on
    std::unique_ptr<ClapEditor> editor_;
    std::atomic<bool> active_{false};
};

} // namespace qor::clap
