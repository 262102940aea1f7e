#include "Common/Animator.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

using qor::Animator;
using qor::EnumEasing;
using qor::makeRef;
using qor::ManualClock;
using qor::Ref;
using qor::RunLoop;

namespace {

struct Calls {
    std::vector<float> animations;
    std::vector<float> finishes;
    int loops = 0;

    void listen(Animator& animator) {
        animator.onAnimation = [this](Animator&, float value) { animations.push_back(value); };
        animator.onFinished = [this](Animator&, float value) { finishes.push_back(value); };
        animator.onLoop = [this](Animator&) { ++loops; };
    }
};

} // namespace

TEST(Animator, StartsWithItsDefaults) {
    const Animator animator;
    EXPECT_EQ(animator._startFrame, 0);
    EXPECT_EQ(animator._frameCount, 0);
    EXPECT_FALSE(animator._timer);
    EXPECT_EQ(animator._source, 0.0f);
    EXPECT_EQ(animator._value, 0.0f);
    EXPECT_EQ(animator._destination, 0.0f);
    EXPECT_EQ(animator._amount, 0.0f);
    EXPECT_EQ(animator._frames, -1);
    EXPECT_EQ(animator._step, 0);
    EXPECT_EQ(animator._interval, 0.005f);
    EXPECT_EQ(animator._type(), EnumEasing::EASING_easeNone);
    EXPECT_FALSE(animator.looped);
    EXPECT_FALSE(animator.onAnimation);
    EXPECT_FALSE(animator.onFinished);
    EXPECT_FALSE(animator.onLoop);
    EXPECT_EQ(animator._action(1, 0.0f, 4.0f, 2), 2.0f);
    EXPECT_EQ(Animator(0.0f, 1.0f, 3)._interval, 0.009f);
}

TEST(Animator, SetupFillsEveryFieldAndDefaultsToNineMillisecondsAndAStraightLine) {
    Animator animator(1.0f, 2.0f, 9, 0.5f, EnumEasing::EASING_easeInSine);
    animator.animate();
    animator.setup(3.0f, 1.0f, 4);
    EXPECT_EQ(animator.getSourceValue(), 3.0f);
    EXPECT_EQ(animator.getDestinationValue(), 1.0f);
    EXPECT_EQ(animator.getValue(), 3.0f);
    EXPECT_EQ(animator._amount, -2.0f);
    EXPECT_EQ(animator._frames, 4);
    EXPECT_EQ(animator._frameCount, 4);
    EXPECT_EQ(animator._step, 0);
    EXPECT_EQ(animator._interval, 0.009f);
    EXPECT_EQ(animator._type(), EnumEasing::EASING_easeNone);
}

TEST(Animator, CountsTheLivingOnes) {
    const std::int64_t before = Animator::classCount;
    {
        const Animator one;
        const Animator two(0.0f, 1.0f, 3);
        EXPECT_EQ(Animator::classCount, before + 2);
    }
    EXPECT_EQ(Animator::classCount, before);
}

TEST(Animator, WithEqualSourceAndDestinationEndsOneTickLaterWithoutAnAnimationCall) {
    Animator animator;
    Calls calls;
    calls.listen(animator);
    animator.setup(2.0f, 2.0f, 10);
    EXPECT_EQ(animator._frames, 0);
    EXPECT_EQ(animator._frameCount, 10);
    animator.animate();
    EXPECT_TRUE(animator.isFinished());
    EXPECT_TRUE(calls.animations.empty());
    EXPECT_EQ(calls.finishes, std::vector<float>{2.0f});
}

TEST(Animator, KeepsANegativeFrameCountAndRunsWithNone) {
    Animator animator;
    animator.setup(0.0f, 1.0f, -5);
    EXPECT_EQ(animator._frameCount, -5);
    EXPECT_EQ(animator._frames, 0);
    animator.rewind();
    EXPECT_EQ(animator._frameCount, -5);
    EXPECT_EQ(animator._frames, 0);
}

TEST(Animator, OfThreeFramesReportsZeroOneTwoAndFinishesWithThree) {
    Animator animator(0.0f, 3.0f, 3);
    Calls calls;
    calls.listen(animator);
    for (int tick = 0; tick < 3; ++tick) {
        animator.animate();
    }
    EXPECT_TRUE(calls.finishes.empty());
    animator.animate();
    EXPECT_EQ(calls.animations, (std::vector<float>{0.0f, 1.0f, 2.0f}));
    EXPECT_EQ(calls.finishes, std::vector<float>{3.0f});
    animator.animate();
    EXPECT_EQ(calls.finishes.size(), 1u);
}

TEST(Animator, CallsTheListenerAheadOfTheStepAndTheEndAfterStopping) {
    Animator animator(0.0f, 1.0f, 1);
    std::vector<std::string> order;
    animator.onAnimation = [&](Animator& self, float) {
        order.push_back("animation at step " + std::to_string(self._step));
    };
    animator.onFinished = [&](Animator& self, float value) {
        order.push_back(self.isFinished() && self.getValue() == value ? "finished" : "finished too early");
    };
    animator.animate();
    animator.animate();
    EXPECT_EQ(order, (std::vector<std::string>{"animation at step 0", "finished"}));
}

TEST(Animator, ReportsTheTurningPointBeforeItTurns) {
    Animator animator(0.0f, 1.0f, 1);
    std::vector<float> sources;
    animator.looped = true;
    animator.onLoop = [&](Animator& self) { sources.push_back(self.getSourceValue()); };
    animator.animate();
    animator.animate();
    EXPECT_EQ(sources, std::vector<float>{0.0f});
}

TEST(Animator, TakesADerivedClasssCurve) {
    struct Steps : Animator {
        float easeInQuad(std::int64_t currentFrame, float, float, std::int64_t) const override {
            return static_cast<float>(100 * currentFrame);
        }
    };
    Steps animator;
    animator.setup(0.0f, 1.0f, 4, 0.01f, EnumEasing::EASING_easeInQuad);
    animator.animate();
    EXPECT_EQ(animator.getValue(), 100.0f);
}

TEST(Animator, LoopedSwapsItsEndsAfterTheThirdTickOfTwoFrames) {
    Animator animator(0.0f, 1.0f, 2, 0.02f, EnumEasing::EASING_easeInQuad);
    Calls calls;
    calls.listen(animator);
    animator.looped = true;
    animator.animate();
    animator.animate();
    EXPECT_EQ(calls.loops, 0);
    animator.animate();
    EXPECT_EQ(calls.loops, 1);
    EXPECT_EQ(animator.getSourceValue(), 1.0f);
    EXPECT_EQ(animator.getDestinationValue(), 0.0f);
    EXPECT_EQ(animator._frames, 2);
    EXPECT_EQ(animator._interval, 0.02f);
    EXPECT_EQ(animator._type(), EnumEasing::EASING_easeInQuad);
    EXPECT_TRUE(calls.finishes.empty());
    for (int tick = 0; tick < 3; ++tick) {
        animator.animate();
    }
    EXPECT_EQ(calls.loops, 2);
    EXPECT_EQ(animator.getSourceValue(), 0.0f);
}

TEST(Animator, IsFinishedWhenNewAndWhenStoppedButNotAfterSetup) {
    Animator animator;
    EXPECT_TRUE(animator.isFinished());
    animator.setup(0.0f, 1.0f, 4);
    EXPECT_FALSE(animator.isFinished());
    animator.stop();
    EXPECT_TRUE(animator.isFinished());
}

TEST(Animator, StopClearsLoopedAndKeepsTheValue) {
    Animator animator(0.0f, 4.0f, 4);
    animator.looped = true;
    animator.animate();
    animator.stop();
    EXPECT_FALSE(animator.looped);
    EXPECT_EQ(animator.getValue(), 1.0f);
    EXPECT_EQ(animator._step, 0);
    EXPECT_EQ(animator._frames, -1);
}

TEST(Animator, StartedTwiceLeavesATimerThatNobodyCanStop) {
    ManualClock clock;
    RunLoop loop(clock);
    const RunLoop::Scope scope(loop);
    const auto animator = makeRef<Animator>(0.0f, 1.0f, 1000, 0.01f);
    animator->start();
    animator->start();
    EXPECT_EQ(loop.timerCount(), 2u);
    loop.advance(clock, 0.0105);
    EXPECT_EQ(animator->_step, 2);
    animator->stop();
    EXPECT_EQ(loop.timerCount(), 1u);
    animator->setup(0.0f, 1.0f, 1000, 0.01f);
    loop.advance(clock, 0.01);
    EXPECT_EQ(animator->_step, 1);
}

TEST(Animator, OfTheLastTypeIsLinear) {
    Animator animator(0.0f, 8.0f, 8);
    animator.setType(EnumEasing::EASING_easeLast);
    for (int frame = 1; frame <= 8; ++frame) {
        animator.animate();
        EXPECT_EQ(animator.getValue(), static_cast<float>(frame));
    }
    EXPECT_EQ(animator._type(), EnumEasing::EASING_easeLast);
}

TEST(Animator, RewindLosesIntervalAndCurve) {
    Animator animator(0.0f, 1.0f, 6, 0.5f, EnumEasing::EASING_easeInSine);
    animator.stop();
    animator.rewind();
    EXPECT_FALSE(animator.isFinished());
    EXPECT_EQ(animator._frames, 6);
    EXPECT_EQ(animator._interval, 0.009f);
    EXPECT_EQ(animator._type(), EnumEasing::EASING_easeNone);
}

TEST(Animator, UndoJumpsToTheDestinationWithTheCallbacksOfOneFrame) {
    Animator animator(1.0f, 5.0f, 100, 0.5f, EnumEasing::EASING_easeInSine);
    Calls calls;
    calls.listen(animator);
    animator.undo();
    EXPECT_EQ(calls.animations, std::vector<float>{1.0f});
    EXPECT_EQ(calls.finishes, std::vector<float>{5.0f});
    EXPECT_EQ(animator.getValue(), 5.0f);
    EXPECT_TRUE(animator.isFinished());
    EXPECT_EQ(animator._frameCount, 1);
}

TEST(Animator, RunsOnItsTimerUntilTheEndAndIsThenReleased) {
    ManualClock clock;
    RunLoop loop(clock);
    const RunLoop::Scope scope(loop);
    const std::int64_t before = Animator::classCount;
    Calls calls;
    {
        const auto animator = makeRef<Animator>(0.0f, 1.0f, 10, 0.009f);
        calls.listen(*animator);
        animator->start();
    }
    loop.advance(clock, 10.5 * 0.009);
    EXPECT_EQ(calls.animations.size(), 10u);
    EXPECT_TRUE(calls.finishes.empty());
    loop.advance(clock, 0.009);
    EXPECT_EQ(calls.finishes, std::vector<float>{1.0f});
    EXPECT_EQ(loop.timerCount(), 0u);
    EXPECT_EQ(Animator::classCount, before);
}

TEST(Animator, ANewIntervalLeavesARunningTimerAlone) {
    ManualClock clock;
    RunLoop loop(clock);
    const RunLoop::Scope scope(loop);
    const auto animator = makeRef<Animator>(0.0f, 1.0f, 100, 0.01f);
    animator->start();
    animator->setInterval(1.0f);
    loop.advance(clock, 0.055);
    EXPECT_EQ(animator->_step, 5);
    animator->stop();
}

TEST(Animator, ThatOnlyItsTimerHoldsLivesUntilItHasStopped) {
    struct Witness : Animator {
        Witness(std::vector<std::string>& events, std::int64_t frames)
            : Animator(0.0f, 1.0f, frames), log(events) {}
        ~Witness() override { log.emplace_back("gone"); }
        void reset() override { log.emplace_back("reset"); }
        std::vector<std::string>& log;
    };
    ManualClock clock;
    RunLoop loop(clock);
    const RunLoop::Scope scope(loop);
    std::vector<std::string> events;
    {
        auto held = makeRef<Witness>(events, 5);
        Witness& animator = *held;
        animator.start();
        held.reset();
        animator.stop();
    }
    EXPECT_EQ(events, (std::vector<std::string>{"reset", "gone"}));
    events.clear();
    {
        auto held = makeRef<Witness>(events, 0);
        Witness& animator = *held;
        animator.onFinished = [&](Animator&, float) { events.emplace_back("finished"); };
        animator.start();
        held.reset();
        animator.animate();
    }
    EXPECT_EQ(events, (std::vector<std::string>{"reset", "finished", "gone"}));
    EXPECT_EQ(loop.timerCount(), 0u);
}

TEST(AnimatorDeathTest, WithoutACurveEndsTheProcess) {
    Animator animator(0.0f, 1.0f, 3);
    animator._action = nullptr;
    EXPECT_DEATH(animator.animate(), "Unexpectedly found nil while implicitly unwrapping an Optional value");
}

TEST(AnimatorDeathTest, AnOverflowOfTheStepEndsTheProcess) {
    Animator animator(0.0f, 1.0f, std::numeric_limits<std::int64_t>::max());
    animator.onAnimation = [](Animator& self, float) {
        self._step = std::numeric_limits<std::int64_t>::max();
    };
    EXPECT_DEATH(animator.animate(), "overflow");
}
