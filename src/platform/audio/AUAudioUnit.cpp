#include "platform/audio/AUAudioUnit.h"

#include "platform/files/PropertyList.h"

#include <utility>

namespace platform {

AUAudioUnit::~AUAudioUnit() = default;

Result<void> AUAudioUnit::initWithComponentDescription(const AudioComponentDescription& description,
                                                       AudioComponentInstantiationOptions options) {
    if (description.componentType == 0) {
        return NSError(
            NSOSStatusErrorDomain, kAudioUnitErr_FailedInitialization,
            {{NSLocalizedDescriptionKey, "The component description names no type: give it one such as "
                                         "\"aufx\"."}});
    }
    description_ = description;
    options_ = options;
    component_ = audioComponentFind(description);
    return {};
}

std::string AUAudioUnit::componentName() const {
    return component_ ? component_->name : std::string();
}

std::uint32_t AUAudioUnit::componentVersion() const noexcept {
    return component_ ? component_->version : 0;
}

std::string AUAudioUnit::manufacturerName() const {
    return component_ ? component_->manufacturerName : std::string();
}

std::optional<std::string> AUAudioUnit::audioUnitName() const {
    if (!component_) {
        return std::nullopt;
    }
    const auto& name = component_->name;
    const auto colon = name.find(": ");
    return colon == std::string::npos ? name : name.substr(colon + 2);
}

Ref<AUAudioUnitBusArray> AUAudioUnit::inputBusses() {
    if (!noInputs_) {
        noInputs_ = makeRef<AUAudioUnitBusArray>(this, AUAudioUnitBusType::Input);
    }
    return noInputs_;
}

Ref<AUAudioUnitBusArray> AUAudioUnit::outputBusses() {
    if (!noOutputs_) {
        noOutputs_ = makeRef<AUAudioUnitBusArray>(this, AUAudioUnitBusType::Output);
    }
    return noOutputs_;
}

// A unit with a map of its own keeps the value.
void AUAudioUnit::setChannelMap( // NOLINTNEXTLINE(performance-unnecessary-value-param)
    [[maybe_unused]] std::optional<std::vector<std::int64_t>> map) {}

void AUAudioUnit::setMaximumFramesToRender(AUAudioFrameCount frames) {
    maximumFramesToRender_ = frames;
}

Result<void> AUAudioUnit::allocateRenderResources() {
    allocated_ = true;
    return {};
}

void AUAudioUnit::deallocateRenderResources() {
    allocated_ = false;
}

void AUAudioUnit::setMusicalContextBlock(AUHostMusicalContextBlock block) {
    musicalContextBlock_ = std::move(block);
}

void AUAudioUnit::setTransportStateBlock(AUHostTransportStateBlock block) {
    transportStateBlock_ = std::move(block);
}

void AUAudioUnit::setScheduleMIDIEventBlock(AUScheduleMIDIEventBlock block) {
    scheduleMIDIEventBlock_ = std::move(block);
}

void AUAudioUnit::setMIDIOutputEventBlock(AUMIDIOutputEventBlock block) {
    MIDIOutputEventBlock_ = std::move(block);
}

std::vector<AUParameterAddress>
AUAudioUnit::parametersForOverviewWithCount([[maybe_unused]] std::int64_t count) {
    return {};
}

std::optional<PropertyListDictionary> AUAudioUnit::fullState() {
    return std::nullopt;
}

// A unit with a state of its own keeps the value.
void AUAudioUnit::setFullState( // NOLINTNEXTLINE(performance-unnecessary-value-param)
    [[maybe_unused]] std::optional<PropertyListDictionary> state) {}

Result<PropertyListDictionary> AUAudioUnit::presetStateFor([[maybe_unused]] const AUAudioUnitPreset& preset) {
    return NSError(NSOSStatusErrorDomain, kAudioUnitErr_InvalidFilePath);
}

std::set<std::size_t> AUAudioUnit::supportedViewConfigurations(
    [[maybe_unused]] const std::vector<AUAudioUnitViewConfiguration>& available) {
    return {};
}

void AUAudioUnit::guardFormat(AUAudioUnitBus& bus) {
    bus.setFormatVeto([this](const AVAudioFormat& /*format*/) -> Result<void> {
        if (renderResourcesAllocated()) {
            return NSError(NSOSStatusErrorDomain, kAudioUnitErr_Initialized,
                           {{NSLocalizedDescriptionKey, "The format can't change while the unit holds render "
                                                        "resources: release them first."}});
        }
        return {};
    });
}

} // namespace platform
