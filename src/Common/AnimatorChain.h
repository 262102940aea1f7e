// Runs animators one after the other.
#pragma once

#include "Common/Animator.h"

#include <vector>

namespace qor {

/// Plays its items in order, forwards or backwards, from one timer. The end test runs on every tick, and a
/// backward chain ends on index 0 without playing that item further. Items are not rewound. Lives in a `Ref`
/// once it is started. Thread of the timer's run loop only.
class AnimatorChain : public std::enable_shared_from_this<AnimatorChain> {
public:
    virtual ~AnimatorChain() = default;

    Ref<NSTimer> _timer;
    std::vector<Ref<Animator>> _animators;
    std::int64_t _currentIndex = 0;
    std::int64_t _direction = 1; // +1 forwards, -1 backwards
    float interval = 0.005f;     // seconds between ticks
    bool async = false;          // start each item on its own timer and move on at once
    Block<void(AnimatorChain&, Animator&)> onAnimation; // each tick, before the item acts
    Block<void(AnimatorChain&)> onFinished;

    /// Appends; an absent item is ignored.
    virtual void add(Ref<Animator> item);
    /// Removes the first such item, if there is one; the index is not corrected.
    virtual void remove(const Ref<Animator>& item);
    virtual void removeAll();
    virtual std::int64_t getCount() const { return static_cast<std::int64_t>(_animators.size()); }
    virtual std::int64_t getCurrentIndex() const { return _currentIndex; }
    /// Absent for the first and the last item.
    virtual Ref<Animator> getCurrentItem() const;
    virtual void start();
    virtual void stop() { reset(); }
    virtual void setBackwards(bool direction) { _direction = direction ? -1 : 1; }
    /// One tick.
    virtual void animate();
    /// Ends the timer and goes back to the first index; the items stay.
    virtual void reset();
};

} // namespace qor
