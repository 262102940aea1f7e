// A bus together with the storage for its audio.
#pragma once

#include "platform/audio/Audio.h"

namespace qor {

/// Allocation belongs to the configuration thread, while no render call runs.
struct BufferedAudioBus {
    Ref<AUAudioUnitBus> bus;
    std::uint32_t maxFrames = 0; // capacity of `pcmBuffer`
    Ref<AVAudioPCMBuffer> pcmBuffer;
    const AudioBufferList* pcmAudioBufferList = nullptr; // the buffer's own pointers
    AudioBufferList* mutableAudioBufferList = nullptr;   // what the host's pull callback may change

    /// Makes the bus; it stays absent if the format is none that a bus can carry.
    void init(const AVAudioFormat& format, std::uint32_t maxChannels);
    /// Makes the storage in the bus's present format.
    void allocateRenderResources(std::uint32_t inMaxFrames);
    void deallocateRenderResources();
};

} // namespace qor
