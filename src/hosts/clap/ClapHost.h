// The host as the plug-in sees it: what it offers, each piece of which may be missing.
#pragma once

#include "hosts/clap/ClapHeaders.h"
#include "hosts/clap/ClapMoreExtensions.h"

#include <optional>

namespace qor::clap {

/// Which thread a call is promised to come on.
enum class Promised : std::uint8_t { mainThread, audioThread };

class ClapHost {
public:
    explicit ClapHost(const clap_host_t* host) noexcept : host_(host) {}

    /// Asks for the extensions, which is allowed from the instance's `init` on. Main thread.
    void askForExtensions() noexcept;

    /// A line for the host's log. Any thread.
    void log(LogSeverity severity, const char* message) const noexcept;
    /// Asks for a call on the main thread. Any thread.
    void requestCallback() const noexcept;
    /// Parameter values have changed by themselves. Main thread.
    void valuesChanged() const noexcept;
    /// Edits wait for the host to take them. Main thread.
    void requestFlush() const noexcept;
    /// The editor wants another size, in pixels. Main thread.
    void requestResize(std::uint32_t width, std::uint32_t height) const noexcept;
    /// The editor's window was closed by the user, or is gone. Main thread.
    void guiClosed(bool wasDestroyed) const noexcept;
    /// A regular call every so many milliseconds, if the host offers it. Main thread.
    std::optional<clap_id> registerTimer(std::uint32_t milliseconds) const noexcept;
    void unregisterTimer(clap_id timer) const noexcept;
    /// A call whenever the descriptor becomes readable, if the host offers it. Main thread.
    bool registerDescriptor(int descriptor) const noexcept;
    /// To be called before the descriptor is closed.
    void unregisterDescriptor(int descriptor) const noexcept;
    /// Says on the host's log if the call came on another thread, and returns whether it came on the right
    /// one or the host can't tell. `call` names what was called.
    bool checkThread(Promised promised, const char* call) const noexcept;

private:
    template <class Extension>
    const Extension* extension(const char* id) const noexcept;

    const clap_host_t* host_;
    const clap_host_params_t* params_ = nullptr;
    const clap_host_timer_support_t* timers_ = nullptr;
    const HostDescriptors* descriptors_ = nullptr;
    const clap_host_gui_t* gui_ = nullptr;
    const clap_host_thread_check_t* threads_ = nullptr;
    const HostLog* log_ = nullptr;
};

} // namespace qor::clap
