// The render block and the bridges for the editor.
#include "unit/QOR_Limiter_Extension_AudioUnit.h"

#include "Common/Extensions.h"
#include "kernel/ParameterAddresses.h"

namespace qor {

AUInternalRenderBlock QOR_Limiter_Extension_AudioUnit::internalRenderBlock() {
    [[maybe_unused]] const AURenderPullInputBlock prepared = renderPullInputBlock();
    return [self = shared_from_this(), midiOutput = MIDIOutputEventBlock(), adapter = kernelAdapter,
            wrappedRender = wrapped().internalRenderBlock()](
               AudioUnitRenderActionFlags* actionFlags, const AudioTimeStamp* timestamp,
               std::uint32_t frameCount, long outputBusNumber, AudioBufferList* outputData,
               const AURenderEvent* realtimeEventListHead,
               const AURenderPullInputBlock& pullInputBlock) QOR_NONBLOCKING -> OSStatus {
        if (outputBusNumber > 0) {
            return kAudioUnitErr_NoConnection;
        }
        OSStatus status = noErr;
        self->currentOuputData = outputData;
        if (midiOutput) {
            adapter->setAUMIDIOutputEventBlock(midiOutput);
        }
        status = adapter->render(actionFlags, timestamp, frameCount, outputBusNumber, outputData,
                                 realtimeEventListHead, pullInputBlock);
        QOR_UNSEEN_BEGIN // the failure print
        if (status != noErr) {
            safeprint("AUExtension::ERROR: We have a problem with the kernel! " + text(status));
        }
        QOR_UNSEEN_END
        if (adapter->getParameterEx(static_cast<std::int32_t>(kLimiterFinalLimiter)) != 1.0F) {
            return status;
        }
        // The host's own callback: what is limited is what the host delivers on this second pull.
        QOR_UNSEEN_BEGIN // the wrapped unit's block, and the failure print
        status = wrappedRender(actionFlags, timestamp, frameCount, 0, outputData, nullptr, pullInputBlock);
        if (status != noErr) {
            safeprint("AUExtension::ERROR: We have a problem with the wrapped unit! " + text(status));
        }
        QOR_UNSEEN_END
        return noErr;
    };
}

AURenderPullInputBlock QOR_Limiter_Extension_AudioUnit::renderPullInputBlock() {
    return [self = shared_from_this()](AudioUnitRenderActionFlags* /*actionFlags*/,
                                       const AudioTimeStamp* /*timestamp*/, std::uint32_t /*frameCount*/,
                                       long /*inputBusNumber*/, AudioBufferList* inputData) -> OSStatus {
        if (const AudioBufferList* output = self->currentOuputData) {
            inputData->mBuffers[0] = output->mBuffers[0];
        }
        return noErr;
    };
}

void QOR_Limiter_Extension_AudioUnit::setParameter(std::int32_t address, float value) {
    const Ref<AUParameterTree> tree = parameterTree();
    if (!tree) {
        return;
    }
    const Ref<AUParameter> parameter =
        tree->parameterWithAddress(static_cast<AUParameterAddress>(std::int64_t{address}));
    if (!parameter) {
        return;
    }
    if (parameter->value() != value) {
        parameter->setValue(value);
    }
    kernelAdapter->setParameter(*parameter, value);
}

float QOR_Limiter_Extension_AudioUnit::getParameter(std::int32_t address) {
    const Ref<AUParameterTree> tree = parameterTree();
    if (!tree) {
        return 0.0F;
    }
    const Ref<AUParameter> parameter =
        tree->parameterWithAddress(static_cast<AUParameterAddress>(std::int64_t{address}));
    return parameter ? kernelAdapter->valueForParameter(*parameter) : 0.0F;
}

float QOR_Limiter_Extension_AudioUnit::getDynamicsValue1() {
    return kernelAdapter->getDynamicsValue1();
}

float QOR_Limiter_Extension_AudioUnit::getDynamicsValue2() {
    return kernelAdapter->getDynamicsValue2();
}

float QOR_Limiter_Extension_AudioUnit::getPeakValue1() {
    return kernelAdapter->getPeakValue1();
}

float QOR_Limiter_Extension_AudioUnit::getPeakValue2() {
    return kernelAdapter->getPeakValue2();
}

double QOR_Limiter_Extension_AudioUnit::getSamplerate() {
    return (*outputBusses())[0].format().sampleRate();
}

} // namespace qor
