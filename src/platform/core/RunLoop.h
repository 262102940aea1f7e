// The main queue and its timers: tasks and repeating timers that belong together and run on one thread.
#pragma once

#include "platform/core/Block.h"
#include "platform/core/RealTime.h"
#include "platform/core/Ref.h"

#include <atomic>
#include <mutex>
#include <optional>
#include <vector>

namespace platform {

class NSTimer;

/// Where a run loop takes the time from; injectable, so that no test waits.
class Clock {
public:
    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;
    /// Seconds from an arbitrary start; never runs backwards.
    virtual double now() const noexcept = 0;
};

/// The machine's steady clock.
const Clock& steadyClock() noexcept;

/// A clock that stands until it is moved; for tests and simulations.
class ManualClock final : public Clock {
public:
    double now() const noexcept override { return now_; }
    void advance(double seconds) noexcept { now_ += seconds; }
    void set(double seconds) noexcept { now_ = seconds; }

private:
    double now_ = 0.0;
};

/// A main queue with timers. Tasks may be queued from any thread; everything runs in `pump`, on the thread
/// that calls it. Destroying the loop drops its tasks and timers with all that they hold.
class RunLoop {
public:
    explicit RunLoop(const Clock& clock = steadyClock());
    ~RunLoop();
    RunLoop(const RunLoop&) = delete;
    RunLoop& operator=(const RunLoop&) = delete;

    /// The process's default loop.
    static RunLoop& main();
    /// The loop of the innermost `Scope` on this thread, otherwise `main()`.
    static RunLoop& current() noexcept;

    /// Makes a loop the current one of this thread for the scope's length.
    class Scope {
    public:
        explicit Scope(RunLoop& loop) noexcept QOR_NONBLOCKING;
        ~Scope() noexcept QOR_NONBLOCKING;
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        RunLoop* before_;
    };

    /// Queues a task. Any thread; never blocks. Allocates one node.
    void async(Block<void()> task);

    /// A way to queue tasks that may outlive the loop.
    class Remote {
    public:
        /// Queues a task, or drops it if the loop is gone. Any thread; may wait for the loop's destructor.
        void async(Block<void()> task) const;

    private:
        friend class RunLoop;
        struct Target {
            std::mutex mutex;
            RunLoop* loop; // absent once the loop is gone
        };
        Ref<Target> target_;
    };
    /// Loop thread only.
    Remote remote();

    /// Runs the tasks that were queued before the call, in order, then each timer that is due, once. Tasks
    /// and timers run with this loop as the current one. Loop thread only. Returns whether anything ran.
    bool pump();
    /// With a clock that can be moved: moves it in the timers' own steps up to `seconds` later and pumps at
    /// each.
    void advance(ManualClock& clock, double seconds);

    /// Timers that are scheduled and valid. Loop thread only.
    std::size_t timerCount() const noexcept;
    /// Time of the next due timer by the loop's clock, if there is one.
    std::optional<double> nextDue() const noexcept;
    const Clock& clock() const noexcept { return *clock_; }

    /// Used by `NSTimer`.
    void add(Ref<NSTimer> timer);

private:
    struct Task {
        Block<void()> body;
        Task* next;
    };

    bool runTasks();
    bool runTimers();

    const Clock* clock_;
    std::atomic<Task*> incoming_{nullptr}; // newest first
    std::vector<Ref<NSTimer>> timers_;
    Remote remote_; // made when it is first asked for
};

/// Queues a task on the current loop: the platform's main dispatch queue.
inline void dispatchAsyncMain(Block<void()> task) {
    RunLoop::current().async(std::move(task));
}

} // namespace platform
