// Allocation, release and reset.
#include "unit/QOR_Limiter_Extension_AudioUnit.h"

#include "Common/Extensions.h"

namespace qor {

namespace {

void logWhetherDefined(std::string_view property, bool defined) {
    debugprint(std::string(defined ? "AUExtension: The property '" : "AUExtension: WARNING: The property '") +
               std::string(property) + (defined ? "' is defined." : "' is NOT defined."));
}

double inputRate(AUAudioUnit& unit) {
    return (*unit.inputBusses())[0].format().sampleRate();
}

double outputRate(AUAudioUnit& unit) {
    return (*unit.outputBusses())[0].format().sampleRate();
}

} // namespace

Result<void> QOR_Limiter_Extension_AudioUnit::allocateRenderResources() {
    debugprint("AUExtension::allocateRenderResources()");
    kernelAdapter->setSamplerate(static_cast<float>(outputRate(wrapped())));
    const std::size_t outputCount = outputBusses()->count();
    for (std::size_t i = 0; i < outputCount; ++i) {
        (*outputBusses())[i].setShouldAllocateBuffer(true);
    }
    bringAdapterToWrappedFormat();
    kernelAdapter->allocateRenderResources();
    handHostCallbacksToAdapter();
    (*wrapped().inputBusses())[0].setEnabled(true);
    (*wrapped().outputBusses())[0].setEnabled(true);
    debugprint("AUExtension: Native wrapped unit input samplerate (prior): " + text(inputRate(wrapped())) +
               ".");
    debugprint("AUExtension: Native wrapped unit output samplerate (prior): " + text(outputRate(wrapped())) +
               ".");
    bringWrappedInputToOutputFormat();
    debugprint("AUExtension: New wrapped unit input samplerate: " + text(inputRate(wrapped())) + ".");
    debugprint("AUExtension: New wrapped unit output samplerate: " + text(outputRate(wrapped())) + ".");
    if (Result<void> allocated = wrapped().allocateRenderResources(); !allocated) {
        return allocated;
    }
    unwrapImplicit(effect).setAttackTime(0.1); // clamped to 0.03
    unwrapImplicit(effect).setDecayTime(0.1);  // clamped to 0.06
    unwrapImplicit(effect).setPreGain(-0.01);
    return {};
}

/// The adapter allocates and sets its rate by its own buses, which the host never sees: they follow the lent
/// ones here, so that the kernel runs at the rate that the host negotiated.
void QOR_Limiter_Extension_AudioUnit::bringAdapterToWrappedFormat() {
    const AVAudioFormat format = (*wrapped().outputBusses())[0].format();
    for (const Ref<AUAudioUnitBus>& bus : {kernelAdapter->inputBus(), kernelAdapter->outputBus()}) {
        // A bus that refuses keeps its format; the kernel passes channel counts other than 2 through anyway.
        [[maybe_unused]] const Result<void> taken = unwrap(bus).setFormat(format);
    }
}

void QOR_Limiter_Extension_AudioUnit::handHostCallbacksToAdapter() {
    const AUHostMusicalContextBlock musicalContext = musicalContextBlock();
    kernelAdapter->setAUHostMusicalContextBlock(musicalContext);
    logWhetherDefined("musicalContextBlock", static_cast<bool>(musicalContext));

    const AUHostTransportStateBlock transportState = transportStateBlock();
    kernelAdapter->setAUHostTransportStateBlock(transportState);
    logWhetherDefined("transportStateBlock", static_cast<bool>(transportState));

    const AUScheduleMIDIEventBlock scheduleMIDIEvent = scheduleMIDIEventBlock();
    kernelAdapter->setAUScheduleMIDIEventBlock(scheduleMIDIEvent);
    logWhetherDefined("scheduleMIDIEventBlock", static_cast<bool>(scheduleMIDIEvent));

    const AUMIDIOutputEventBlock MIDIOutputEvent = MIDIOutputEventBlock();
    kernelAdapter->setAUMIDIOutputEventBlock(MIDIOutputEvent);
    logWhetherDefined("midiOutputEventBlock", static_cast<bool>(MIDIOutputEvent));
}

void QOR_Limiter_Extension_AudioUnit::bringWrappedInputToOutputFormat() {
    Result<void> taken = (*wrapped().inputBusses())[0].setFormat((*outputBusses())[0].format());
    if (taken) {
        taken = (*wrapped().outputBusses())[0].setFormat((*outputBusses())[0].format());
    }
    if (!taken) {
        debugprint("AUExtension: WARNING: The format could not be set to the wrapped unit: " +
                   taken.error().localizedDescription() + ".");
    }
}

void QOR_Limiter_Extension_AudioUnit::deallocateRenderResources() {
    debugprint("AUExtension::deallocateRenderResources()");
    kernelAdapter->deallocateRenderResources();
    wrapped().deallocateRenderResources();
}

void QOR_Limiter_Extension_AudioUnit::reset() {
    debugprint("AUExtension::reset()");
    kernelAdapter->reset();
    wrapped().reset();
}

} // namespace qor
