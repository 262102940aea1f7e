#include "LimiterSignals.h"
#include "platform/audio/Audio.h"
#include "platform/audio/PeakLimiterDSP.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <limits>

namespace {

using namespace platform;
using test::sameBits;
using test::Samples;

/// A unit with memory for one call and a source that delivers samples from a position on.
class Rig {
public:
    Ref<AUAudioUnit> unit = instantiateAudioUnit(kSystemPeakLimiter).value();
    Samples sourceLeft;
    Samples sourceRight;
    Samples left;
    Samples right;
    AudioBufferListStorage<2> output;
    int pulls = 0;
    OSStatus pullStatus = noErr;

    explicit Rig(std::size_t frames = 4096, double decibels = 12.0)
        : sourceLeft(test::drums(frames, decibels, 44100.0, 1)), sourceRight(test::noise(frames, -6.0, 2)),
          left(frames), right(frames) {
        pointOutputAt(left.data(), right.data());
    }

    void pointOutputAt(float* toLeft, float* toRight) {
        output.list.mBuffers[0] = {1, 0, toLeft};
        output.list.mBuffers[1] = {1, 0, toRight};
    }

    AURenderPullInputBlock source() {
        return [this](AudioUnitRenderActionFlags*, const AudioTimeStamp* stamp, std::uint32_t frames,
                      long bus, AudioBufferList* list) -> OSStatus {
            ++pulls;
            EXPECT_EQ(bus, 0);
            const auto at = static_cast<std::size_t>(stamp->mSampleTime);
            if (pullStatus == noErr) {
                std::memcpy(list->mBuffers[0].mData, sourceLeft.data() + at, frames * sizeof(float));
                std::memcpy(list->mBuffers[1].mData, sourceRight.data() + at, frames * sizeof(float));
            }
            return pullStatus;
        };
    }

    OSStatus render(std::uint32_t frames, std::size_t at = 0, const AURenderEvent* events = nullptr) {
        return renderFrom(source(), frames, at, events);
    }

    OSStatus renderFrom(const AURenderPullInputBlock& pull, std::uint32_t frames, std::size_t at = 0,
                        const AURenderEvent* events = nullptr, long bus = 0) {
        AudioUnitRenderActionFlags flags = 0;
        AudioTimeStamp stamp;
        stamp.mSampleTime = static_cast<double>(at);
        return unit->internalRenderBlock()(&flags, &stamp, frames, bus, &output.list, events, pull);
    }

    /// What the signal path makes of the source with the unit's first settings.
    std::pair<Samples, Samples> expected() const {
        PeakLimiterDSP limiter;
        limiter.set(0.012F, 0.024F, 0.0F);
        limiter.prepare(44100.0);
        std::pair result{sourceLeft, sourceRight};
        limiter.process(result.first.data(), result.second.data(),
                        static_cast<std::uint32_t>(result.first.size()));
        return result;
    }
};

AURenderEvent parameterEvent(AUEventSampleTime time, AUParameterAddress address, float value) {
    AURenderEvent event{};
    event.parameter = {nullptr, time, AURenderEventParameter, {}, 0, address, value};
    return event;
}

TEST(SystemPeakLimiter, StartsAsStereoAt44100Hertz) {
    const Rig rig;
    EXPECT_EQ(rig.unit->inputBusses()->count(), 1U);
    EXPECT_EQ(rig.unit->outputBusses()->count(), 1U);
    EXPECT_EQ((*rig.unit->inputBusses())[0].format(), AVAudioFormat(44100.0, 2));
    EXPECT_EQ((*rig.unit->outputBusses())[0].format(), AVAudioFormat(44100.0, 2));
    EXPECT_EQ((*rig.unit->inputBusses())[0].busType(), AUAudioUnitBusType::Input);
    EXPECT_EQ((*rig.unit->outputBusses())[0].busType(), AUAudioUnitBusType::Output);
    EXPECT_EQ(rig.unit->latency(), 0.0);
    EXPECT_EQ(rig.unit->outputBusses(), rig.unit->outputBusses());
}

TEST(SystemPeakLimiter, PullsTheInputIntoTheOutputListAndLimitsThere) {
    Rig rig;
    ASSERT_TRUE(rig.unit->allocateRenderResources().ok());
    ASSERT_EQ(rig.render(4096), noErr);
    EXPECT_EQ(rig.pulls, 1);
    EXPECT_TRUE(sameBits(rig.left, rig.expected().first));
    EXPECT_TRUE(sameBits(rig.right, rig.expected().second));
    EXPECT_FALSE(sameBits(rig.left, rig.sourceLeft));
}

TEST(SystemPeakLimiter, HotInputNeverLeavesAboveTheCeiling) {
    for (const double rate : {44100.0, 96000.0}) {
        Rig rig(4096, 24.0);
        const AVAudioFormat format(rate, 2);
        ASSERT_TRUE((*rig.unit->inputBusses())[0].setFormat(format).ok());
        ASSERT_TRUE((*rig.unit->outputBusses())[0].setFormat(format).ok());
        ASSERT_TRUE(rig.unit->allocateRenderResources().ok());
        ASSERT_EQ(AudioUnitSetParameter(rig.unit->plainHandle(), kLimiterParam_PreGain, 0, 0, 40.0F, 0),
                  noErr);
        ASSERT_EQ(rig.render(4096), noErr);
        EXPECT_LE(test::peakOf(rig.left), 1.0F);
        EXPECT_LE(test::peakOf(rig.right), 1.0F);
        EXPECT_EQ(test::peakOf(rig.left), 1.0F);
    }
}

TEST(SystemPeakLimiter, WithoutRenderResourcesItSaysSoAndPullsNothing) {
    Rig rig;
    EXPECT_EQ(rig.render(64), kAudioUnitErr_Uninitialized);
    ASSERT_TRUE(rig.unit->allocateRenderResources().ok());
    EXPECT_EQ(rig.render(64), noErr);
    rig.unit->deallocateRenderResources();
    EXPECT_EQ(rig.render(64), kAudioUnitErr_Uninitialized);
    EXPECT_EQ(rig.pulls, 1);
}

TEST(SystemPeakLimiter, OneFrameAboveTheLimitIsRefusedAndPullsNothing) {
    Rig rig;
    rig.unit->setMaximumFramesToRender(128);
    ASSERT_TRUE(rig.unit->allocateRenderResources().ok());
    EXPECT_EQ(rig.render(129), kAudioUnitErr_TooManyFramesToProcess);
    EXPECT_EQ(rig.pulls, 0);
    EXPECT_EQ(rig.render(128), noErr);
    EXPECT_EQ(rig.render(0), noErr);
}

TEST(SystemPeakLimiter, WithoutAPullBlockThereIsNoConnection) {
    Rig rig;
    ASSERT_TRUE(rig.unit->allocateRenderResources().ok());
    EXPECT_EQ(rig.renderFrom({}, 64), kAudioUnitErr_NoConnection);
}

TEST(SystemPeakLimiter, APullThatFailsGivesItsOwnStatus) {
    Rig rig;
    ASSERT_TRUE(rig.unit->allocateRenderResources().ok());
    rig.pullStatus = -12345;
    EXPECT_EQ(rig.render(64), -12345);
}

TEST(SystemPeakLimiter, AnotherBusOrNoListIsRefused) {
    Rig rig;
    ASSERT_TRUE(rig.unit->allocateRenderResources().ok());
    EXPECT_EQ(rig.renderFrom(rig.source(), 64, 0, nullptr, 1), kAudioUnitErr_InvalidElement);
    rig.output.list.mNumberBuffers = 0;
    EXPECT_EQ(rig.render(64), kAudio_ParamError);
    EXPECT_EQ(rig.unit->internalRenderBlock()(nullptr, nullptr, 64, 0, nullptr, nullptr, rig.source()),
              kAudio_ParamError);
    EXPECT_EQ(rig.pulls, 0);
}

TEST(SystemPeakLimiter, ABufferWithoutMemoryGetsTheUnitsOwn) {
    Rig rig;
    ASSERT_TRUE(rig.unit->allocateRenderResources().ok());
    rig.pointOutputAt(nullptr, nullptr);
    ASSERT_EQ(rig.render(4096), noErr);
    const auto* left = static_cast<const float*>(rig.output.list.mBuffers[0].mData);
    const auto* right = static_cast<const float*>(rig.output.list.mBuffers[1].mData);
    ASSERT_NE(left, nullptr);
    ASSERT_NE(right, nullptr);
    EXPECT_EQ(rig.output.list.mBuffers[1].mDataByteSize, 4096U * 4U);
    EXPECT_TRUE(sameBits(Samples(left, left + 4096), rig.expected().first));
    EXPECT_TRUE(sameBits(Samples(right, right + 4096), rig.expected().second));
}

TEST(SystemPeakLimiter, ASourceThatPointsTheListElsewhereIsCopiedAndLeftAsItWas) {
    Rig rig;
    ASSERT_TRUE(rig.unit->allocateRenderResources().ok());
    Samples elsewhereLeft = rig.sourceLeft;
    Samples elsewhereRight = rig.sourceRight;
    const AURenderPullInputBlock pull = [&](AudioUnitRenderActionFlags*, const AudioTimeStamp*, std::uint32_t,
                                            long, AudioBufferList* list) {
        list->mBuffers[0].mData = elsewhereLeft.data();
        list->mBuffers[1].mData = elsewhereRight.data();
        return noErr;
    };
    ASSERT_EQ(rig.renderFrom(pull, 4096), noErr);
    EXPECT_EQ(rig.output.list.mBuffers[0].mData, rig.left.data());
    EXPECT_TRUE(sameBits(rig.left, rig.expected().first));
    EXPECT_TRUE(sameBits(elsewhereLeft, rig.sourceLeft));
}

TEST(SystemPeakLimiter, AListOfOneBufferIsLimitedAlone) {
    Rig rig;
    ASSERT_TRUE(rig.unit->allocateRenderResources().ok());
    rig.output.list.mNumberBuffers = 1;
    const AURenderPullInputBlock pull = [&](AudioUnitRenderActionFlags*, const AudioTimeStamp*,
                                            std::uint32_t frames, long, AudioBufferList* list) {
        std::memcpy(list->mBuffers[0].mData, rig.sourceLeft.data(), frames * sizeof(float));
        return noErr;
    };
    ASSERT_EQ(rig.renderFrom(pull, 4096), noErr);
    EXPECT_EQ(test::peakOf(rig.left), 1.0F);
    EXPECT_EQ(test::peakOf(rig.right), 0.0F);
}

TEST(SystemPeakLimiter, BypassPassesThePullThrough) {
    Rig rig;
    ASSERT_TRUE(rig.unit->allocateRenderResources().ok());
    AudioUnitSetParameter(rig.unit->plainHandle(), kLimiterParam_PreGain, 0, 0, 6.0F, 0);
    rig.unit->setShouldBypassEffect(true);
    EXPECT_TRUE(rig.unit->shouldBypassEffect());
    ASSERT_EQ(rig.render(4096), noErr);
    EXPECT_TRUE(sameBits(rig.left, rig.sourceLeft));
    EXPECT_TRUE(sameBits(rig.right, rig.sourceRight));
    EXPECT_GT(test::peakOf(rig.left), 1.0F);
    rig.unit->setShouldBypassEffect(false);
    ASSERT_EQ(rig.render(4096), noErr);
    EXPECT_LE(test::peakOf(rig.left), 1.0F);
}

TEST(SystemPeakLimiter, ResetForgetsThePast) {
    Rig rig;
    ASSERT_TRUE(rig.unit->allocateRenderResources().ok());
    ASSERT_EQ(rig.render(4096), noErr);
    const Samples first = rig.left;
    ASSERT_EQ(rig.render(4096), noErr);
    EXPECT_FALSE(sameBits(rig.left, first));
    rig.unit->reset();
    ASSERT_EQ(rig.render(4096), noErr);
    EXPECT_TRUE(sameBits(rig.left, first));
}

TEST(SystemPeakLimiter, TheRenderBlockOutlivesItsUnit) {
    Rig rig;
    ASSERT_TRUE(rig.unit->allocateRenderResources().ok());
    const auto block = rig.unit->internalRenderBlock();
    rig.unit = nullptr;
    const AudioTimeStamp stamp;
    EXPECT_EQ(block(nullptr, &stamp, 64, 0, &rig.output.list, nullptr, rig.source()), noErr);
}

TEST(SystemPeakLimiter, BusesThatDifferCannotBeAllocated) {
    Rig rig;
    ASSERT_TRUE((*rig.unit->outputBusses())[0].setFormat(AVAudioFormat(96000.0, 2)).ok());
    const auto allocated = rig.unit->allocateRenderResources();
    ASSERT_FALSE(allocated.ok());
    EXPECT_EQ(allocated.error().code, kAudioUnitErr_FormatNotSupported);
    EXPECT_FALSE(rig.unit->renderResourcesAllocated());
    ASSERT_TRUE((*rig.unit->inputBusses())[0].setFormat(AVAudioFormat(96000.0, 2)).ok());
    EXPECT_TRUE(rig.unit->allocateRenderResources().ok());
}

TEST(SystemPeakLimiter, AFormatChangesOnlyWithoutRenderResourcesAndWithinTwoChannels) {
    Rig rig;
    AUAudioUnitBus& bus = (*rig.unit->inputBusses())[0];
    EXPECT_EQ(bus.setFormat(AVAudioFormat(44100.0, 3)).error().code, kAudioUnitErr_FormatNotSupported);
    EXPECT_TRUE(bus.setFormat(AVAudioFormat(44100.0, 1)).ok());
    EXPECT_TRUE(bus.setFormat(AVAudioFormat(44100.0, 2)).ok());
    ASSERT_TRUE(rig.unit->allocateRenderResources().ok());
    EXPECT_EQ(bus.setFormat(AVAudioFormat(96000.0, 2)).error().code, kAudioUnitErr_Initialized);
    rig.unit->deallocateRenderResources();
    EXPECT_TRUE(bus.setFormat(AVAudioFormat(96000.0, 2)).ok());
}

TEST(SystemPeakLimiter, ParametersAreHeldWithinTheirRanges) {
    const Rig rig;
    const AudioUnit handle = rig.unit->plainHandle();
    const auto afterSetting = [&](AudioUnitParameterID id, float value) {
        EXPECT_EQ(AudioUnitSetParameter(handle, id, kAudioUnitScope_Global, 0, value, 0), noErr);
        float read = -1.0F;
        EXPECT_EQ(AudioUnitGetParameter(handle, id, kAudioUnitScope_Global, 0, read), noErr);
        EXPECT_EQ(rig.unit->parameterTree()->parameterWithAddress(id)->value(), read);
        return read;
    };
    const float infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(afterSetting(kLimiterParam_AttackTime, 0.02F), 0.02F);
    EXPECT_EQ(afterSetting(kLimiterParam_AttackTime, 1.0F), 0.03F);
    EXPECT_EQ(afterSetting(kLimiterParam_AttackTime, 0.0F), 0.001F);
    EXPECT_EQ(afterSetting(kLimiterParam_DecayTime, infinity), 0.06F);
    EXPECT_EQ(afterSetting(kLimiterParam_DecayTime, -1.0F), 0.001F);
    EXPECT_EQ(afterSetting(kLimiterParam_PreGain, 41.0F), 40.0F);
    EXPECT_EQ(afterSetting(kLimiterParam_PreGain, -infinity), -40.0F);
    rig.unit->parameterTree()->parameterWithAddress(2)->setValue(100.0F);
    EXPECT_EQ(rig.unit->parameterTree()->parameterWithAddress(2)->value(), 40.0F);
}

TEST(SystemPeakLimiter, WhatIsNoParameterIsRefused) {
    const Rig rig;
    const AudioUnit handle = rig.unit->plainHandle();
    float value = 7.0F;
    EXPECT_EQ(AudioUnitSetParameter(handle, 3, 0, 0, 0.0F, 0), kAudioUnitErr_InvalidParameter);
    EXPECT_EQ(AudioUnitSetParameter(handle, 0, kAudioUnitScope_Input, 0, 0.01F, 0),
              kAudioUnitErr_InvalidScope);
    EXPECT_EQ(AudioUnitSetParameter(handle, 0, 0, 1, 0.01F, 0), kAudioUnitErr_InvalidElement);
    EXPECT_EQ(AudioUnitSetParameter(handle, 0, 0, 0, std::numeric_limits<float>::quiet_NaN(), 0),
              kAudioUnitErr_InvalidParameterValue);
    EXPECT_EQ(AudioUnitGetParameter(handle, 3, 0, 0, value), kAudioUnitErr_InvalidParameter);
    EXPECT_EQ(AudioUnitGetParameter(handle, 0, kAudioUnitScope_Output, 0, value), kAudioUnitErr_InvalidScope);
    EXPECT_EQ(AudioUnitGetParameter(handle, 0, 0, 1, value), kAudioUnitErr_InvalidElement);
    EXPECT_EQ(value, 7.0F);
}

TEST(SystemPeakLimiter, AParameterEventTakesEffectAtItsSample) {
    Rig rig;
    std::fill(rig.sourceLeft.begin(), rig.sourceLeft.end(), 0.25F);
    std::fill(rig.sourceRight.begin(), rig.sourceRight.end(), 0.25F);
    ASSERT_TRUE(rig.unit->allocateRenderResources().ok());
    AURenderEvent tooLate = parameterEvent(99999, kLimiterParam_DecayTime, 0.05F);
    AURenderEvent midi{};
    midi.MIDI.eventSampleTime = 2100;
    midi.MIDI.eventType = AURenderEventMIDI;
    midi.MIDI.next = &tooLate;
    AURenderEvent gain = parameterEvent(2100, kLimiterParam_PreGain, -6.0F);
    gain.head.next = &midi;
    AURenderEvent early = parameterEvent(-5, kLimiterParam_AttackTime, 0.02F);
    early.head.next = &gain;
    ASSERT_EQ(rig.render(1000, 2000, &early), noErr);
    EXPECT_EQ(rig.left[99], 0.25F);
    EXPECT_LT(rig.left[100], 0.25F);
    EXPECT_NEAR(rig.left[999], 0.25 * test::fromDecibels(-6.0), 1e-6);
    EXPECT_EQ(rig.unit->parameterTree()->parameterWithAddress(0)->value(), 0.02F);
    EXPECT_EQ(rig.unit->parameterTree()->parameterWithAddress(1)->value(), 0.05F);
}

TEST(SystemPeakLimiter, TheOverviewNamesThePreGainFirst) {
    const Rig rig;
    EXPECT_EQ(rig.unit->parametersForOverviewWithCount(1), (std::vector<AUParameterAddress>{2}));
    EXPECT_EQ(rig.unit->parametersForOverviewWithCount(9), (std::vector<AUParameterAddress>{2, 0, 1}));
    EXPECT_TRUE(rig.unit->parametersForOverviewWithCount(-1).empty());
}

} // namespace
