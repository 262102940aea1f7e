// The system's peak limiter as an audio unit.
#pragma once

#include "platform/audio/AUAudioUnit.h"

namespace platform {

/// One input and one output bus, mono or stereo, any rate above 0 Hz; both start as stereo at 44100 Hz and
/// must agree when render resources are allocated. No latency. Works in place.
///
/// Parameters, by number through the plain handle and by address in the tree, held within their ranges:
/// 0 attack, 0.001 to 0.03 s; 1 decay, 0.001 to 0.06 s; 2 pre-gain, -40 to 40 dB. A NaN is refused.
///
/// The render block pulls bus 0 into the output list and limits there; a buffer without memory gets the
/// unit's own. Parameter events take effect at their samples. Its answers: kAudioUnitErr_Uninitialized
/// without render resources, kAudioUnitErr_TooManyFramesToProcess above the limit as it was at allocation,
/// kAudioUnitErr_NoConnection without a pull block, kAudioUnitErr_InvalidElement for another bus than 0,
/// kAudio_ParamError without an output list, otherwise the pull's own. The block outlives the unit.
class SystemPeakLimiter final : public AUAudioUnit, public AudioUnitHandle {
public:
    static AudioComponent registeredComponent();

    static Result<Ref<SystemPeakLimiter>> make(const AudioComponentDescription& description,
                                               AudioComponentInstantiationOptions options);
    ~SystemPeakLimiter() override;

    std::optional<std::string> audioUnitShortName() const override { return "Limiter"; }
    Ref<AUAudioUnitBusArray> inputBusses() override { return inputs_; }
    Ref<AUAudioUnitBusArray> outputBusses() override { return outputs_; }
    bool canPerformInput() override { return true; }
    bool canPerformOutput() override { return true; }
    bool canProcessInPlace() override { return true; }
    std::optional<std::vector<std::int64_t>> channelCapabilities() override;
    Result<void> allocateRenderResources() override;
    void deallocateRenderResources() override;
    void reset() override;
    AUInternalRenderBlock internalRenderBlock() override;
    void setShouldBypassEffect(bool bypass) override;
    std::vector<AUParameterAddress> parametersForOverviewWithCount(std::int64_t count) override;
    AudioUnit plainHandle() noexcept override { return this; }

    OSStatus setParameter(AudioUnitParameterID id, AudioUnitScope scope, AudioUnitElement element,
                          AudioUnitParameterValue value, std::uint32_t offset) noexcept override;
    OSStatus getParameter(AudioUnitParameterID id, AudioUnitScope scope, AudioUnitElement element,
                          AudioUnitParameterValue& value) noexcept override;

private:
    class Renderer;
    static constexpr std::uint32_t kMaximumChannels = 2;

    SystemPeakLimiter();
    void makeParameterTree();
    /// noErr for a parameter of the unit, otherwise what is wrong with its place.
    static OSStatus checkPlace(AudioUnitParameterID id, AudioUnitScope scope,
                               AudioUnitElement element) noexcept;

    Ref<Renderer> renderer_;
    Ref<AUAudioUnitBusArray> inputs_;
    Ref<AUAudioUnitBusArray> outputs_;
};

} // namespace platform
