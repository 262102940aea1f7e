#include "kernel/AdapterHarness.h"
#include "support/CapturedLog.h"

#include <gtest/gtest.h>

namespace {

using namespace qor;
using namespace test;

class Adapter : public ::testing::Test {
protected:
    CapturedLog log;
    QOR_Limiter_ExtensionDSPKernelAdapter adapter;
    AudioTimeStamp timestamp{.mSampleTime = 0.0, .mFlags = kAudioTimeStampSampleTimeValid};
    AudioUnitRenderActionFlags flags = 0;
    PullRecorder pull;

    void SetUp() override { adapter.setParameterEx(7, 1.0F); } // limiting bypassed: the output is the input

    OSStatus callBlock(StereoOutput& out, std::uint32_t frames, AURenderPullInputBlock pullBlock,
                       const AURenderEvent* events = nullptr) {
        return adapter.internalRenderBlock()(&flags, &timestamp, frames, 0, out.list(), events,
                                             std::move(pullBlock));
    }
    OSStatus callMethod(StereoOutput& out, std::uint32_t frames, const AURenderPullInputBlock& pullBlock,
                        const AURenderEvent* events = nullptr) {
        return adapter.render(&flags, &timestamp, frames, 0, out.list(), events, pullBlock);
    }
};

TEST_F(Adapter, IsAWorkingStereoKernelAt48000HzAfterConstruction) {
    EXPECT_EQ(adapter.getSamplerate(), 48000.0F);
    EXPECT_EQ(adapter.inputBus()->format(), AVAudioFormat(48000.0, 2));
    EXPECT_EQ(adapter.outputBus()->format(), AVAudioFormat(48000.0, 2));
    EXPECT_EQ(adapter.inputBus()->maximumChannelCount(), 2U);
    EXPECT_EQ(adapter.outputBus()->maximumChannelCount(), 2U);
    EXPECT_EQ(adapter.maximumFramesToRender(), 4096U);
    EXPECT_FALSE(adapter.shouldBypassEffect());
}

TEST_F(Adapter, RendersTheMaximumFrameCountAndRefusesOneMoreWithoutPulling) {
    adapter.setMaximumFramesToRender(64);
    adapter.allocateRenderResources();
    StereoOutput out(65);
    EXPECT_EQ(callBlock(out, 64, pull.block()), noErr);
    EXPECT_EQ(pull.calls, 1);
    EXPECT_EQ(out.left[63], dryLeft(63));
    EXPECT_EQ(callBlock(out, 65, pull.block()), kAudioUnitErr_TooManyFramesToProcess);
    EXPECT_EQ(callMethod(out, 65, pull.block()), kAudioUnitErr_TooManyFramesToProcess);
    EXPECT_EQ(pull.calls, 1);
    EXPECT_EQ(out.left[64], -9.0F);
}

TEST_F(Adapter, BlockFailsWithoutAPullCallbackButTheMethodRendersTheStaleInput) {
    adapter.allocateRenderResources();
    StereoOutput out(8);
    ASSERT_EQ(callBlock(out, 8, pull.block()), noErr);
    StereoOutput second(8);
    EXPECT_EQ(callBlock(second, 8, nullptr), kAudioUnitErr_NoConnection);
    EXPECT_EQ(second.left[1], -9.0F);
    EXPECT_EQ(callMethod(second, 8, nullptr), noErr);
    EXPECT_EQ(second.left, out.left);
    EXPECT_EQ(second.right, out.right);
}

TEST_F(Adapter, PullErrorIsReturnedUnchangedAndNothingIsRendered) {
    adapter.allocateRenderResources();
    pull.answer = -4711;
    StereoOutput out(8);
    EXPECT_EQ(callBlock(out, 8, pull.block()), -4711);
    EXPECT_EQ(callMethod(out, 8, pull.block()), -4711);
    EXPECT_EQ(out.left[0], -9.0F);
}

TEST_F(Adapter, PullsOnBusZeroWithFlagsOfItsOwnWhateverTheOutputBus) {
    adapter.allocateRenderResources();
    flags = 77;
    AudioUnitRenderActionFlags seen = 99;
    const AudioUnitRenderActionFlags* seenAt = nullptr;
    long bus = -1;
    const AURenderPullInputBlock look = [&](AudioUnitRenderActionFlags* f, const AudioTimeStamp*,
                                            std::uint32_t, long b, AudioBufferList*) {
        seen = *f;
        seenAt = f;
        bus = b;
        *f = 5;
        return noErr;
    };
    StereoOutput out(8);
    EXPECT_EQ(adapter.internalRenderBlock()(&flags, &timestamp, 8, 3, out.list(), nullptr, look), noErr);
    EXPECT_EQ(seen, 0U);
    EXPECT_NE(seenAt, &flags);
    EXPECT_EQ(bus, 0);
    EXPECT_EQ(flags, 77U);
    EXPECT_EQ(adapter.render(&flags, &timestamp, 8, 3, out.list(), nullptr, look), noErr);
    EXPECT_EQ(seen, 0U);
    EXPECT_EQ(flags, 77U);
}

TEST_F(Adapter, NullFirstDataPointerAsksForInPlaceRendering) {
    adapter.allocateRenderResources();
    AudioBufferListStorage<2> out;
    out.list.mBuffers[0] = {1, 12, nullptr};
    out.list.mBuffers[1] = {1, 16, nullptr};
    void* inputLeft = nullptr;
    void* inputRight = nullptr;
    const AURenderPullInputBlock fill = [&](AudioUnitRenderActionFlags*, const AudioTimeStamp*,
                                            std::uint32_t frames, long, AudioBufferList* list) {
        inputLeft = list->mBuffers[0].mData;
        inputRight = list->mBuffers[1].mData;
        for (std::uint32_t i = 0; i < frames; ++i) {
            static_cast<float*>(inputLeft)[i] = dryLeft(i);
            static_cast<float*>(inputRight)[i] = dryRight(i);
        }
        return noErr;
    };
    EXPECT_EQ(adapter.internalRenderBlock()(&flags, &timestamp, 8, 0, &out.list, nullptr, fill), noErr);
    EXPECT_EQ(out.list.mBuffers[0].mData, inputLeft);
    EXPECT_EQ(out.list.mBuffers[1].mData, inputRight);
    EXPECT_EQ(out.list.mBuffers[0].mDataByteSize, 12U);
    EXPECT_EQ(out.list.mBuffers[1].mDataByteSize, 16U);
    EXPECT_EQ(static_cast<float*>(out.list.mBuffers[0].mData)[5], dryLeft(5));
    EXPECT_EQ(static_cast<float*>(out.list.mBuffers[1].mData)[5], dryRight(5));
}

TEST_F(Adapter, NullFirstDataPointerReplacesTheOthersToo) {
    adapter.allocateRenderResources();
    StereoOutput out(8);
    out.list()->mBuffers[0].mData = nullptr;
    EXPECT_EQ(callMethod(out, 8, pull.block()), noErr);
    EXPECT_NE(out.list()->mBuffers[0].mData, nullptr);
    EXPECT_NE(out.list()->mBuffers[1].mData, out.right.data());
    EXPECT_EQ(out.right[0], -9.0F);
    EXPECT_EQ(static_cast<float*>(out.list()->mBuffers[1].mData)[5], dryRight(5));
}

TEST_F(Adapter, BypassIsOneFlagUnderTwoNames) {
    adapter.setBypass(true);
    EXPECT_TRUE(adapter.shouldBypassEffect());
    adapter.setShouldBypassEffect(false);
    EXPECT_FALSE(adapter.shouldBypassEffect());
}

TEST_F(Adapter, ANegativeAddressPrintsAndStoresNothing) {
    log.clear();
    adapter.setParameterEx(-1, 0.5F);
    EXPECT_TRUE(log.lines().empty());
    EXPECT_EQ(adapter.getParameterEx(-1), 0.0F);
    adapter.setParameterEx(2, 0.5F);
    EXPECT_EQ(log.lines().size(), 1U);
    EXPECT_EQ(adapter.getParameterEx(2), 0.5F);
}

TEST_F(Adapter, ParametersGoByTheParametersAddress) {
    adapter.setParameter(*parameterAt(4), 0.25F);
    EXPECT_EQ(adapter.valueForParameter(*parameterAt(4)), 0.25F);
    EXPECT_EQ(adapter.getParameterEx(4), 0.25F);
    EXPECT_EQ(adapter.valueForParameter(*parameterAt(16)), 0.0F);
}

TEST_F(Adapter, AllocationBringsTheKernelToTheOutputBussFormat) {
    ASSERT_TRUE(adapter.outputBus()->setFormat(AVAudioFormat(96000.0, 2)).ok());
    adapter.allocateRenderResources();
    EXPECT_EQ(adapter.getSamplerate(), 96000.0F);
}

TEST_F(Adapter, SecondRenderEntryRendersNothing) {
    adapter.allocateRenderResources();
    StereoOutput out(8);
    EXPECT_EQ(adapter.render2(8, out.list()), noErr);
    EXPECT_EQ(out.left, std::vector<float>(8, -9.0F));
    EXPECT_EQ(out.right, std::vector<float>(8, -9.0F));
}

TEST_F(Adapter, ABlockMadeEarlierKeepsTheMIDIOutputOfItsTime) {
    adapter.allocateRenderResources();
    const AUMIDIOutputEventBlock first = [](AUEventSampleTime, std::uint8_t, long, const std::uint8_t*) {
        return noErr;
    };
    adapter.setAUMIDIOutputEventBlock(first);
    EXPECT_EQ(first.useCount(), 2U);
    const AUInternalRenderBlock made = adapter.internalRenderBlock();
    EXPECT_EQ(first.useCount(), 3U);
    adapter.setAUMIDIOutputEventBlock(nullptr);
    EXPECT_EQ(first.useCount(), 2U); // ours and the block's capture
    StereoOutput out(8);
    EXPECT_EQ(made(&flags, &timestamp, 8, 0, out.list(), nullptr, pull.block()), noErr);
    EXPECT_EQ(first.useCount(), 3U); // the kernel was handed the captured one
    EXPECT_EQ(callMethod(out, 8, pull.block()), noErr);
    EXPECT_EQ(first.useCount(), 2U); // the method reads the field, which is absent by now
}

TEST_F(Adapter, HostCallbacksAreRetainedAndReleasedWithTheAdapter) {
    const AUHostMusicalContextBlock musical = [](double*, double*, long*, double*, long*, double*) {
        return true;
    };
    const AUHostTransportStateBlock transport = [](std::uint32_t*, double*, double*, double*) {
        return true;
    };
    const AUScheduleMIDIEventBlock schedule = [](AUEventSampleTime, std::uint8_t, long, const std::uint8_t*) {
    };
    {
        QOR_Limiter_ExtensionDSPKernelAdapter holder;
        holder.setAUHostMusicalContextBlock(musical);
        holder.setAUHostTransportStateBlock(transport);
        holder.setAUScheduleMIDIEventBlock(schedule);
        EXPECT_EQ(musical.useCount(), 2U);
        EXPECT_EQ(transport.useCount(), 2U);
        EXPECT_EQ(schedule.useCount(), 2U);
    }
    EXPECT_EQ(musical.useCount(), 1U);
    EXPECT_EQ(transport.useCount(), 1U);
    EXPECT_EQ(schedule.useCount(), 1U);
}

TEST_F(Adapter, BothEntriesApplyEventsAtTheirSamples) {
    adapter.allocateRenderResources();
    adapter.setParameterEx(7, 0.0F);
    adapter.setParameterEx(5, 0.0F); // mix 0: dry
    adapter.setParameterEx(10, 1.0F);
    AURenderEvent event{};
    event.parameter = {nullptr, 4, AURenderEventParameter, {}, 0, 5, 1.0F};
    StereoOutput byBlock(8);
    EXPECT_EQ(callBlock(byBlock, 8, pull.block(), &event), noErr);
    EXPECT_EQ(byBlock.left[3], dryLeft(3));
    EXPECT_NE(byBlock.left[4], dryLeft(4));
    EXPECT_EQ(adapter.getParameterEx(5), 1.0F);
}

TEST(BufferedInputBus, NextPullRestoresWhatTheCallbackChanged) {
    BufferedInputBus bus;
    bus.init(AVAudioFormat(48000.0, 2), 2);
    bus.allocateRenderResources(32);
    void* const left = bus.pcmAudioBufferList->mBuffers[0].mData;
    const AURenderPullInputBlock tamper = [](AudioUnitRenderActionFlags*, const AudioTimeStamp*,
                                             std::uint32_t, long, AudioBufferList* list) {
        list->mBuffers[0] = {9, 4, nullptr};
        list->mNumberBuffers = 1;
        return noErr;
    };
    AudioUnitRenderActionFlags flags = 0;
    const AudioTimeStamp timestamp;
    EXPECT_EQ(bus.pullInput(&flags, &timestamp, 8, 0, tamper), noErr);
    EXPECT_EQ(bus.mutableAudioBufferList->mBuffers[0].mDataByteSize, 4U);
    bus.prepareInputBufferList();
    EXPECT_EQ(bus.mutableAudioBufferList->mNumberBuffers, 2U);
    EXPECT_EQ(bus.mutableAudioBufferList->mBuffers[0].mNumberChannels, 1U);
    EXPECT_EQ(bus.mutableAudioBufferList->mBuffers[0].mDataByteSize, 32U * 4U);
    EXPECT_EQ(bus.mutableAudioBufferList->mBuffers[0].mData, left);
}

TEST_F(Adapter, EveryPullGetsTheWholeBufferWhateverTheLastOneLeft) {
    adapter.setMaximumFramesToRender(64);
    adapter.allocateRenderResources();
    std::vector<std::uint32_t> sizes;
    std::vector<void*> places;
    const AURenderPullInputBlock tamper = [&](AudioUnitRenderActionFlags*, const AudioTimeStamp*,
                                              std::uint32_t, long, AudioBufferList* list) {
        sizes.push_back(list->mBuffers[1].mDataByteSize);
        places.push_back(list->mBuffers[1].mData);
        list->mBuffers[1].mDataByteSize = 12;
        return noErr;
    };
    StereoOutput out(8);
    EXPECT_EQ(callBlock(out, 8, tamper), noErr);
    EXPECT_EQ(callBlock(out, 8, tamper), noErr);
    EXPECT_EQ(callMethod(out, 8, tamper), noErr);
    EXPECT_EQ(sizes, (std::vector<std::uint32_t>{256, 256, 256})); // 64 frames of 4 bytes
    EXPECT_EQ(places, std::vector<void*>(3, places[0]));
}

TEST_F(Adapter, DeallocationFreesTheInputAndTheKernelKeepsItsState) {
    adapter.allocateRenderResources();
    adapter.setParameterEx(2, 0.25F);
    adapter.setSamplerate(96000.0F);
    adapter.deallocateRenderResources();
    EXPECT_EQ(adapter.getParameterEx(2), 0.25F);
    EXPECT_EQ(adapter.getSamplerate(), 96000.0F);
}

TEST(BufferedInputBus, PullWithoutACallbackIsNoConnection) {
    BufferedInputBus bus;
    bus.init(AVAudioFormat(48000.0, 2), 2);
    bus.allocateRenderResources(32);
    AudioUnitRenderActionFlags flags = 0;
    const AudioTimeStamp timestamp;
    EXPECT_EQ(bus.pullInput(&flags, &timestamp, 8, 0, nullptr), kAudioUnitErr_NoConnection);
}

TEST(BufferedAudioBus, AllocationTakesTheBussPresentFormatAndDeallocationClearsAll) {
    BufferedAudioBus bus;
    bus.init(AVAudioFormat(48000.0, 2), 2);
    EXPECT_EQ(bus.maxFrames, 0U);
    EXPECT_EQ(bus.bus->maximumChannelCount(), 2U);
    EXPECT_EQ(bus.pcmBuffer, nullptr);
    ASSERT_TRUE(bus.bus->setFormat(AVAudioFormat(44100.0, 1)).ok());
    bus.allocateRenderResources(10);
    EXPECT_EQ(bus.maxFrames, 10U);
    EXPECT_EQ(bus.pcmBuffer->format(), AVAudioFormat(44100.0, 1));
    EXPECT_EQ(bus.pcmAudioBufferList, bus.pcmBuffer->audioBufferList());
    EXPECT_EQ(bus.mutableAudioBufferList, bus.pcmBuffer->mutableAudioBufferList());
    bus.deallocateRenderResources();
    EXPECT_EQ(bus.pcmBuffer, nullptr);
    EXPECT_EQ(bus.pcmAudioBufferList, nullptr);
    EXPECT_EQ(bus.mutableAudioBufferList, nullptr);
}

TEST(BufferedAudioBus, AnImpossibleFormatLeavesTheBusAbsent) {
    BufferedAudioBus bus;
    bus.init(AVAudioFormat(48000.0, 0), 2);
    EXPECT_EQ(bus.bus, nullptr);
}

} // namespace
