#include "platform/core/NSTimer.h"

#include "platform/core/RunLoop.h"

#include <cmath>
#include <utility>

namespace platform {

NSTimer::NSTimer(double interval, bool repeats, Block<void(NSTimer&)> block, double now)
    : interval_(interval > 0.0 ? interval : 0.0001), due_(now + interval_), repeats_(repeats),
      block_(std::move(block)) {}

Ref<NSTimer> NSTimer::scheduledTimerWithTimeInterval(double interval, bool repeats,
                                                     Block<void(NSTimer&)> block) {
    RunLoop& loop = RunLoop::current();
    Ref<NSTimer> timer(new NSTimer(interval, repeats, std::move(block), loop.clock().now()));
    loop.add(timer);
    return timer;
}

void NSTimer::invalidate() noexcept {
    valid_ = false;
    const Block<void(NSTimer&)> dropped = std::move(block_);
}

bool NSTimer::fireIfDue(double now) {
    if (!valid_ || now < due_) {
        return false;
    }
    const Ref<NSTimer> keep = shared_from_this();
    const Block<void(NSTimer&)> block = block_; // survives an invalidate from within
    if (repeats_) {
        due_ += interval_ * (1.0 + std::floor((now - due_) / interval_));
        if (due_ <= now) { // rounding
            due_ += interval_;
        }
    }
    if (block) {
        block(*this);
    }
    if (!repeats_) {
        invalidate();
    }
    return true;
}

} // namespace platform
