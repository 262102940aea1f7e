#include "AudioUnits/Apple Units/Effects/AUPeakLimiter.h"

#include "RecordingUnit.h"
#include "support/CapturedLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using namespace qor;
using test::SentParameter;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kCreated = "System Peak Limiter AudioUnit created and initialized.";
constexpr const char* kNotInitialized = "ERROR: Unit (peak limiter) not initialized.";

AUAudioUnitBus& anyBus() {
    static const Ref<AUAudioUnitBus> bus = AUAudioUnitBus::initWithFormat(AVAudioFormat(44100.0, 2)).value();
    return *bus;
}

TEST(AUPeakLimiter, AttackTimeOfATenthReadsBackAsThreeHundredths) {
    const test::CapturedLog log;
    AUPeakLimiter limiter;
    limiter.setAttackTime(0.1);
    EXPECT_EQ(limiter.attackTime(), 0.03);
}

TEST(AUPeakLimiter, DecayTimeOfATenthReadsBackAsSixHundredths) {
    const test::CapturedLog log;
    AUPeakLimiter limiter;
    limiter.setDecayTime(0.1);
    EXPECT_EQ(limiter.decayTime(), 0.06);
}

TEST(AUPeakLimiter, AttackTimeOfZeroReadsBackAsTheLowest) {
    const test::CapturedLog log;
    AUPeakLimiter limiter;
    limiter.setAttackTime(0.0);
    EXPECT_EQ(limiter.attackTime(), 0.001);
    limiter.setDecayTime(-1.0);
    EXPECT_EQ(limiter.decayTime(), 0.001);
}

TEST(AUPeakLimiter, PreGainTakesASmallValueUnchangedAndHoldsALargeOne) {
    const test::CapturedLog log;
    AUPeakLimiter limiter;
    limiter.setPreGain(-0.01);
    EXPECT_EQ(limiter.preGain(), -0.01);
    limiter.setPreGain(50.0);
    EXPECT_EQ(limiter.preGain(), 40.0);
    limiter.setPreGain(-50.0);
    EXPECT_EQ(limiter.preGain(), -40.0);
}

TEST(AUPeakLimiter, ValuesAtTheBoundsStay) {
    const test::CapturedLog log;
    AUPeakLimiter limiter;
    for (const double bound : {0.001, 0.03}) {
        limiter.setAttackTime(bound);
        EXPECT_EQ(limiter.attackTime(), bound);
    }
    for (const double bound : {0.001, 0.06}) {
        limiter.setDecayTime(bound);
        EXPECT_EQ(limiter.decayTime(), bound);
    }
    for (const double bound : {-40.0, 40.0}) {
        limiter.setPreGain(bound);
        EXPECT_EQ(limiter.preGain(), bound);
    }
}

TEST(AUPeakLimiter, ANaNPassesTheComparisonsAndTheUnitRefusesIt) {
    const test::CapturedLog log;
    AUPeakLimiter limiter;
    limiter.setPreGain(std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(std::isnan(limiter.preGain()));
    float value = -1.0F;
    ASSERT_EQ(AudioUnitGetParameter(limiter.internalEffect->audioUnit(), 2, 0, 0, value), noErr);
    EXPECT_EQ(value, 0.0F);
}

TEST(AUPeakLimiter, TheInitialValuesLieInsideTheClampsAndAreSentInOrder) {
    const test::CapturedLog log;
    const test::RecordedLimiters recorded;
    AUPeakLimiter limiter;
    EXPECT_THAT(recorded.sent,
                ElementsAre(SentParameter{0, 0, 0, 0.012F, 0}, SentParameter{1, 0, 0, 0.024F, 0},
                            SentParameter{2, 0, 0, 0.0F, 0}));
    EXPECT_THAT(log.lines(), ElementsAre(kCreated));
    limiter.setAttackTime(limiter.attackTime());
    limiter.setDecayTime(limiter.decayTime());
    limiter.setPreGain(limiter.preGain());
    EXPECT_EQ(limiter.attackTime(), 0.012);
    EXPECT_EQ(limiter.decayTime(), 0.024);
    EXPECT_EQ(limiter.preGain(), 0.0);
}

TEST(AUPeakLimiter, EveryWriteSendsTheClampedValueNarrowed) {
    const test::CapturedLog log;
    test::RecordedLimiters recorded;
    AUPeakLimiter limiter;
    recorded.sent.clear();
    limiter.setAttackTime(0.1);
    limiter.setDecayTime(0.1);
    limiter.setPreGain(-0.01);
    EXPECT_THAT(recorded.sent, ElementsAre(SentParameter{0, 0, 0, 0.03F, 0}, SentParameter{1, 0, 0, 0.06F, 0},
                                           SentParameter{2, 0, 0, -0.01F, 0}));
}

TEST(AUPeakLimiter, TheSystemUnitHoldsTheInitialValues) {
    const test::CapturedLog log;
    const AUPeakLimiter limiter;
    const auto tree = limiter.auAudioUnit()->parameterTree();
    EXPECT_EQ(tree->parameterWithAddress(0)->value(), 0.012F);
    EXPECT_EQ(tree->parameterWithAddress(1)->value(), 0.024F);
    EXPECT_EQ(tree->parameterWithAddress(2)->value(), 0.0F);
}

TEST(AUPeakLimiter, WithoutASystemUnitTheClampsWorkAndNothingIsRaised) {
    const test::CapturedLog log;
    const test::NoLimiter none;
    AUPeakLimiter limiter;
    EXPECT_THAT(log.lines(), ElementsAre(kNotInitialized));
    ASSERT_NE(limiter.internalEffect, nullptr);
    EXPECT_EQ(limiter.auAudioUnit(), nullptr);
    limiter.setAttackTime(0.1);
    EXPECT_EQ(limiter.attackTime(), 0.03);
}

TEST(AUPeakLimiterDeathTest, AnAbsentNodeStopsTheProcess) {
    const test::CapturedLog log;
    AUPeakLimiter limiter;
    limiter.internalEffect = nullptr;
    EXPECT_DEATH((void)limiter.auAudioUnit(),
                 "Unexpectedly found nil while implicitly unwrapping an Optional value");
    EXPECT_DEATH(limiter.setPreGain(0.0),
                 "Unexpectedly found nil while implicitly unwrapping an Optional value");
}

TEST(AUPeakLimiter, RunWithoutASystemUnitSaysSoAndStops) {
    test::CapturedLog log;
    const test::NoLimiter none;
    RunLoop loop;
    const RunLoop::Scope scope(loop);
    AUPeakLimiter limiter;
    log.clear();
    limiter.run(anyBus());
    EXPECT_THAT(log.lines(), ElementsAre(kNotInitialized));
    EXPECT_FALSE(loop.pump());
}

TEST(AUPeakLimiter, RunSpeaksAtOnceAndDumpsLater) {
    test::CapturedLog log;
    RunLoop loop;
    const RunLoop::Scope scope(loop);
    AUPeakLimiter limiter;
    log.clear();
    limiter.run(anyBus());
    EXPECT_THAT(log.lines(),
                ElementsAre("CREATING AVAUDIO ENGINE ..", "ATTACHING EFFECT ..", "DETACHING EFFECT .."));
    EXPECT_EQ(limiter.internalEffect->engine(), nullptr);
    log.clear();
    EXPECT_TRUE(loop.pump());
    ASSERT_FALSE(log.lines().empty());
    EXPECT_EQ(log.lines().front(),
              "AUPeakLimiter::nodeDiagnostics(): ---------------------------------------------");
}

class LimiterWithWatchedEngine final : public AUPeakLimiter {
public:
    Weak<AVAudioEngine> watched;

private:
    Ref<AVAudioEngine> makeEngine() override {
        auto made = AUPeakLimiter::makeEngine();
        watched = made;
        return made;
    }
};

TEST(AUPeakLimiter, TheEngineStaysAfterRun) {
    const test::CapturedLog log;
    LimiterWithWatchedEngine limiter;
    limiter.run(anyBus());
    ASSERT_NE(limiter.watched.lock(), nullptr);
    EXPECT_TRUE(limiter.watched.lock()->attachedNodes().empty());
}

class LimiterWithoutEngine final : public AUPeakLimiter {
    Ref<AVAudioEngine> makeEngine() override { return nullptr; }
};

TEST(AUPeakLimiter, RunWithoutAnEngineSaysSoAndStops) {
    test::CapturedLog log;
    LimiterWithoutEngine limiter;
    log.clear();
    limiter.run(anyBus());
    EXPECT_THAT(log.lines(), ElementsAre("CREATING AVAUDIO ENGINE ..",
                                         "ERROR: Could not initialize internal audio engine."));
}

TEST(AUPeakLimiter, SafeprintWritesFromTheMainQueue) {
    test::CapturedLog log;
    RunLoop loop;
    const RunLoop::Scope scope(loop);
    AUPeakLimiter limiter;
    log.clear();
    limiter.safeprint("later");
    EXPECT_THAT(log.lines(), IsEmpty());
    loop.pump();
    EXPECT_THAT(log.lines(), ElementsAre("later"));
}

} // namespace
