#include "Common/Impulse.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

using qor::Impulse;
using qor::makeRef;
using qor::ManualClock;
using qor::RunLoop;

TEST(Impulse, StartsFinishedWithItsDefaults) {
    const Impulse impulse;
    EXPECT_TRUE(impulse.isFinished());
    EXPECT_FALSE(impulse._timer);
    EXPECT_EQ(impulse._frames, -1);
    EXPECT_EQ(impulse._step, 0);
    EXPECT_EQ(impulse._amount, 0.0f);
    EXPECT_EQ(impulse._value, 0.0f);
    EXPECT_EQ(impulse._source, 0.0f);
    EXPECT_EQ(impulse._intensity, 0.75f);
    EXPECT_EQ(impulse._threshold, 0.001f);
    EXPECT_EQ(impulse._interval, 0.009f);
    EXPECT_EQ(impulse._minVal, -1024.0f);
    EXPECT_EQ(impulse._maxVal, 1024.0f);
    EXPECT_FALSE(impulse._collision);
    EXPECT_FALSE(impulse.onAnimation);
    EXPECT_FALSE(impulse.onFinished);
    EXPECT_FALSE(impulse.onCollision);
}

TEST(Impulse, SetupArmsItWithNineMillisecondsAndThreeQuartersByDefault) {
    Impulse impulse(7, 1.0f, 0.5f, 0.25f);
    impulse.animate();
    impulse.setup(-3, 2.0f);
    EXPECT_FALSE(impulse.isFinished());
    EXPECT_EQ(impulse._frames, 0);
    EXPECT_EQ(impulse._step, 0);
    EXPECT_EQ(impulse._source, 2.0f);
    EXPECT_EQ(impulse._amount, 2.0f);
    EXPECT_EQ(impulse._interval, 0.009f);
    EXPECT_EQ(impulse._intensity, 0.75f);
    EXPECT_EQ(impulse._value, 0.25f);
}

TEST(Impulse, HalvesItsStepsAndFinishesOnTheTenthFrameWithTheValueOfNine) {
    Impulse impulse(1, 1.0f, 0.009f, 0.5f);
    std::vector<float> values;
    std::vector<float> finished;
    impulse.onAnimation = [&](Impulse& self) { values.push_back(self._value); };
    impulse.onFinished = [&](Impulse& self) { finished.push_back(self._value); };
    for (int frame = 1; frame <= 9; ++frame) {
        impulse.animate();
        EXPECT_EQ(impulse._amount, exp2f(static_cast<float>(-frame)));
        EXPECT_EQ(impulse._value, 1.0f - exp2f(static_cast<float>(-frame)));
    }
    EXPECT_TRUE(finished.empty());
    impulse.animate();
    EXPECT_EQ(values.size(), 9u);
    EXPECT_EQ(finished, std::vector<float>{1.0f - exp2f(-9.0f)});
    EXPECT_TRUE(impulse.isFinished());
    EXPECT_EQ(impulse._value, 0.0f);
}

TEST(Impulse, MovesDownwardsByANegativeAmountAndEndsByItsMagnitude) {
    Impulse impulse(1, -1.0f, 0.009f, 0.5f);
    impulse.animate();
    EXPECT_EQ(impulse._value, -0.5f);
    EXPECT_FALSE(impulse.isFinished());
    for (int frame = 2; frame <= 9; ++frame) {
        impulse.animate();
        EXPECT_FALSE(impulse.isFinished());
    }
    impulse.animate();
    EXPECT_TRUE(impulse.isFinished());
}

TEST(Impulse, BouncesOffALimitBackToWhereItWas) {
    Impulse impulse(1, 4.0f, 0.009f, 0.75f);
    impulse.setMinMax(true, -1.0f, 1.0f);
    int collisions = 0;
    impulse.onCollision = [&](Impulse&) { ++collisions; };
    impulse.animate();
    EXPECT_EQ(collisions, 1);
    EXPECT_EQ(impulse._amount, -3.0f);
    EXPECT_EQ(impulse._value, 0.0f);
}

TEST(Impulse, TestsTheLowerLimitToo) {
    Impulse impulse(1, -4.0f);
    impulse.setMinMax(true, -3.0f, 8.0f);
    int collisions = 0;
    impulse.onCollision = [&](Impulse&) { ++collisions; };
    impulse.animate();
    EXPECT_EQ(collisions, 1);
    EXPECT_EQ(impulse._amount, 3.0f);
    EXPECT_EQ(impulse._value, 0.0f);
}

TEST(Impulse, ExactlyAtALimitBouncesOnceBetweenBothAndBeforeItsListenerHears) {
    Impulse impulse(1, 4.0f, 0.009f, 0.75f);
    impulse.setMinMax(true, 3.0f, 3.0f); // the first frame reaches 3: at both limits at once
    std::vector<float> heard;
    int collisions = 0;
    impulse.onCollision = [&](Impulse&) { ++collisions; };
    impulse.onAnimation = [&](Impulse& self) { heard.push_back(self._value); };
    impulse.animate();
    EXPECT_EQ(collisions, 1);
    EXPECT_EQ(impulse._amount, -3.0f);
    EXPECT_EQ(heard, std::vector<float>{0.0f});
    Impulse upwards(1, 4.0f, 0.009f, 0.75f);
    upwards.setMinMax(true, -1.0f, 3.0f);
    upwards.animate();
    EXPECT_EQ(upwards._value, 0.0f);
    Impulse downwards(1, -4.0f, 0.009f, 0.75f);
    downwards.setMinMax(true, -3.0f, 1.0f);
    downwards.animate();
    EXPECT_EQ(downwards._value, 0.0f);
}

TEST(Impulse, GoesOnWithAStepAsLargeAsTheThreshold) {
    Impulse impulse(1, 0.5f, 0.009f, 0.5f);
    impulse._threshold = 0.25f;
    impulse.animate();
    EXPECT_FALSE(impulse.isFinished());
    impulse.animate();
    EXPECT_TRUE(impulse.isFinished());
}

TEST(Impulse, IgnoresLimitsThatAreOff) {
    Impulse impulse(1, 4.0f);
    impulse.setMinMax(false, -1.0f, 1.0f);
    EXPECT_EQ(impulse._minVal, -1.0f);
    EXPECT_EQ(impulse._maxVal, 1.0f);
    impulse.animate();
    EXPECT_EQ(impulse._value, 3.0f);
}

TEST(Impulse, StopInTheMiddleClearsTheValueWithoutFinishing) {
    Impulse impulse(1, 4.0f);
    int finished = 0;
    impulse.onFinished = [&](Impulse&) { ++finished; };
    impulse.animate();
    impulse.stop();
    EXPECT_EQ(impulse._value, 0.0f);
    EXPECT_EQ(finished, 0);
    EXPECT_EQ(impulse.getSourceValue(), 4.0f);
    impulse.animate(); // no guard: a finished impulse ends again
    EXPECT_EQ(finished, 1);
}

TEST(Impulse, LastsAsLongWithNoFrames) {
    const auto frames = [](std::int64_t given) {
        Impulse impulse(given, 1.0f);
        int count = 0;
        while (!impulse.isFinished()) {
            impulse.animate();
            ++count;
        }
        return count;
    };
    EXPECT_EQ(frames(0), frames(1000));
    EXPECT_EQ(frames(-3), frames(1000));
}

TEST(Impulse, TendsTowardsThreeTimesTheAmountByDefault) {
    Impulse impulse(1, 2.0f);
    float last = 0.0f;
    impulse.onFinished = [&](Impulse& self) { last = self._value; };
    while (!impulse.isFinished()) {
        impulse.animate();
    }
    EXPECT_NEAR(last, 6.0f, 0.005f);
}

TEST(Impulse, GoesOnFromItsValueWhenSetUpAnew) {
    Impulse impulse(1, 2.0f, 0.009f, 0.5f);
    impulse.animate();
    impulse.setup(1, 2.0f, 0.009f, 0.5f);
    impulse.animate();
    EXPECT_EQ(impulse._value, 2.0f);
    EXPECT_EQ(impulse._step, 1);
}

TEST(Impulse, RunsOnItsTimer) {
    ManualClock clock;
    RunLoop loop(clock);
    const RunLoop::Scope scope(loop);
    int frames = 0;
    {
        const auto impulse = makeRef<Impulse>(1, 1.0f, 0.01f, 0.5f);
        impulse->onAnimation = [&](Impulse&) { ++frames; };
        impulse->start();
    }
    loop.advance(clock, 1.0);
    EXPECT_EQ(frames, 9);
    EXPECT_EQ(loop.timerCount(), 0u);
}

TEST(ImpulseDeathTest, AnOverflowOfTheStepEndsTheProcess) {
    Impulse impulse(1, 1.0f);
    impulse._step = std::numeric_limits<std::int64_t>::max();
    EXPECT_DEATH(impulse.animate(), "overflow");
}
