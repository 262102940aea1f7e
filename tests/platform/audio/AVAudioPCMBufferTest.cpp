#include "platform/audio/Audio.h"

#include <gtest/gtest.h>

namespace {

using namespace platform;

TEST(AVAudioPCMBuffer, HoldsOneZeroedBufferPerChannel) {
    AVAudioPCMBuffer buffer(AVAudioFormat(48000.0, 3), 100);
    const AudioBufferList* list = buffer.audioBufferList();
    ASSERT_EQ(list->mNumberBuffers, 3U);
    for (unsigned c = 0; c < 3; ++c) {
        EXPECT_EQ(list->mBuffers[c].mNumberChannels, 1U);
        EXPECT_EQ(list->mBuffers[c].mDataByteSize, 400U);
        EXPECT_EQ(list->mBuffers[c].mData, buffer.floatChannelData(c));
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(list->mBuffers[c].mData) % 64, 0U);
        for (unsigned i = 0; i < 100; ++i) {
            ASSERT_EQ(buffer.floatChannelData(c)[i], 0.0F);
        }
    }
}

TEST(AVAudioPCMBuffer, WritableListMayBePointedElsewhereWithoutLosingTheReference) {
    AVAudioPCMBuffer buffer(AVAudioFormat(48000.0, 2), 16);
    buffer.mutableAudioBufferList()->mBuffers[1].mData = nullptr;
    buffer.mutableAudioBufferList()->mNumberBuffers = 1;
    EXPECT_EQ(buffer.audioBufferList()->mNumberBuffers, 2U);
    EXPECT_EQ(buffer.audioBufferList()->mBuffers[1].mData, buffer.floatChannelData(1));
}

TEST(AVAudioPCMBuffer, CapacityMayBeZero) {
    AVAudioPCMBuffer buffer(AVAudioFormat(48000.0, 2), 0);
    EXPECT_EQ(buffer.audioBufferList()->mBuffers[0].mDataByteSize, 0U);
}

} // namespace
