#include "platform/core/RunLoop.h"
#include "platform/core/NSTimer.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <vector>

using platform::ManualClock;
using platform::NSTimer;
using platform::Ref;
using platform::RunLoop;

TEST(RunLoop, RunsTasksInTheOrderOfTheirArrival) {
    RunLoop loop;
    std::vector<int> order;
    for (int i = 0; i < 5; ++i) {
        loop.async([&order, i] { order.push_back(i); });
    }
    EXPECT_TRUE(order.empty());
    EXPECT_TRUE(loop.pump());
    EXPECT_EQ(order, (std::vector<int>{0, 1, 2, 3, 4}));
    EXPECT_FALSE(loop.pump());
}

TEST(RunLoop, ATaskThatQueuesATaskLeavesItToTheNextPump) {
    RunLoop loop;
    int runs = 0;
    loop.async([&] {
        ++runs;
        platform::dispatchAsyncMain([&runs] { ++runs; });
    });
    loop.pump();
    EXPECT_EQ(runs, 1);
    loop.pump();
    EXPECT_EQ(runs, 2);
}

TEST(RunLoop, TakesTasksFromSeveralThreadsAndLosesNone) {
    RunLoop loop;
    int runs = 0;
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&] {
            for (int i = 0; i < 1000; ++i) {
                loop.async([&runs] { ++runs; });
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    loop.pump();
    EXPECT_EQ(runs, 4000);
}

TEST(RunLoop, ScopesDecideWhichLoopIsCurrent) {
    RunLoop outer;
    RunLoop inner;
    EXPECT_EQ(&RunLoop::current(), &RunLoop::main());
    {
        const RunLoop::Scope a(outer);
        EXPECT_EQ(&RunLoop::current(), &outer);
        {
            const RunLoop::Scope b(inner);
            EXPECT_EQ(&RunLoop::current(), &inner);
        }
        EXPECT_EQ(&RunLoop::current(), &outer);
    }
    EXPECT_EQ(&RunLoop::current(), &RunLoop::main());
}

TEST(RunLoop, DropsTasksAndTimersWithAllTheyHoldAtItsEnd) {
    auto held = std::make_shared<int>(1);
    {
        RunLoop loop;
        const RunLoop::Scope scope(loop);
        loop.async([held] { (void)held; });
        NSTimer::scheduledTimerWithTimeInterval(1.0, true, [held](NSTimer&) { (void)held; });
        EXPECT_EQ(held.use_count(), 3);
    }
    EXPECT_EQ(held.use_count(), 1);
}

TEST(RunLoop, ARemoteQueuesFromAnyThreadAndDropsTasksOnceTheLoopIsGone) {
    const auto alive = std::make_shared<int>(0);
    RunLoop::Remote remote;
    int runs = 0;
    {
        RunLoop loop;
        remote = loop.remote();
        std::thread([&remote, &runs] { remote.async([&runs] { ++runs; }); }).join();
        loop.pump();
        EXPECT_EQ(runs, 1);
    }
    remote.async([&runs, alive] { ++runs; });
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(alive.use_count(), 1);
}

TEST(NSTimer, FiresOnTheGridOfItsInterval) {
    ManualClock clock;
    RunLoop loop(clock);
    const RunLoop::Scope scope(loop);
    int fired = 0;
    const auto timer = NSTimer::scheduledTimerWithTimeInterval(0.25, true, [&fired](NSTimer&) { ++fired; });
    loop.pump();
    EXPECT_EQ(fired, 0);
    loop.advance(clock, 1.0);
    EXPECT_EQ(fired, 4);
    clock.advance(1.1); // four times missed: once now, then on the grid again
    loop.pump();
    EXPECT_EQ(fired, 5);
    EXPECT_DOUBLE_EQ(timer->fireTime(), 2.25);
}

TEST(NSTimer, EndsAfterOneFiringWhenItDoesNotRepeat) {
    ManualClock clock;
    RunLoop loop(clock);
    const RunLoop::Scope scope(loop);
    int fired = 0;
    NSTimer::scheduledTimerWithTimeInterval(0.5, false, [&fired](NSTimer&) { ++fired; });
    EXPECT_EQ(loop.timerCount(), 1U);
    loop.advance(clock, 5.0);
    EXPECT_EQ(fired, 1);
    EXPECT_EQ(loop.timerCount(), 0U);
}

TEST(NSTimer, CanBeInvalidatedFromWithinItsBlock) {
    ManualClock clock;
    RunLoop loop(clock);
    const RunLoop::Scope scope(loop);
    int fired = 0;
    NSTimer::scheduledTimerWithTimeInterval(0.5, true, [&fired](NSTimer& timer) {
        ++fired;
        timer.invalidate();
    });
    loop.advance(clock, 5.0);
    EXPECT_EQ(fired, 1);
}
