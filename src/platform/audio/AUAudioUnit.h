// The base class of every audio unit: what a host may ask, set and call, with the platform's defaults.
#pragma once

#include "platform/audio/AUAudioUnitBusArray.h"
#include "platform/audio/AUAudioUnitPreset.h"
#include "platform/audio/AUParameterTree.h"
#include "platform/audio/AudioComponent.h"
#include "platform/audio/AudioTypes.h"
#include "platform/audio/AudioUnitHandle.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace platform {

class PropertyListDictionary; // whoever saves or restores a state includes platform/files

using AUAudioFrameCount = std::uint32_t;

/// A size in which a host could show a unit's view, in points.
struct AUAudioUnitViewConfiguration {
    double width = 0.0;
    double height = 0.0;
    bool hostHasController = false;
};

/// An audio unit. Everything but the render block belongs to the host's configuration thread.
class AUAudioUnit {
public:
    AUAudioUnit(const AUAudioUnit&) = delete;
    AUAudioUnit& operator=(const AUAudioUnit&) = delete;
    virtual ~AUAudioUnit();

    // What kind of unit it is. The names come from the component registry and are empty for a unit that is
    // not registered.
    const AudioComponentDescription& componentDescription() const noexcept { return description_; }
    /// The options that the base was initialised with.
    AudioComponentInstantiationOptions instantiationOptions() const noexcept { return options_; }
    /// The registered component, absent for a unit that is not registered.
    const std::optional<AudioComponent>& component() const noexcept { return component_; }
    /// "Maker: Unit".
    std::string componentName() const;
    std::uint32_t componentVersion() const noexcept;
    std::string manufacturerName() const;
    /// The part of `componentName` behind the colon.
    virtual std::optional<std::string> audioUnitName() const;
    virtual std::optional<std::string> audioUnitShortName() const { return std::nullopt; }

    // Buses.
    virtual Ref<AUAudioUnitBusArray> inputBusses();
    virtual Ref<AUAudioUnitBusArray> outputBusses();
    virtual bool canPerformInput() { return false; }
    virtual bool canPerformOutput() { return false; }
    virtual bool canProcessInPlace() { return false; }
    /// Pairs of input and output channel counts; absent: any.
    virtual std::optional<std::vector<std::int64_t>> channelCapabilities() { return std::nullopt; }
    virtual std::optional<std::vector<std::int64_t>> channelMap() { return std::nullopt; }
    /// Discarded here.
    virtual void setChannelMap(std::optional<std::vector<std::int64_t>> map);

    // Rendering.
    /// The most frames that one render call may ask for; 4096 at first.
    virtual AUAudioFrameCount maximumFramesToRender() { return maximumFramesToRender_; }
    virtual void setMaximumFramesToRender(AUAudioFrameCount frames);
    /// Prepares for rendering with the present formats. Allocates.
    virtual Result<void> allocateRenderResources();
    virtual void deallocateRenderResources();
    virtual bool renderResourcesAllocated() const noexcept { return allocated_; }
    /// Back to the state right after allocation. Not while a render call runs.
    virtual void reset() {}
    /// The block that renders; stays valid as long as the unit. The base's own is absent.
    virtual AUInternalRenderBlock internalRenderBlock() { return {}; }
    virtual bool shouldBypassEffect() { return shouldBypassEffect_; }
    virtual void setShouldBypassEffect(bool bypass) { shouldBypassEffect_ = bypass; }
    /// Seconds from an input sample to the output sample that belongs to it.
    virtual double latency() { return 0.0; }
    /// Seconds that the output sounds on after the input has fallen silent.
    virtual double tailTime() { return 0.0; }
    virtual bool isRenderingOffline() { return renderingOffline_; }
    virtual void setRenderingOffline(bool offline) { renderingOffline_ = offline; }
    /// 0 to 127.
    virtual std::int64_t renderQuality() { return renderQuality_; }
    virtual void setRenderQuality(std::int64_t quality) { renderQuality_ = quality; }

    // What the host provides. Absent until it sets them.
    virtual AUHostMusicalContextBlock musicalContextBlock() { return musicalContextBlock_; }
    virtual void setMusicalContextBlock(AUHostMusicalContextBlock block);
    virtual AUHostTransportStateBlock transportStateBlock() { return transportStateBlock_; }
    virtual void setTransportStateBlock(AUHostTransportStateBlock block);
    virtual AUScheduleMIDIEventBlock scheduleMIDIEventBlock() { return scheduleMIDIEventBlock_; }
    virtual void setScheduleMIDIEventBlock(AUScheduleMIDIEventBlock block);
    virtual AUMIDIOutputEventBlock MIDIOutputEventBlock() { return MIDIOutputEventBlock_; }
    virtual void setMIDIOutputEventBlock(AUMIDIOutputEventBlock block);
    /// The host's name for the place where the unit sits, such as a track's name.
    virtual std::optional<std::string> contextName() { return contextName_; }
    virtual void setContextName(std::optional<std::string> name) { contextName_ = std::move(name); }

    // MIDI.
    virtual bool isMusicDeviceOrEffect() { return false; }
    virtual std::int64_t virtualMIDICableCount() { return 0; }
    virtual std::vector<std::string> MIDIOutputNames() { return {}; }
    /// Bytes that one render call's MIDI output may take; 0: unknown.
    virtual std::int64_t MIDIOutputBufferSizeHint() { return 0; }
    virtual bool supportsMPE() { return false; }

    // Parameters and presets.
    virtual Ref<AUParameterTree> parameterTree() { return parameterTree_; }
    virtual void setParameterTree(Ref<AUParameterTree> tree) { parameterTree_ = std::move(tree); }
    /// Whether all parameters can be shown in a generic view.
    virtual bool allParameterValues() { return true; }
    /// The addresses of the most important parameters, at most `count`.
    virtual std::vector<AUParameterAddress> parametersForOverviewWithCount(std::int64_t count);
    virtual std::optional<std::vector<Ref<AUAudioUnitPreset>>> factoryPresets() { return std::nullopt; }
    virtual std::vector<Ref<AUAudioUnitPreset>> userPresets() { return {}; }
    virtual bool supportsUserPresets() { return false; }
    virtual Ref<AUAudioUnitPreset> currentPreset() { return currentPreset_; }
    virtual void setCurrentPreset(Ref<AUAudioUnitPreset> preset) { currentPreset_ = std::move(preset); }
    /// What a host keeps of the unit; the base's own is absent.
    virtual std::optional<PropertyListDictionary> fullState();
    /// Discarded here.
    virtual void setFullState(std::optional<PropertyListDictionary> state);
    /// The state that the preset stands for. The base knows none: kAudioUnitErr_InvalidFilePath.
    virtual Result<PropertyListDictionary> presetStateFor(const AUAudioUnitPreset& preset);

    // View.
    virtual bool providesUserInterface() { return false; }
    /// The indices of those configurations that the view can take.
    virtual std::set<std::size_t>
    supportedViewConfigurations(const std::vector<AUAudioUnitViewConfiguration>& available);

    /// The unit without the object model; absent if it has none.
    virtual AudioUnit plainHandle() noexcept { return nullptr; }

protected:
    /// Two steps, so that a unit can prepare its own members before the base learns what it is: construct,
    /// then call `initWithComponentDescription`.
    AUAudioUnit() = default;
    /// Fails with kAudioUnitErr_FailedInitialization for a description without a type.
    Result<void> initWithComponentDescription(const AudioComponentDescription& description,
                                              AudioComponentInstantiationOptions options);
    /// Makes the bus refuse a new format while this unit holds render resources.
    void guardFormat(AUAudioUnitBus& bus);

private:
    AudioComponentDescription description_;
    AudioComponentInstantiationOptions options_{};
    std::optional<AudioComponent> component_;
    Ref<AUAudioUnitBusArray> noInputs_;
    Ref<AUAudioUnitBusArray> noOutputs_;
    AUAudioFrameCount maximumFramesToRender_ = 4096;
    bool allocated_ = false;
    bool shouldBypassEffect_ = false;
    bool renderingOffline_ = false;
    std::int64_t renderQuality_ = 127;
    AUHostMusicalContextBlock musicalContextBlock_;
    AUHostTransportStateBlock transportStateBlock_;
    AUScheduleMIDIEventBlock scheduleMIDIEventBlock_;
    AUMIDIOutputEventBlock MIDIOutputEventBlock_;
    std::optional<std::string> contextName_;
    Ref<AUParameterTree> parameterTree_;
    Ref<AUAudioUnitPreset> currentPreset_;
};

} // namespace platform
