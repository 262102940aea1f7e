#include "hosts/cli/KernelEngine.h"

#include <cstring>

namespace qor::cli {

KernelEngine::KernelEngine()
    : adapter_(makeRef<QOR_Limiter_ExtensionDSPKernelAdapter>()), parameters_(adapter_) {
    pullBlock_ = [this](AudioUnitRenderActionFlags*, const AudioTimeStamp*, std::uint32_t frames, long,
                        AudioBufferList* list) -> OSStatus {
        for (unsigned channel = 0; channel < 2; ++channel) {
            std::memcpy(list->mBuffers[channel].mData, input_[channel], frames * sizeof(float));
        }
        return noErr;
    };
}

Result<void> KernelEngine::allocate(double sampleRate) {
    const AVAudioFormat format(sampleRate, 2);
    for (const Ref<AUAudioUnitBus>& bus : {adapter_->inputBus(), adapter_->outputBus()}) {
        if (Result<void> set = bus->setFormat(format); !set) {
            return workFailed("the limiter does not take " + text(sampleRate) +
                              " Hz: " + set.error().localizedDescription());
        }
    }
    adapter_->setMaximumFramesToRender(kLargestBlock);
    adapter_->allocateRenderResources();
    renderBlock_ = adapter_->internalRenderBlock();
    return {};
}

void KernelEngine::setParameter(AUParameterAddress address, float value) {
    parameters_.parameterTree()->parameterWithAddress(address)->setValue(value);
}

void KernelEngine::setRawParameter(std::int32_t address, float value) {
    adapter_->setParameterEx(address, value);
}

Result<void> KernelEngine::render(std::int64_t sampleTime, std::uint32_t frames, const AURenderEvent* events,
                                  const float* const input[2], float* const output[2]) {
    input_ = input;
    AudioBufferListStorage<2> list;
    for (unsigned channel = 0; channel < 2; ++channel) {
        list.list.mBuffers[channel] = {1, frames * static_cast<std::uint32_t>(sizeof(float)),
                                       output[channel]};
    }
    AudioUnitRenderActionFlags flags = 0;
    AudioTimeStamp time{};
    time.mSampleTime = static_cast<double>(sampleTime);
    time.mFlags = kAudioTimeStampSampleTimeValid;
    const OSStatus status = renderBlock_(&flags, &time, frames, 0, &list.list, events, pullBlock_);
    if (status != noErr) {
        return workFailed("rendering failed at frame " + text(sampleTime) + " with the status " +
                          text(status) + ".");
    }
    return {};
}

MeterValues KernelEngine::meters() {
    return {adapter_->getDynamicsValue1(), adapter_->getDynamicsValue2(), adapter_->getPeakValue1(),
            adapter_->getPeakValue2()};
}

} // namespace qor::cli
