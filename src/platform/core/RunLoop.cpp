#include "platform/core/RunLoop.h"

#include "platform/core/NSTimer.h"

#include <algorithm>
#include <chrono>

namespace platform {

namespace {

class SteadyClock final : public Clock {
public:
    double now() const noexcept override {
        return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
    }
};

// Laid out with the thread. Otherwise, in an object that is loaded late, a thread's first look at it would
// allocate, and the render thread looks.
[[gnu::tls_model("initial-exec")]] constinit thread_local RunLoop* scopedLoop = nullptr;

} // namespace

const Clock& steadyClock() noexcept {
    static const SteadyClock clock;
    return clock;
}

RunLoop::RunLoop(const Clock& clock) : clock_(&clock) {}

RunLoop::~RunLoop() {
    if (remote_.target_ != nullptr) {
        const std::lock_guard lock(remote_.target_->mutex);
        remote_.target_->loop = nullptr;
    }
    // What a task or timer holds may own further timers of this loop, so nothing is reachable while it is
    // dropped.
    std::vector<Ref<NSTimer>> timers = std::move(timers_);
    timers_.clear();
    for (const Ref<NSTimer>& timer : timers) {
        timer->invalidate();
    }
    timers.clear();
    for (Task* task = incoming_.exchange(nullptr, std::memory_order_acquire); task != nullptr;) {
        Task* next = task->next;
        delete task;
        task = next;
    }
}

RunLoop& RunLoop::main() {
    static RunLoop loop;
    return loop;
}

RunLoop& RunLoop::current() noexcept {
    return scopedLoop != nullptr ? *scopedLoop : main();
}

QOR_UNSEEN_BEGIN // the thread's own variable

RunLoop::Scope::Scope(RunLoop& loop) noexcept : before_(scopedLoop) {
    scopedLoop = &loop;
}

RunLoop::Scope::~Scope() noexcept {
    scopedLoop = before_;
}

QOR_UNSEEN_END

void RunLoop::async(Block<void()> task) {
    Task* node = new Task{std::move(task), incoming_.load(std::memory_order_relaxed)};
    while (!incoming_.compare_exchange_weak(node->next, node, std::memory_order_release,
                                            std::memory_order_relaxed)) {
    }
}

void RunLoop::Remote::async(Block<void()> task) const {
    const std::lock_guard lock(target_->mutex);
    if (target_->loop != nullptr) {
        target_->loop->async(std::move(task));
    }
}

RunLoop::Remote RunLoop::remote() {
    if (remote_.target_ == nullptr) {
        remote_.target_ = makeRef<Remote::Target>();
        remote_.target_->loop = this;
    }
    return remote_;
}

bool RunLoop::pump() {
    const Scope scope(*this);
    const bool ranTasks = runTasks();
    const bool ranTimers = runTimers();
    return ranTasks || ranTimers;
}

bool RunLoop::runTasks() {
    Task* newestFirst = incoming_.exchange(nullptr, std::memory_order_acquire);
    Task* task = nullptr;
    while (newestFirst != nullptr) {
        Task* next = newestFirst->next;
        newestFirst->next = task;
        task = newestFirst;
        newestFirst = next;
    }
    const bool any = task != nullptr;
    while (task != nullptr) {
        Task* next = task->next;
        task->body();
        delete task;
        task = next;
    }
    return any;
}

bool RunLoop::runTimers() {
    const double now = clock_->now();
    bool any = false;
    const std::vector<Ref<NSTimer>> scheduled = timers_; // callbacks may add and invalidate timers
    for (const Ref<NSTimer>& timer : scheduled) {
        any = timer->fireIfDue(now) || any;
    }
    std::erase_if(timers_, [](const Ref<NSTimer>& timer) { return !timer->isValid(); });
    return any;
}

void RunLoop::advance(ManualClock& clock, double seconds) {
    const double end = clock.now() + seconds;
    pump();
    for (std::optional<double> due = nextDue(); due && *due <= end; due = nextDue()) {
        clock.set(std::max(*due, clock.now()));
        pump();
    }
    clock.set(end);
    pump();
}

std::size_t RunLoop::timerCount() const noexcept {
    return static_cast<std::size_t>(std::count_if(
        timers_.begin(), timers_.end(), [](const Ref<NSTimer>& timer) { return timer->isValid(); }));
}

std::optional<double> RunLoop::nextDue() const noexcept {
    std::optional<double> due;
    for (const Ref<NSTimer>& timer : timers_) {
        if (timer->isValid() && (!due || timer->fireTime() < *due)) {
            due = timer->fireTime();
        }
    }
    return due;
}

void RunLoop::add(Ref<NSTimer> timer) {
    timers_.push_back(std::move(timer));
}

} // namespace platform
