// A timer on a run loop.
#pragma once

#include "platform/core/Block.h"
#include "platform/core/Ref.h"

namespace platform {

/// Calls a block on the loop that was current when it was scheduled. The loop keeps the timer until it is
/// invalid. Loop thread only. A late repeating timer fires once and keeps its grid: missed times are skipped.
class NSTimer : public std::enable_shared_from_this<NSTimer> {
public:
    /// Schedules on `RunLoop::current()`. `interval` in seconds; one that is not above 0 becomes 0.0001.
    static Ref<NSTimer> scheduledTimerWithTimeInterval(double interval, bool repeats,
                                                       Block<void(NSTimer&)> block);

    /// Ends the timer and drops its block. May be called from within the block.
    void invalidate() noexcept;
    bool isValid() const noexcept { return valid_; }
    double timeInterval() const noexcept { return interval_; }
    /// When it is due next, by the loop's clock, in seconds.
    double fireTime() const noexcept { return due_; }

    /// Used by the loop: fires if `now` has reached the due time. Returns whether it fired.
    bool fireIfDue(double now);

private:
    NSTimer(double interval, bool repeats, Block<void(NSTimer&)> block, double now);

    double interval_;
    double due_;
    bool repeats_;
    bool valid_ = true;
    Block<void(NSTimer&)> block_;
};

} // namespace platform
