#include "kernel/BufferedAudioBus.h"

namespace qor {

void BufferedAudioBus::init(const AVAudioFormat& format, std::uint32_t maxChannels) {
    maxFrames = 0;
    deallocateRenderResources();
    bus = nullptr;
    if (Result<Ref<AUAudioUnitBus>> made = AUAudioUnitBus::initWithFormat(format)) {
        bus = std::move(made).value();
        bus->setMaximumChannelCount(maxChannels);
    }
}

void BufferedAudioBus::allocateRenderResources(std::uint32_t inMaxFrames) {
    maxFrames = inMaxFrames;
    pcmBuffer = makeRef<AVAudioPCMBuffer>(unwrap(bus).format(), maxFrames);
    pcmAudioBufferList = pcmBuffer->audioBufferList();
    mutableAudioBufferList = pcmBuffer->mutableAudioBufferList();
}

void BufferedAudioBus::deallocateRenderResources() {
    pcmBuffer = nullptr;
    pcmAudioBufferList = nullptr;
    mutableAudioBufferList = nullptr;
}

} // namespace qor
