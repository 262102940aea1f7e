#include "platform/audio/SystemPeakLimiter.h"

#include "platform/audio/SystemPeakLimiterRenderer.h"

#include <utility>

namespace platform {

namespace {

constexpr double kInitialSampleRate = 44100.0;

Ref<AUAudioUnitBus> makeBus(std::uint32_t maximumChannels) {
    // A stereo format at a positive rate is never refused.
    auto bus = AUAudioUnitBus::initWithFormat(AVAudioFormat(kInitialSampleRate, 2)).value();
    bus->setMaximumChannelCount(maximumChannels);
    return bus;
}

} // namespace

AudioComponent SystemPeakLimiter::registeredComponent() {
    return {kSystemPeakLimiter, "System: Peak Limiter", "System", 0x00010000};
}

SystemPeakLimiter::SystemPeakLimiter()
    : renderer_(makeRef<Renderer>()),
      inputs_(makeRef<AUAudioUnitBusArray>(this, AUAudioUnitBusType::Input,
                                           std::vector{makeBus(kMaximumChannels)})),
      outputs_(makeRef<AUAudioUnitBusArray>(this, AUAudioUnitBusType::Output,
                                            std::vector{makeBus(kMaximumChannels)})) {
    guardFormat((*inputs_)[0]);
    guardFormat((*outputs_)[0]);
    makeParameterTree();
}

SystemPeakLimiter::~SystemPeakLimiter() {
    inputs_->disown();
    outputs_->disown();
}

Result<Ref<SystemPeakLimiter>> SystemPeakLimiter::make(const AudioComponentDescription& description,
                                                       AudioComponentInstantiationOptions options) {
    Ref<SystemPeakLimiter> unit(new SystemPeakLimiter);
    if (auto base = unit->initWithComponentDescription(description, options); !base) {
        return base.error();
    }
    return unit;
}

void SystemPeakLimiter::makeParameterTree() {
    const auto parameter = [](const char* identifier, const char* name, AUParameterAddress address,
                              AudioUnitParameterUnit unit) {
        const auto& range = Renderer::kRanges[address];
        return AUParameterTree::createParameter(
            identifier, name, address, range.lowest, range.highest, unit, std::nullopt,
            kAudioUnitParameterFlag_IsReadable | kAudioUnitParameterFlag_IsWritable, std::nullopt,
            std::nullopt);
    };
    auto tree = AUParameterTree::createTree({
        parameter("attackTime", "Attack Time", kLimiterParam_AttackTime, AudioUnitParameterUnit::Seconds),
        parameter("decayTime", "Decay Time", kLimiterParam_DecayTime, AudioUnitParameterUnit::Seconds),
        parameter("preGain", "Pre-Gain", kLimiterParam_PreGain, AudioUnitParameterUnit::Decibels),
    });
    tree->implementorValueObserver = [renderer = renderer_](AUParameter& changed, AUValue value) {
        renderer->setParameter(changed.address(), value);
    };
    tree->implementorValueProvider = [renderer = renderer_](AUParameter& asked) {
        return renderer->parameter(asked.address());
    };
    AUAudioUnit::setParameterTree(std::move(tree));
}

std::optional<std::vector<std::int64_t>> SystemPeakLimiter::channelCapabilities() {
    return std::vector<std::int64_t>{1, 1, 2, 2};
}

Result<void> SystemPeakLimiter::allocateRenderResources() {
    const AVAudioFormat& in = (*inputs_)[0].format();
    const AVAudioFormat& out = (*outputs_)[0].format();
    if (in != out) {
        return NSError(
            NSOSStatusErrorDomain, kAudioUnitErr_FormatNotSupported,
            {{NSLocalizedDescriptionKey, "The peak limiter's input (" + in.description() + ") and output (" +
                                             out.description() + ") differ: give both buses one format."}});
    }
    renderer_->allocate(out, maximumFramesToRender());
    return AUAudioUnit::allocateRenderResources();
}

void SystemPeakLimiter::deallocateRenderResources() {
    AUAudioUnit::deallocateRenderResources();
    renderer_->deallocate();
}

void SystemPeakLimiter::reset() {
    renderer_->reset();
}

AUInternalRenderBlock SystemPeakLimiter::internalRenderBlock() {
    return
        [renderer = renderer_](AudioUnitRenderActionFlags* flags, const AudioTimeStamp* timestamp,
                               std::uint32_t frames, long bus, AudioBufferList* output,
                               const AURenderEvent* events, const AURenderPullInputBlock& pull)
            QOR_NONBLOCKING { return renderer->render(flags, timestamp, frames, bus, output, events, pull); };
}

void SystemPeakLimiter::setShouldBypassEffect(bool bypass) {
    AUAudioUnit::setShouldBypassEffect(bypass);
    renderer_->bypass.store(bypass, std::memory_order_relaxed);
}

std::vector<AUParameterAddress> SystemPeakLimiter::parametersForOverviewWithCount(std::int64_t count) {
    std::vector<AUParameterAddress> most{kLimiterParam_PreGain, kLimiterParam_AttackTime,
                                         kLimiterParam_DecayTime};
    if (count < static_cast<std::int64_t>(most.size())) {
        most.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
    return most;
}

OSStatus SystemPeakLimiter::checkPlace(AudioUnitParameterID id, AudioUnitScope scope,
                                       AudioUnitElement element) noexcept {
    if (scope != kAudioUnitScope_Global) {
        return kAudioUnitErr_InvalidScope;
    }
    if (element != 0) {
        return kAudioUnitErr_InvalidElement;
    }
    return id < Renderer::kRanges.size() ? noErr : kAudioUnitErr_InvalidParameter;
}

OSStatus SystemPeakLimiter::setParameter(AudioUnitParameterID id, AudioUnitScope scope,
                                         AudioUnitElement element, AudioUnitParameterValue value,
                                         [[maybe_unused]] std::uint32_t offset) noexcept {
    if (const OSStatus status = checkPlace(id, scope, element); status != noErr) {
        return status;
    }
    return renderer_->setParameter(id, value) ? noErr : kAudioUnitErr_InvalidParameterValue;
}

OSStatus SystemPeakLimiter::getParameter(AudioUnitParameterID id, AudioUnitScope scope,
                                         AudioUnitElement element, AudioUnitParameterValue& value) noexcept {
    if (const OSStatus status = checkPlace(id, scope, element); status != noErr) {
        return status;
    }
    value = renderer_->parameter(id);
    return noErr;
}

} // namespace platform
