#include "platform/audio/AVAudioPCMBuffer.h"

#include <algorithm>
#include <new>

namespace platform {

namespace {

constexpr std::align_val_t kAlignment{64};
constexpr std::size_t kFloatsPerLine = 16;

std::size_t listBytes(std::uint32_t buffers) {
    const std::size_t more = buffers > 1 ? buffers - 1 : 0;
    const std::size_t bytes = sizeof(AudioBufferList) + more * sizeof(AudioBuffer);
    return (bytes + alignof(AudioBufferList) - 1) / alignof(AudioBufferList) * alignof(AudioBufferList);
}

} // namespace

AVAudioPCMBuffer::Lists::Lists(std::uint32_t buffers)
    : bytesPerList_(listBytes(buffers)), memory_(new std::byte[2 * bytesPerList_]) {
    for (AudioBufferList* list : {reference(), writable()}) {
        new (list) AudioBufferList;
        list->mNumberBuffers = buffers;
        for (std::uint32_t i = 1; i < buffers; ++i) {
            new (list->mBuffers + i) AudioBuffer;
        }
    }
}

AudioBufferList* AVAudioPCMBuffer::Lists::reference() const noexcept {
    return reinterpret_cast<AudioBufferList*>(memory_.get());
}

AudioBufferList* AVAudioPCMBuffer::Lists::writable() const noexcept {
    return reinterpret_cast<AudioBufferList*>(memory_.get() + bytesPerList_);
}

void AVAudioPCMBuffer::AlignedDelete::operator()(float* samples) const noexcept {
    ::operator delete[](samples, kAlignment);
}

AVAudioPCMBuffer::AVAudioPCMBuffer(const AVAudioFormat& format, std::uint32_t frameCapacity)
    : format_(format), frameCapacity_(frameCapacity),
      stride_((std::size_t{frameCapacity} + kFloatsPerLine - 1) / kFloatsPerLine * kFloatsPerLine),
      samples_(new (kAlignment) float[std::max<std::size_t>(1, stride_ * format.channelCount())]()),
      lists_(format.channelCount()) {
    for (AudioBufferList* list : {lists_.reference(), lists_.writable()}) {
        for (std::uint32_t i = 0; i < format.channelCount(); ++i) {
            list->mBuffers[i] = {1, static_cast<std::uint32_t>(frameCapacity * sizeof(float)),
                                 floatChannelData(i)};
        }
    }
}

float* AVAudioPCMBuffer::floatChannelData(std::uint32_t channel) noexcept {
    return samples_.get() + channel * stride_;
}

} // namespace platform
