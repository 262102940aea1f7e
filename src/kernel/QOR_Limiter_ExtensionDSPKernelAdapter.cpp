#include "kernel/QOR_Limiter_ExtensionDSPKernelAdapter.h"

#include "TOOLS/SOURCES/Data.h" // for this unit's own PrinTable, invalid and empty

namespace qor {

namespace {

/// A list without a first data pointer asks for rendering in place: its buffers become the input's.
void takeInputBuffersIfAbsent(AudioBufferList& outList, const AudioBufferList* inList) noexcept {
    if (outList.mBuffers[0].mData == nullptr) {
        for (std::uint32_t i = 0; i < outList.mNumberBuffers; ++i) {
            outList.mBuffers[i].mData = inList->mBuffers[i].mData;
        }
    }
}

} // namespace

QOR_Limiter_ExtensionDSPKernelAdapter::QOR_Limiter_ExtensionDSPKernelAdapter() {
    const AVAudioFormat format(48000.0, 2);
    _kernel.init(static_cast<std::int32_t>(format.channelCount()), format.sampleRate());
    _inputBus.init(format, 2);
    if (Result<Ref<AUAudioUnitBus>> made = AUAudioUnitBus::initWithFormat(format)) {
        _outputBus = std::move(made).value();
        _outputBus->setMaximumChannelCount(2);
    }
}

void QOR_Limiter_ExtensionDSPKernelAdapter::allocateRenderResources() {
    _inputBus.allocateRenderResources(maximumFramesToRender());
    const AVAudioFormat& format = unwrap(outputBus()).format();
    _kernel.init(static_cast<std::int32_t>(format.channelCount()), format.sampleRate());
    _kernel.reset();
}

AUInternalRenderBlock QOR_Limiter_ExtensionDSPKernelAdapter::internalRenderBlock() {
    return [kernel = &_kernel, input = &_inputBus, outputEventBlock = _outputEventBlock](
               AudioUnitRenderActionFlags* /*actionFlags*/, const AudioTimeStamp* timestamp,
               std::uint32_t frameCount, long /*outputBusNumber*/, AudioBufferList* outputData,
               const AURenderEvent* realtimeEventListHead,
               const AURenderPullInputBlock& pullInputBlock) QOR_NONBLOCKING -> OSStatus {
        AudioUnitRenderActionFlags pullFlags = 0;
        if (frameCount > static_cast<std::uint32_t>(kernel->getMaximumFramesToRender())) {
            return kAudioUnitErr_TooManyFramesToProcess;
        }
        const OSStatus err = input->pullInput(&pullFlags, timestamp, frameCount, 0, pullInputBlock);
        if (err != noErr) {
            return err;
        }
        AudioBufferList* inList = input->mutableAudioBufferList;
        AudioBufferList* outList = outputData;
        takeInputBuffersIfAbsent(*outList, inList);
        kernel->setBuffers(inList, outList);
        kernel->processWithEvents(timestamp, frameCount, realtimeEventListHead, outputEventBlock);
        return noErr;
    };
}

OSStatus QOR_Limiter_ExtensionDSPKernelAdapter::render(AudioUnitRenderActionFlags* /*actionFlags*/,
                                                       const AudioTimeStamp* timestamp,
                                                       std::uint32_t frameCount, long /*outputBusNumber*/,
                                                       AudioBufferList* outputData,
                                                       const AURenderEvent* realtimeEventListHead,
                                                       const AURenderPullInputBlock& pullInputBlock) {
    AudioUnitRenderActionFlags pullFlags = 0;
    if (frameCount > maximumFramesToRender()) {
        return kAudioUnitErr_TooManyFramesToProcess;
    }
    if (pullInputBlock) {
        const OSStatus err = _inputBus.pullInput(&pullFlags, timestamp, frameCount, 0, pullInputBlock);
        if (err != noErr) {
            return err;
        }
    }
    AudioBufferList* inList = _inputBus.mutableAudioBufferList;
    takeInputBuffersIfAbsent(*outputData, inList);
    _kernel.setBuffers(inList, outputData);
    if (outputData != nullptr) {
        _kernel.processWithEvents(timestamp, frameCount, realtimeEventListHead, _outputEventBlock);
    }
    return noErr;
}

OSStatus QOR_Limiter_ExtensionDSPKernelAdapter::render2(std::uint32_t frameCount,
                                                        AudioBufferList* outputData) {
    _kernel.setBuffers(_inputBus.mutableAudioBufferList, outputData);
    _kernel.process2(frameCount, 0);
    return noErr;
}

} // namespace qor
