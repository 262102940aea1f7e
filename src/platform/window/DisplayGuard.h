// Keeps what goes wrong on one display connection from ending the process.
#pragma once

// NOLINTNEXTLINE(bugprone-reserved-identifier): Xlib's own name, so that its header isn't needed here
struct _XDisplay;

namespace platform {

/// Errors that the server reports on this connection (a window that the host has destroyed, a drawable that
/// is gone) are dropped, and the host's own error handler is neither called for them nor replaced. If the
/// connection is lost the process lives on and `lost` tells. Main thread.
class DisplayGuard {
public:
    /// Outlives the display.
    explicit DisplayGuard(_XDisplay* display);
    ~DisplayGuard();
    DisplayGuard(const DisplayGuard&) = delete;
    DisplayGuard& operator=(const DisplayGuard&) = delete;

    bool lost() const noexcept { return lost_; }

    /// Surrounds calls that may read from the connection: a host's handler that ends the process when a
    /// connection is lost is kept from doing so for this one.
    class Scope {
    public:
        explicit Scope(const DisplayGuard& guard) noexcept;
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        _XDisplay* before_; // guarded by a scope around this one
    };

private:
    friend struct DisplayErrors;

    _XDisplay* display_;
    DisplayGuard* next_; // in the list of all
    int sharedMemoryRequests_ = 0;
    bool lost_ = false;
};

} // namespace platform
