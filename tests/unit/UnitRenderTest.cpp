#include "unit/FakeHost.h"

#include <algorithm>
#include <set>

namespace {

using namespace qor;
using namespace test;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class UnitRender : public FakeHost {
protected:
    static constexpr std::uint32_t kFrames = 16;

    float left[kFrames] = {};
    float right[kFrames] = {};
    AudioBufferListStorage<2> out;
    AudioTimeStamp timestamp{.mSampleTime = 100.0, .mFlags = kAudioTimeStampSampleTimeValid};
    AudioUnitRenderActionFlags flags = 0;
    int pulls = 0;
    OSStatus pullStatus = noErr;
    AURenderPullInputBlock pull;
    AUInternalRenderBlock block;

    void SetUp() override {
        make();
        pull = [this](AudioUnitRenderActionFlags*, const AudioTimeStamp*, std::uint32_t frames, long,
                      AudioBufferList* list) {
            ++pulls;
            for (std::uint32_t c = 0; c < 2 && pullStatus == noErr; ++c) {
                for (std::uint32_t i = 0; i < frames; ++i) {
                    static_cast<float*>(list->mBuffers[c].mData)[i] = 0.25F;
                }
            }
            return pullStatus;
        };
        out.list.mBuffers[0] = {1, sizeof left, left};
        out.list.mBuffers[1] = {1, sizeof right, right};
        ASSERT_TRUE(unit->allocateRenderResources().ok());
        unit->setParameter(7, 1.0F); // the kernel passes its input through
        block = unit->internalRenderBlock();
        forget();
    }
    OSStatus render(long bus = 0, const AURenderEvent* events = nullptr) {
        return block(&flags, &timestamp, kFrames, bus, &out.list, events, pull);
    }
};

TEST_F(UnitRender, OutputBusOneIsRefusedAndLeavesEverythingUntouched) {
    left[0] = -3.0F;
    EXPECT_EQ(render(1), kAudioUnitErr_NoConnection);
    EXPECT_EQ(left[0], -3.0F);
    EXPECT_EQ(pulls, 0);
    EXPECT_EQ(unit->currentOuputData, nullptr);
    EXPECT_THAT(wrapped.renders, IsEmpty());
}

TEST_F(UnitRender, ANegativeOutputBusPasses) {
    EXPECT_EQ(render(-1), noErr);
    EXPECT_EQ(pulls, 1);
    ASSERT_EQ(wrapped.renders.size(), 1U);
    EXPECT_EQ(wrapped.renders.front().bus, 0);
}

TEST_F(UnitRender, WrappedUnitRendersAfterTheKernelIntoTheSameListWithTheHostsOwnCallback) {
    AURenderEvent event{};
    event.parameter = {nullptr, 100, AURenderEventParameter, {}, 0, 4, 0.5F};
    EXPECT_EQ(render(0, &event), noErr);
    ASSERT_EQ(wrapped.renders.size(), 1U);
    const WrappedBehaviour::RenderCall& call = wrapped.renders.front();
    EXPECT_EQ(call.flags, &flags);
    EXPECT_EQ(call.timestamp, &timestamp);
    EXPECT_EQ(call.frames, kFrames);
    EXPECT_EQ(call.bus, 0);
    EXPECT_EQ(call.output, &out.list);
    EXPECT_EQ(call.events, nullptr);
    EXPECT_EQ(call.pull, pull);
    EXPECT_EQ(call.outputAtEntry, 0.25F); // the kernel has been here
    EXPECT_EQ(unit->currentOuputData, &out.list);
    EXPECT_THAT(lines(), ElementsAre("unit received parameter : address:4, value:0.500000"));
}

TEST_F(UnitRender, SecondPullReachesTheHost) {
    wrapped.pulls = true;
    EXPECT_EQ(render(), noErr);
    EXPECT_EQ(pulls, 2);
}

TEST_F(UnitRender, WithTheFinalLimiterOffTheWrappedUnitIsNotCalled) {
    unit->setParameter(11, 0.0F);
    EXPECT_EQ(render(), noErr);
    EXPECT_THAT(wrapped.renders, IsEmpty());
    EXPECT_EQ(left[3], 0.25F);
}

TEST_F(UnitRender, AFinalLimiterOfOneHalfCountsAsOff) {
    unit->setParameter(11, 0.5F);
    EXPECT_EQ(render(), noErr);
    EXPECT_THAT(wrapped.renders, IsEmpty());
}

TEST_F(UnitRender, AnEventInThisCallAlreadySwitchesTheFinalLimiter) {
    AURenderEvent event{};
    event.parameter = {nullptr, 104, AURenderEventParameter, {}, 0, 11, 0.0F};
    EXPECT_EQ(render(0, &event), noErr);
    EXPECT_THAT(wrapped.renders, IsEmpty());
}

TEST_F(UnitRender, WithTheFinalLimiterOffAKernelFailureReachesTheHost) {
    unit->setParameter(11, 0.0F);
    forget();
    pullStatus = -4711;
    EXPECT_EQ(render(), -4711);
    EXPECT_THAT(lines(), ElementsAre("AUExtension::ERROR: We have a problem with the kernel! -4711"));
}

TEST_F(UnitRender, WithTheFinalLimiterOnNoFailureReachesTheHost) {
    pullStatus = -4711;
    wrapped.renderStatus = -4712;
    EXPECT_EQ(render(), noErr);
    EXPECT_EQ(wrapped.renders.size(), 1U);
    EXPECT_THAT(lines(), ElementsAre("AUExtension::ERROR: We have a problem with the kernel! -4711",
                                     "AUExtension::ERROR: We have a problem with the wrapped unit! -4712"));
}

TEST_F(UnitRender, TooManyFramesIsAKernelFailure) {
    unit->setParameter(11, 0.0F);
    unit->setMaximumFramesToRender(8);
    EXPECT_EQ(render(), kAudioUnitErr_TooManyFramesToProcess);
    EXPECT_EQ(pulls, 0);
}

TEST_F(UnitRender, AnAbsentPullCallbackStaysAbsent) {
    pull = nullptr;
    EXPECT_EQ(render(), noErr);
    ASSERT_EQ(wrapped.renders.size(), 1U);
    EXPECT_FALSE(wrapped.renders.front().pull);
}

TEST_F(UnitRender, AGoodCallLogsNothing) {
    EXPECT_EQ(render(), noErr);
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(UnitRender, WithoutAMIDIOutputTheAdaptersBlockIsLeftAlone) {
    const AUMIDIOutputEventBlock other = [](AUEventSampleTime, std::uint8_t, long, const std::uint8_t*) {
        return noErr;
    };
    unit->kernelAdapter->setAUMIDIOutputEventBlock(other);
    EXPECT_EQ(render(), noErr);
    EXPECT_EQ(other.useCount(), 3U); // ours, the adapter's, the kernel's
}

TEST_F(UnitRender, AMIDIOutputOfTheBlocksTimeIsHandedToTheAdapterOnEveryCall) {
    const AUMIDIOutputEventBlock midi = [](AUEventSampleTime, std::uint8_t, long, const std::uint8_t*) {
        return noErr;
    };
    unit->setMIDIOutputEventBlock(midi);
    block = unit->internalRenderBlock();
    unit->setMIDIOutputEventBlock(nullptr);
    unit->kernelAdapter->setAUMIDIOutputEventBlock(nullptr);
    EXPECT_EQ(midi.useCount(), 2U); // ours and the closure's
    EXPECT_EQ(render(), noErr);
    EXPECT_EQ(midi.useCount(), 4U); // and the adapter's and the kernel's
}

TEST_F(UnitRender, EachBlockIsANewOneAndTakesTheWrappedRenderBlockOfItsTime) {
    EXPECT_FALSE(unit->internalRenderBlock() == block);
    EXPECT_THAT(lines(), ElementsAre("AUExtension::midiOutputEventBlock (get) ", "wrapped: render block"));
}

class UnitBridges : public FakeHost {
protected:
    void SetUp() override { make(); }
};

TEST_F(UnitBridges, ANewValueGoesThroughTheTreeAndThenToTheAdapter) {
    unit->setParameter(2, 0.25F);
    EXPECT_THAT(lines(), ElementsAre("unit received parameter : address:2, value:0.250000",
                                     "unit received parameter : address:2, value:0.250000"));
    EXPECT_EQ(unit->getParameter(2), 0.25F);
}

TEST_F(UnitBridges, AValueThatTheTreeHoldsStillReachesTheAdapterOnce) {
    unit->setParameter(2, 0.8F);
    EXPECT_THAT(lines(), ElementsAre("unit received parameter : address:2, value:0.800000"));
}

TEST_F(UnitBridges, UnknownAndNegativeAddressesDoNothingAndReadZero) {
    for (const std::int32_t address : {12, 15, 16, -1, -12, 2147483647}) {
        unit->setParameter(address, 0.5F);
        EXPECT_EQ(unit->getParameter(address), 0.0F);
    }
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(UnitBridges, WithoutATreeTheyDoNothingAndReadZero) {
    unit->parameters->setParameterTree(nullptr);
    unit->setParameter(2, 0.5F);
    EXPECT_EQ(unit->getParameter(2), 0.0F);
    EXPECT_THAT(lines(), IsEmpty());
    EXPECT_EQ(unit->kernelAdapter->getParameterEx(2), 0.8F);
}

TEST_F(UnitBridges, MetersAreTheAdaptersOwn) {
    constexpr std::uint32_t kFrames = 512;
    float samples[2][kFrames];
    std::fill_n(samples[0], kFrames, 20.0F);
    std::fill_n(samples[1], kFrames, 5.0F);
    AudioBufferListStorage<2> out;
    for (int c = 0; c < 2; ++c) {
        out.list.mBuffers[c] = {1, sizeof samples[c], samples[c]};
    }
    const AURenderPullInputBlock pull = [&samples](AudioUnitRenderActionFlags*, const AudioTimeStamp*,
                                                   std::uint32_t, long, AudioBufferList* list) {
        for (int c = 0; c < 2; ++c) {
            std::copy_n(samples[c], kFrames, static_cast<float*>(list->mBuffers[c].mData));
        }
        return noErr;
    };
    ASSERT_TRUE(unit->allocateRenderResources().ok());
    const AudioTimeStamp timestamp;
    AudioUnitRenderActionFlags flags = 0;
    ASSERT_EQ(unit->kernelAdapter->render(&flags, &timestamp, kFrames, 0, &out.list, nullptr, pull), noErr);
    const std::set<float> values{unit->getDynamicsValue1(), unit->getDynamicsValue2(), unit->getPeakValue1(),
                                 unit->getPeakValue2()};
    EXPECT_EQ(values.size(), 4U); // no bridge can stand for another
    EXPECT_EQ(unit->getDynamicsValue1(), unit->kernelAdapter->getDynamicsValue1());
    EXPECT_EQ(unit->getDynamicsValue2(), unit->kernelAdapter->getDynamicsValue2());
    EXPECT_EQ(unit->getPeakValue1(), unit->kernelAdapter->getPeakValue1());
    EXPECT_EQ(unit->getPeakValue2(), unit->kernelAdapter->getPeakValue2());
}

/// A unit whose sound is made elsewhere: its meters come from there.
class RemoteUnit final : public QOR_Limiter_Extension_AudioUnit {
public:
    static Ref<RemoteUnit> make() {
        Ref<RemoteUnit> unit(new RemoteUnit);
        return unit->initWithComponentDescription(kQORLimiterComponent, {}).ok() ? unit : nullptr;
    }
    float getDynamicsValue1() override { return 0.1F; }
    float getDynamicsValue2() override { return 0.2F; }
    float getPeakValue1() override { return 0.3F; }
    float getPeakValue2() override { return 0.4F; }

private:
    RemoteUnit() : QOR_Limiter_Extension_AudioUnit(kQORLimiterComponent) {}
};

TEST_F(UnitBridges, AUnitThatStandsInForAnotherBringsItsOwnMeters) {
    unit = RemoteUnit::make();
    ASSERT_NE(unit, nullptr);
    EXPECT_EQ(unit->getDynamicsValue1(), 0.1F);
    EXPECT_EQ(unit->getDynamicsValue2(), 0.2F);
    EXPECT_EQ(unit->getPeakValue1(), 0.3F);
    EXPECT_EQ(unit->getPeakValue2(), 0.4F);
    unit->setParameter(2, 0.25F);
    EXPECT_EQ(unit->getParameter(2), 0.25F); // all else is a unit's as ever
}

TEST_F(UnitBridges, SampleRateIsTheWrappedOutputsAndIsLogged) {
    EXPECT_EQ(unit->getSamplerate(), 44100.0);
    EXPECT_THAT(lines(), ElementsAre("AUExtension::outputBusses: 1"));
}

} // namespace
