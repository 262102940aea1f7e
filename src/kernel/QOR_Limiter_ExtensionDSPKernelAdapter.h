// The only door to the kernel: owns it with its buses, keeps the host's callbacks, offers the render entries.
#pragma once

#include "kernel/BufferedInputBus.h"
#include "kernel/QOR_Limiter_Extension_DSPKernel.h"

namespace qor {

/// Construction, allocation and the block setters belong to the configuration thread, the render entries to
/// the render thread; parameters and meters may be used from any thread (plain stores, no locks).
class QOR_Limiter_ExtensionDSPKernelAdapter {
public:
    /// A working kernel at 48000 Hz and 2 channels, with buses but without render buffers.
    QOR_Limiter_ExtensionDSPKernelAdapter();
    QOR_Limiter_ExtensionDSPKernelAdapter(const QOR_Limiter_ExtensionDSPKernelAdapter&) = delete;
    QOR_Limiter_ExtensionDSPKernelAdapter& operator=(const QOR_Limiter_ExtensionDSPKernelAdapter&) = delete;

    const Ref<AUAudioUnitBus>& inputBus() const noexcept { return _inputBus.bus; }

    void setParameter(const AUParameter& parameter, float value) {
        _kernel.setParameter(parameter.address(), value);
    }
    /// The kernel's slot: what was written last, from whichever side.
    float valueForParameter(const AUParameter& parameter) {
        return _kernel.getParameter(parameter.address());
    }

    std::uint32_t maximumFramesToRender() {
        return static_cast<std::uint32_t>(_kernel.getMaximumFramesToRender());
    }
    void setMaximumFramesToRender(std::uint32_t frames) {
        _kernel.setMaximumFramesToRender(static_cast<std::int32_t>(frames));
    }
    bool shouldBypassEffect() { return _kernel.getBypassed(); }
    void setShouldBypassEffect(bool bypass) { _kernel.setBypassed(bypass); }

    /// Makes the input buffer, brings the kernel to the output bus's format and resets it.
    void allocateRenderResources();
    /// Frees the input buffer; the kernel keeps its state.
    void deallocateRenderResources() { _inputBus.deallocateRenderResources(); }
    void reset() QOR_NONBLOCKING_IN_RENDER { _kernel.reset(); }
    void setBypass(bool bypass) { _kernel.setBypassed(bypass); }

    void setAUMIDIOutputEventBlock(AUMIDIOutputEventBlock block) noexcept QOR_NONBLOCKING_IN_RENDER {
        _outputEventBlock = std::move(block);
    }
    void setAUHostMusicalContextBlock(AUHostMusicalContextBlock block) noexcept {
        _musicalContext = std::move(block);
    }
    void setAUScheduleMIDIEventBlock(AUScheduleMIDIEventBlock block) noexcept {
        _scheduleMIDIEventBlock = std::move(block);
    }
    void setAUHostTransportStateBlock(AUHostTransportStateBlock block) noexcept {
        _transportStateBlock = std::move(block);
    }

    /// A render callback with the MIDI output block of this moment; good as long as the adapter lives. Fails
    /// without a pull callback and for more frames than the maximum.
    AUInternalRenderBlock internalRenderBlock();
    /// The same for a caller that stands between host and adapter. Without a pull callback it renders what
    /// the input buffer holds. `outputData` must be there.
    OSStatus render(AudioUnitRenderActionFlags* actionFlags, const AudioTimeStamp* timestamp,
                    std::uint32_t frameCount, long outputBusNumber, AudioBufferList* outputData,
                    const AURenderEvent* realtimeEventListHead, const AURenderPullInputBlock& pullInputBlock)
        QOR_NONBLOCKING;
    /// Attaches the buffers and calls the kernel's second entry, which renders nothing.
    OSStatus render2(std::uint32_t frameCount, AudioBufferList* outputData) QOR_NONBLOCKING;

    /// By number. A negative address is sign-extended and so belongs to no parameter.
    void setParameterEx(std::int32_t address, float value) QOR_NONBLOCKING_IN_RENDER {
        _kernel.setParameter(static_cast<AUParameterAddress>(std::int64_t{address}), value);
    }
    float getParameterEx(std::int32_t address) QOR_NONBLOCKING {
        return _kernel.getParameter(static_cast<AUParameterAddress>(std::int64_t{address}));
    }

    float getDynamicsValue1() { return _kernel.getDynamicsValue1(); }
    float getDynamicsValue2() { return _kernel.getDynamicsValue2(); }
    float getPeakValue1() { return _kernel.getPeakValue1(); }
    float getPeakValue2() { return _kernel.getPeakValue2(); }
    float getSamplerate() { return _kernel.getSamplerate(); }
    void setSamplerate(float samplerate) { _kernel.setSamplerate(samplerate); }

    const Ref<AUAudioUnitBus>& outputBus() const noexcept { return _outputBus; }

private:
    QOR_Limiter_Extension_DSPKernel _kernel;
    BufferedInputBus _inputBus;
    AUHostMusicalContextBlock _musicalContext;
    AUMIDIOutputEventBlock _outputEventBlock;
    AUHostTransportStateBlock _transportStateBlock;
    AUScheduleMIDIEventBlock _scheduleMIDIEventBlock;
    Ref<AUAudioUnitBus> _outputBus;
};

} // namespace qor
