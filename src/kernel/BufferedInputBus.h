// An input bus that pulls its audio from the host into its own storage.
#pragma once

#include "kernel/BufferedAudioBus.h"

namespace qor {

/// The two operations run on the render thread, after `allocateRenderResources`.
struct BufferedInputBus : BufferedAudioBus {
    /// Sets the writable list right for a pull: the buffer's own pointers and its whole size.
    void prepareInputBufferList() noexcept {
        mutableAudioBufferList->mNumberBuffers = pcmAudioBufferList->mNumberBuffers;
        for (std::uint32_t i = 0; i < pcmAudioBufferList->mNumberBuffers; ++i) {
            AudioBuffer& buffer = mutableAudioBufferList->mBuffers[i];
            buffer.mNumberChannels = pcmAudioBufferList->mBuffers[i].mNumberChannels;
            buffer.mData = pcmAudioBufferList->mBuffers[i].mData;
            buffer.mDataByteSize = maxFrames * static_cast<std::uint32_t>(sizeof(float));
        }
    }

    /// Fills the writable list through the host's callback and returns its status, or
    /// kAudioUnitErr_NoConnection if there is none.
    OSStatus pullInput(AudioUnitRenderActionFlags* actionFlags, const AudioTimeStamp* timestamp,
                       std::uint32_t frameCount, long inputBusNumber,
                       const AURenderPullInputBlock& pullInputBlock) QOR_NONBLOCKING {
        if (!pullInputBlock) {
            return kAudioUnitErr_NoConnection;
        }
        prepareInputBufferList();
        QOR_UNSEEN_BEGIN // the host's callback
        return pullInputBlock(actionFlags, timestamp, frameCount, inputBusNumber, mutableAudioBufferList);
        QOR_UNSEEN_END
    }
};

} // namespace qor
