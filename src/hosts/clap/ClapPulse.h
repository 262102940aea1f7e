// What makes the host call on its main thread, again and again while an editor is open.
#pragma once

#include "hosts/clap/ClapHost.h"
#include "hosts/shared/ServiceThread.h"
#include "hosts/shared/UnitHost.h"
#include "platform/core/RealTime.h"

#include <atomic>
#include <memory>
#include <optional>

namespace qor::clap {

/// By the host's timer; without one by a timer descriptor among those that the host waits for; without these
/// by the service thread, which asks for calls with `request_callback`. Main thread, unless said otherwise.
class ClapPulse final : private host::Serviced {
public:
    /// Both must outlive the pulse. A timer of the host's runs as long as the pulse lives.
    ClapPulse(const ClapHost& host, host::UnitHost& unit);
    ~ClapPulse() override;
    ClapPulse(const ClapPulse&) = delete;
    ClapPulse& operator=(const ClapPulse&) = delete;

    /// A window is open whose input comes by a descriptor: calls come some fifty times a second from now on,
    /// and at once for input where the host waits for descriptors.
    void beginWindow(int input);
    /// To be called while the descriptor is still open.
    void endWindow();

    /// Asks for one call where no timer of the host's brings it. Any thread.
    void ask() noexcept QOR_NONBLOCKING_IN_RENDER;
    /// A call has come.
    void answered() noexcept;

    /// One turn of the service thread. Says on the host's log, once for each window, that the host does not
    /// answer; the unit is served by the service thread then, and the editor stands still.
    void tick() noexcept;
    static constexpr int kTicksUntilRepeat = 50; // a second
    static constexpr int kTicksUntilTold = 100;

private:
    bool startTimerDescriptor();
    void stopTimerDescriptor();
    void service() override { tick(); }

    const ClapHost& host_;
    host::UnitHost& unit_;
    std::optional<clap_id> timer_; // of the host's
    int input_ = -1;               // registered with the host
    int timerDescriptor_ = -1;     // the same
    std::shared_ptr<host::ServiceThread> serviceThread_;
    std::atomic<bool> asked_{false}; // one request under way is enough

    // The service thread's own while it is registered.
    int unanswered_ = 0; // turns
    bool told_ = false;
};

} // namespace qor::clap
