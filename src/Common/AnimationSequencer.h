// Runs animators on a time line of frames.
#pragma once

#include "Common/Animator.h"

#include <vector>

namespace qor {

/// Starts each item at its frame and steps those that run, from one timer. Lives in a `Ref` once it is
/// started. Thread of the timer's run loop only. An overflow of a frame number ends the process.
class AnimationSequencer : public std::enable_shared_from_this<AnimationSequencer> {
public:
    virtual ~AnimationSequencer() = default;

    Ref<NSTimer> _timer;
    std::int64_t _currentFrame = 0;
    std::int64_t _maxFrames = 0;               // end of the time line; never shrinks by itself
    std::vector<Ref<Animator>> _animators;     // all items, by start frame
    std::vector<Ref<Animator>> _animatedItems; // those that run now
    std::int64_t _currentIndex = 0;            // where the scan for new items starts
    bool _suspended = false;
    float interval = 0.005f;                                 // seconds between ticks
    Block<void(AnimationSequencer&, Animator&)> onAnimation; // before each item's step
    Block<void(AnimationSequencer&)> onFinished;

    /// Places an item at a frame. Items with one start frame keep the order of their arrival.
    virtual void add(Ref<Animator> item, std::int64_t at);
    virtual void remove(const Ref<Animator>& item);
    /// Empties the time line; a running timer goes on.
    virtual void removeAll();
    virtual std::int64_t getCount() const { return static_cast<std::int64_t>(_animators.size()); }
    virtual std::int64_t getCurrentCount() const { return static_cast<std::int64_t>(_animatedItems.size()); }
    virtual std::int64_t getCurrentFrame() const { return _currentFrame; }
    virtual std::int64_t getCurrentIndex() const { return _currentIndex; }
    virtual void start();
    virtual void stop() { reset(); }
    /// Holds the items; the frame goes on counting.
    virtual void pause() { _suspended = true; }
    virtual void continue_() { _suspended = false; }
    /// Rewinds every item; the position stays.
    virtual void rewind();
    /// Moves the position. Items that started before it are dropped, the others rewound.
    virtual void seek(std::int64_t to);
    /// One tick without counting.
    virtual void animate();
    virtual void findAnimators();
    virtual void scheduleItem(const Ref<Animator>& item);
    virtual void calculateFrames();
    virtual void reset();
};

} // namespace qor
