#include "Common/AnimationSequencer.h"
#include "Common/AnimatorChain.h"
#include "Common/AnimatorStack.h"
#include "support/CapturedLog.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>
#include <vector>

using qor::AnimationSequencer;
using qor::Animator;
using qor::AnimatorChain;
using qor::AnimatorStack;
using qor::makeRef;
using qor::ManualClock;
using qor::Ref;
using qor::RunLoop;

namespace {

Ref<Animator> item(std::int64_t frames) {
    return makeRef<Animator>(0.0f, 1.0f, frames);
}

struct Loop {
    ManualClock clock;
    RunLoop loop{clock};
    RunLoop::Scope scope{loop};
};

} // namespace

TEST(AnimatorStack, StartsWithItsDefaults) {
    const AnimatorStack stack;
    EXPECT_FALSE(stack._timer);
    EXPECT_EQ(stack.getCount(), 0);
    EXPECT_EQ(stack.interval, 0.005f);
    EXPECT_FALSE(stack.onAnimation);
    EXPECT_FALSE(stack.onFinished);
    EXPECT_FALSE(stack.onRemovedItem);
}

TEST(AnimatorStack, TellsOfAnItemBeforeItsStepAndOfTheEndBeforeItStops) {
    AnimatorStack stack;
    const Ref<Animator> only = item(1);
    std::vector<std::int64_t> steps;
    stack.add(only);
    stack.onAnimation = [&](AnimatorStack&, Animator& now) { steps.push_back(now._step); };
    stack.animate();
    EXPECT_EQ(steps, std::vector<std::int64_t>{0});
    stack.animate();
    stack.add(makeRef<Animator>()); // finished from the start: nothing is busy
    std::int64_t countAtTheEnd = -1;
    stack.onFinished = [&](AnimatorStack& self) { countAtTheEnd = self.getCount(); };
    stack.animate();
    EXPECT_EQ(countAtTheEnd, 1);
    EXPECT_EQ(stack.getCount(), 0);
}

TEST(AnimatorStack, WithoutItemsFinishesOnTheFirstTick) {
    Loop run;
    const auto stack = makeRef<AnimatorStack>();
    int finished = 0;
    stack->onFinished = [&](AnimatorStack&) { ++finished; };
    stack->start();
    run.loop.advance(run.clock, 0.0055);
    EXPECT_EQ(finished, 1);
    EXPECT_EQ(run.loop.timerCount(), 0u);
}

TEST(AnimatorStack, LeavesAnItemAddedDuringATickToTheNext) {
    AnimatorStack stack;
    stack.add(item(5));
    const Ref<Animator> late = item(5);
    stack.onAnimation = [&](AnimatorStack& self, Animator&) {
        if (self.getCount() == 1) {
            self.add(late);
        }
    };
    stack.animate();
    EXPECT_EQ(late->_step, 0);
    stack.animate();
    EXPECT_EQ(late->_step, 1);
}

TEST(AnimatorStack, EndsOneTickAfterItsLastItem) {
    AnimatorStack stack;
    std::vector<Animator*> removed;
    int finished = 0;
    stack.onRemovedItem = [&](AnimatorStack&, Animator& gone) { removed.push_back(&gone); };
    stack.onFinished = [&](AnimatorStack&) { ++finished; };
    const Ref<Animator> brief = item(1);
    const Ref<Animator> longer = item(3);
    stack.add(longer);
    stack.add(brief);
    stack.add(nullptr);
    EXPECT_EQ(stack.getCount(), 2);
    stack.animate();
    stack.animate();
    EXPECT_EQ(removed, std::vector<Animator*>{brief.get()});
    stack.animate();
    stack.animate();
    EXPECT_EQ(removed.size(), 2u);
    EXPECT_TRUE(stack.getItems().empty());
    EXPECT_EQ(finished, 0);
    stack.animate();
    EXPECT_EQ(finished, 1);
}

TEST(AnimatorStack, StopRemovesAllItems) {
    Loop run;
    const auto stack = makeRef<AnimatorStack>();
    stack->add(item(5));
    stack->start();
    stack->stop();
    EXPECT_EQ(stack->getCount(), 0);
    EXPECT_FALSE(stack->_timer);
    EXPECT_EQ(run.loop.timerCount(), 0u);
}

TEST(AnimatorStack, KeepsFinishedItemsThatItNeverRan) {
    AnimatorStack stack;
    stack.add(makeRef<Animator>());
    int finished = 0;
    stack.onFinished = [&](AnimatorStack& self) { finished += self.getCount() == 1 ? 1 : 100; };
    stack.animate();
    EXPECT_EQ(finished, 1);
}

TEST(AnimatorChain, StartsWithItsDefaults) {
    const AnimatorChain chain;
    EXPECT_FALSE(chain._timer);
    EXPECT_EQ(chain.getCount(), 0);
    EXPECT_EQ(chain._currentIndex, 0);
    EXPECT_EQ(chain._direction, 1);
    EXPECT_EQ(chain.interval, 0.005f);
    EXPECT_FALSE(chain.async);
    EXPECT_FALSE(chain.onAnimation);
    EXPECT_FALSE(chain.onFinished);
}

TEST(AnimatorChain, PlaysEachItemToItsEndBeforeTheNextAndTellsOfItFirst) {
    AnimatorChain chain;
    const Ref<Animator> first = item(1);
    const Ref<Animator> second = item(1);
    chain.add(first);
    chain.add(nullptr);
    chain.add(second);
    EXPECT_EQ(chain.getCount(), 2);
    std::vector<std::pair<Animator*, std::int64_t>> told;
    chain.onAnimation = [&](AnimatorChain&, Animator& now) { told.emplace_back(&now, now._step); };
    chain.animate();
    chain.animate();
    EXPECT_EQ(chain.getCurrentIndex(), 1);
    EXPECT_EQ(second->_step, 0);
    chain.animate();
    EXPECT_EQ(told, (std::vector<std::pair<Animator*, std::int64_t>>{
                        {first.get(), 0}, {first.get(), 1}, {second.get(), 0}}));
}

TEST(AnimatorChain, SetBackwardsTakesOnlyTheDirection) {
    AnimatorChain chain;
    chain._currentIndex = 2;
    chain.setBackwards(true);
    EXPECT_EQ(chain._direction, -1);
    chain.setBackwards(false);
    EXPECT_EQ(chain._direction, 1);
    EXPECT_EQ(chain.getCurrentIndex(), 2);
}

TEST(AnimatorChain, OfThreeFinishedItemsMovesOnePlaceATickAndEndsOnTheThird) {
    AnimatorChain chain;
    int finished = 0;
    chain.onFinished = [&](AnimatorChain&) { ++finished; };
    for (int i = 0; i < 3; ++i) {
        chain.add(makeRef<Animator>());
    }
    chain.animate();
    EXPECT_EQ(chain.getCurrentIndex(), 1);
    chain.animate();
    EXPECT_EQ(chain.getCurrentIndex(), 2);
    EXPECT_EQ(finished, 0);
    chain.animate();
    EXPECT_EQ(finished, 1);
    EXPECT_EQ(chain.getCurrentIndex(), 0);
    EXPECT_EQ(chain.getCount(), 3);
}

TEST(AnimatorChain, SetBackwardsBeforeItStartsStepsTheFirstItemOnceAndEnds) {
    AnimatorChain chain;
    int finished = 0;
    chain.onFinished = [&](AnimatorChain&) { ++finished; };
    for (int i = 0; i < 3; ++i) {
        chain.add(item(4));
    }
    chain.setBackwards(true);
    chain.animate();
    EXPECT_EQ(finished, 1);
    EXPECT_EQ(chain._animators[0]->_step, 1);
    EXPECT_EQ(chain._animators[2]->_step, 0);
}

TEST(AnimatorChain, TurnedBackwardsInMidRunPlaysDownAndEndsOnReachingTheFirst) {
    AnimatorChain chain;
    std::vector<Animator*> played;
    int finished = 0;
    chain.onAnimation = [&](AnimatorChain&, Animator& now) { played.push_back(&now); };
    chain.onFinished = [&](AnimatorChain&) { ++finished; };
    for (int i = 0; i < 3; ++i) {
        chain.add(makeRef<Animator>());
    }
    chain.animate();
    chain.animate();
    ASSERT_EQ(chain.getCurrentIndex(), 2);
    played.clear();
    chain.setBackwards(true);
    chain.animate();
    EXPECT_EQ(finished, 0);
    chain.animate();
    EXPECT_EQ(finished, 1);
    EXPECT_EQ(played, (std::vector<Animator*>{chain._animators[2].get(), chain._animators[1].get()}));
}

TEST(AnimatorChain, CorrectsAnIndexBehindTheEndToTheLastItem) {
    AnimatorChain chain;
    for (int i = 0; i < 3; ++i) {
        chain.add(item(4));
    }
    chain._currentIndex = 7;
    chain.animate();
    EXPECT_EQ(chain.getCurrentIndex(), 2);
    EXPECT_EQ(chain._animators[2]->_step, 1);
    chain._currentIndex = -1;
    chain.animate();
    EXPECT_EQ(chain._animators[2]->_step, 2);
}

TEST(AnimatorChain, OfTwoHasNoCurrentItem) {
    AnimatorChain chain;
    chain.add(item(1));
    chain.add(item(1));
    EXPECT_FALSE(chain.getCurrentItem());
    chain._currentIndex = 1;
    EXPECT_FALSE(chain.getCurrentItem());
    chain.add(item(1));
    EXPECT_EQ(chain.getCurrentItem(), chain._animators[1]);
}

TEST(AnimatorChain, WithoutItemsWarnsAndRunsOn) {
    Loop run;
    const test::CapturedLog log;
    const auto chain = makeRef<AnimatorChain>();
    chain->start();
    run.loop.advance(run.clock, 0.0105);
    EXPECT_EQ(log.lines(),
              (std::vector<std::string>(2, "WARNUNG: Es sind keine Animator Objekte definiert.")));
    EXPECT_EQ(run.loop.timerCount(), 1u);
    chain->stop();
}

TEST(AnimatorChain, AsynchronousStartsOneItemATickOnItsOwnTimer) {
    Loop run;
    const auto chain = makeRef<AnimatorChain>();
    chain->async = true;
    chain->interval = 0.01f;
    for (int i = 0; i < 3; ++i) {
        chain->add(makeRef<Animator>(0.0f, 1.0f, 1000, 0.002f));
    }
    chain->start();
    run.loop.advance(run.clock, 0.0105);
    EXPECT_EQ(run.loop.timerCount(), 2u);
    run.loop.advance(run.clock, 0.010);
    EXPECT_EQ(run.loop.timerCount(), 3u);
    run.loop.advance(run.clock, 0.010);
    EXPECT_FALSE(chain->_timer);
    EXPECT_EQ(run.loop.timerCount(), 3u);
    EXPECT_GT(chain->_animators[0]->_step, chain->_animators[2]->_step);
}

TEST(AnimatorChain, RemovesTheFirstSuchItemAndIgnoresOthers) {
    AnimatorChain chain;
    const Ref<Animator> twice = item(1);
    chain.add(twice);
    chain.add(item(1));
    chain.add(twice);
    chain._currentIndex = 2;
    chain.remove(nullptr);
    chain.remove(item(1));
    EXPECT_EQ(chain.getCount(), 3);
    chain.remove(twice);
    EXPECT_EQ(chain.getCount(), 2);
    EXPECT_EQ(chain._animators[1], twice);
    EXPECT_EQ(chain.getCurrentIndex(), 2);
    chain.removeAll();
    EXPECT_EQ(chain.getCount(), 0);
    EXPECT_EQ(chain.getCurrentIndex(), 0);
}

TEST(AnimatorChainDeathTest, AnOverflowOfTheIndexEndsTheProcess) {
    AnimatorChain chain;
    chain.add(makeRef<Animator>());
    chain.onAnimation = [](AnimatorChain& self, Animator&) {
        self._currentIndex = std::numeric_limits<std::int64_t>::max();
    };
    EXPECT_DEATH(chain.animate(), "overflow");
}

TEST(AnimationSequencer, StartsWithItsDefaults) {
    const AnimationSequencer sequencer;
    EXPECT_FALSE(sequencer._timer);
    EXPECT_EQ(sequencer.getCurrentFrame(), 0);
    EXPECT_EQ(sequencer._maxFrames, 0);
    EXPECT_EQ(sequencer.getCount(), 0);
    EXPECT_EQ(sequencer.getCurrentCount(), 0);
    EXPECT_EQ(sequencer.getCurrentIndex(), 0);
    EXPECT_FALSE(sequencer._suspended);
    EXPECT_EQ(sequencer.interval, 0.005f);
    EXPECT_FALSE(sequencer.onAnimation);
    EXPECT_FALSE(sequencer.onFinished);
}

TEST(AnimationSequencer, ScansOnFromTheLastItemThatItFoundAndSchedulesEachOnce) {
    AnimationSequencer sequencer;
    for (const std::int64_t at : {0, 1, 9}) {
        sequencer.add(item(20), at);
    }
    sequencer._currentFrame = 1;
    sequencer.findAnimators();
    EXPECT_EQ(sequencer.getCurrentIndex(), 1);
    sequencer.findAnimators();
    EXPECT_EQ(sequencer.getCurrentIndex(), 1);
    EXPECT_EQ(sequencer._animatedItems,
              (std::vector<Ref<Animator>>{sequencer._animators[0], sequencer._animators[1]}));
}

TEST(AnimationSequencer, TellsOfAnItemBeforeItsStepAndDropsItWhenItIsDone) {
    AnimationSequencer sequencer;
    std::vector<std::int64_t> steps;
    sequencer.onAnimation = [&](AnimationSequencer&, Animator& now) { steps.push_back(now._step); };
    sequencer.add(item(1), 0);
    sequencer.animate();
    EXPECT_EQ(sequencer.getCurrentCount(), 1);
    sequencer.animate();
    EXPECT_EQ(steps, (std::vector<std::int64_t>{0, 1}));
    EXPECT_EQ(sequencer.getCurrentCount(), 0);
}

TEST(AnimationSequencer, RemoveAllLeavesTheTimerRunning) {
    Loop run;
    const test::CapturedLog log;
    const auto sequencer = makeRef<AnimationSequencer>();
    sequencer->add(item(5), 0);
    sequencer->start();
    sequencer->removeAll();
    run.loop.advance(run.clock, 0.0125);
    EXPECT_EQ(sequencer->getCurrentFrame(), 2);
    EXPECT_EQ(log.lines().size(), 2U); // a warning a tick
    EXPECT_EQ(run.loop.timerCount(), 1u);
    sequencer->stop();
}

TEST(AnimationSequencer, EndsOnTheTickThatReachesTheEndOfTheTimeLine) {
    Loop run;
    const auto sequencer = makeRef<AnimationSequencer>();
    std::vector<std::int64_t> finishedAt;
    sequencer->onFinished = [&](AnimationSequencer& self) { finishedAt.push_back(self._currentFrame); };
    sequencer->add(item(5), 10);
    sequencer->add(item(5), 0);
    EXPECT_EQ(sequencer->_maxFrames, 15);
    EXPECT_EQ(sequencer->_animators[0]->_startFrame, 0);
    sequencer->start();
    run.loop.advance(run.clock, 14.5 * static_cast<double>(0.005f));
    EXPECT_TRUE(finishedAt.empty());
    EXPECT_EQ(sequencer->getCurrentCount(), 1);
    run.loop.advance(run.clock, static_cast<double>(0.005f));
    EXPECT_EQ(finishedAt, std::vector<std::int64_t>{15});
    EXPECT_EQ(run.loop.timerCount(), 0u);
    EXPECT_EQ(sequencer->getCurrentFrame(), 0);
    EXPECT_EQ(sequencer->getCurrentCount(), 0); // five frames from 10 take six ticks: it ended on this one
}

TEST(AnimationSequencer, StopKeepsTheItemsThatRun) {
    AnimationSequencer sequencer;
    sequencer.add(item(5), 0);
    sequencer.animate();
    sequencer.stop();
    EXPECT_EQ(sequencer.getCurrentCount(), 1);
    EXPECT_EQ(sequencer.getCount(), 1);
}

TEST(AnimationSequencer, HoldsItemsOfOneStartFrame) {
    AnimationSequencer sequencer;
    const Ref<Animator> a = item(2);
    const Ref<Animator> b = item(2);
    sequencer.add(a, 3);
    sequencer.add(b, 3);
    sequencer._currentFrame = 3;
    sequencer.animate();
    EXPECT_EQ(a->_step, 1);
    EXPECT_EQ(b->_step, 1);
    EXPECT_EQ(sequencer.getCurrentCount(), 2);
}

TEST(AnimationSequencer, CountsOnWhilePausedSoThatLaterItemsBeginAtOnce) {
    Loop run;
    const auto sequencer = makeRef<AnimationSequencer>();
    sequencer->interval = 0.01f;
    for (int at = 3; at < 8; ++at) {
        sequencer->add(item(20), at);
    }
    sequencer->start();
    run.loop.advance(run.clock, 0.015);
    EXPECT_EQ(sequencer->getCurrentFrame(), 1);
    EXPECT_EQ(sequencer->getCurrentCount(), 0);
    sequencer->pause();
    run.loop.advance(run.clock, 0.1);
    EXPECT_EQ(sequencer->getCurrentFrame(), 11);
    EXPECT_EQ(sequencer->getCurrentCount(), 0);
    sequencer->continue_();
    run.loop.advance(run.clock, 0.01);
    EXPECT_EQ(sequencer->getCurrentCount(), 5);
    sequencer->stop();
}

TEST(AnimationSequencer, ReportsAnAbsentItemAndAnEmptyTimeLine) {
    const test::CapturedLog log;
    AnimationSequencer sequencer;
    sequencer.animate();
    sequencer.add(nullptr, 4);
    sequencer._animators.push_back(nullptr);
    sequencer.findAnimators();
    EXPECT_EQ(log.lines(), (std::vector<std::string>{"WARNUNG: Es sind keine Animator Objekte definiert.",
                                                     "FEHLER: Das Animator Objekt ist ungültig.",
                                                     "ERROR: Animationsobjekt is undefiniert!"}));
}

TEST(AnimationSequencer, NeverShrinksItsTimeLineByRemoving) {
    AnimationSequencer sequencer;
    const Ref<Animator> last = item(5);
    sequencer.add(item(5), 0);
    sequencer.add(last, 10);
    sequencer.remove(last);
    EXPECT_EQ(sequencer.getCount(), 1);
    EXPECT_EQ(sequencer._maxFrames, 15);
    sequencer.removeAll();
    EXPECT_EQ(sequencer._maxFrames, 0);
}

TEST(AnimationSequencer, SeekDropsWhatStartedBeforeAndRewindsTheRest) {
    AnimationSequencer sequencer;
    const Ref<Animator> early = item(5);
    const Ref<Animator> late = item(5);
    sequencer.add(early, 0);
    sequencer.add(late, 10);
    late->stop();
    sequencer.seek(10);
    EXPECT_TRUE(early->isFinished());
    EXPECT_FALSE(late->isFinished());
    EXPECT_EQ(sequencer.getCurrentIndex(), 1);
    EXPECT_EQ(sequencer.getCurrentFrame(), 10);
    sequencer.seek(16);
    EXPECT_EQ(sequencer.getCurrentFrame(), 0);
    EXPECT_EQ(sequencer.getCurrentIndex(), 0);
    EXPECT_FALSE(late->isFinished());
}

TEST(AnimationSequencer, RewindRewindsEveryItemAndLeavesThePosition) {
    AnimationSequencer sequencer;
    const Ref<Animator> a = item(5);
    sequencer.add(a, 0);
    a->stop();
    sequencer._currentFrame = 3;
    sequencer.rewind();
    EXPECT_FALSE(a->isFinished());
    EXPECT_EQ(sequencer.getCurrentFrame(), 3);
}

TEST(AnimationSequencerDeathTest, ANegativeScanPositionEndsTheProcess) {
    AnimationSequencer sequencer;
    sequencer.add(item(5), 0);
    sequencer._currentIndex = -1;
    EXPECT_DEATH(sequencer.animate(), "Index out of range");
}

TEST(AnimationSequencerDeathTest, BrokenNumbersEndTheProcess) {
    constexpr auto kMost = std::numeric_limits<std::int64_t>::max();
    AnimationSequencer sequencer;
    sequencer.add(item(5), 0);
    sequencer._currentIndex = 2;
    EXPECT_DEATH(sequencer.animate(), "Range requires lowerBound <= upperBound");
    EXPECT_DEATH(sequencer.add(item(5), kMost), "overflow");
    EXPECT_DEATH(
        {
            Loop run;
            const auto counting = makeRef<AnimationSequencer>();
            counting->_currentFrame = kMost;
            counting->start();
            run.loop.advance(run.clock, 0.01);
        },
        "overflow");
}
