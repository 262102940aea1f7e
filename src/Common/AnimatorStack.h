// Runs animators side by side.
#pragma once

#include "Common/Animator.h"

#include <vector>

namespace qor {

/// Steps all its items on each tick of one timer and drops each when it is done; ends one tick after its last
/// item ended. Lives in a `Ref` once it is started. Thread of the timer's run loop only.
class AnimatorStack : public std::enable_shared_from_this<AnimatorStack> {
public:
    virtual ~AnimatorStack() = default;

    Ref<NSTimer> _timer;
    std::vector<Ref<Animator>> _animators;
    float interval = 0.005f;                            // seconds between ticks
    Block<void(AnimatorStack&, Animator&)> onAnimation; // before each item's step
    Block<void(AnimatorStack&)> onFinished;
    Block<void(AnimatorStack&, Animator&)> onRemovedItem;

    /// Appends; an absent item is ignored.
    virtual void add(Ref<Animator> item);
    virtual std::int64_t getCount() const { return static_cast<std::int64_t>(_animators.size()); }
    virtual std::vector<Ref<Animator>> getItems() const { return _animators; }
    virtual void start();
    virtual void stop() { reset(); }
    /// One tick.
    virtual void animate();
    /// Ends the timer and removes all items.
    virtual void reset();
};

} // namespace qor
