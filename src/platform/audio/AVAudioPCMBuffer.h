// Storage for a block of audio in one format.
#pragma once

#include "platform/audio/AVAudioFormat.h"
#include "platform/audio/AudioTypes.h"
#include "platform/core/RealTime.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace platform {

/// One run of 32-bit floats per channel, zeroed and aligned for vector loads, made at construction (which
/// allocates) and never moved. Configuration thread for construction; the samples are the render thread's.
class AVAudioPCMBuffer {
public:
    AVAudioPCMBuffer(const AVAudioFormat& format, std::uint32_t frameCapacity);
    AVAudioPCMBuffer(const AVAudioPCMBuffer&) = delete;
    AVAudioPCMBuffer& operator=(const AVAudioPCMBuffer&) = delete;

    const AVAudioFormat& format() const noexcept { return format_; }
    std::uint32_t frameCapacity() const noexcept { return frameCapacity_; }
    /// The buffer's own pointers. Nothing changes them.
    const AudioBufferList* audioBufferList() const noexcept { return lists_.reference(); }
    /// A list of its own with the same content at first; whoever fills it may point it elsewhere, and
    /// `audioBufferList` tells how to set it right again.
    AudioBufferList* mutableAudioBufferList() noexcept { return lists_.writable(); }
    /// The channel's samples; `channel` below the format's count.
    float* floatChannelData(std::uint32_t channel) noexcept QOR_NONBLOCKING_IN_RENDER;

private:
    /// Two lists of equal length in one piece of memory.
    class Lists {
    public:
        explicit Lists(std::uint32_t buffers);
        AudioBufferList* reference() const noexcept;
        AudioBufferList* writable() const noexcept;

    private:
        std::size_t bytesPerList_;
        std::unique_ptr<std::byte[]> memory_;
    };
    struct AlignedDelete {
        void operator()(float* samples) const noexcept;
    };

    AVAudioFormat format_;
    std::uint32_t frameCapacity_;
    std::size_t stride_; // floats from one channel to the next
    std::unique_ptr<float[], AlignedDelete> samples_;
    Lists lists_;
};

} // namespace platform
