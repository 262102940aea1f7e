// The object that a host loads: joins the kernel, the parameters and the system limiter behind them.
#pragma once

#include "AudioUnits/Apple Units/Effects/AUPeakLimiter.h"
#include "kernel/QOR_Limiter_Extension_Parameters.h"
#include "platform/audio/Audio.h"
#include "platform/files/Files.h"
#include "unit/QORPreset.h"

#include <memory>
#include <string>
#include <vector>

namespace qor {

/// The unit lends the system limiter's buses to the host as its own, so the format that the host negotiates
/// is that unit's, and the kernel takes its rate from there. Everything but the render block belongs to the
/// host's configuration thread; the bridges belong to the main thread. Most properties write a line to the
/// log on every use, the unit's own uses included.
/// A unit that stands in for one that sounds elsewhere derives from this and overrides the meters.
class QOR_Limiter_Extension_AudioUnit : public AUAudioUnit,
                                        public QORPresetDelegate,
                                        public std::enable_shared_from_this<QOR_Limiter_Extension_AudioUnit> {
public:
    const Ref<QOR_Limiter_ExtensionDSPKernelAdapter> kernelAdapter;
    const Ref<QOR_Limiter_Extension_Parameters> parameters;
    Ref<AUPeakLimiter> effect; // present after construction

private:
    Ref<AUAudioUnitBusArray> inputBusArray_;  // built on first use
    Ref<AUAudioUnitBusArray> outputBusArray_; // built on first use
    AUMIDIOutputEventBlock _midiOutputEventBlock;
    std::optional<PropertyListDictionary> _fullState; // given or made last

public:
    std::vector<Ref<AUAudioUnitPreset>> presets; // the factory presets as listed so far

private:
    Ref<AUAudioUnitPreset> _currentPreset;

public:
    AudioBufferList* currentOuputData = nullptr; // the output list of the latest render call; render thread

    /// A unit with a working kernel at its defaults and a working system limiter. The options are dropped:
    /// the base gets none. Fails with the base's error.
    static Result<Ref<QOR_Limiter_Extension_AudioUnit>>
    init(const AudioComponentDescription& componentDescription, AudioComponentInstantiationOptions options);
    ~QOR_Limiter_Extension_AudioUnit() override = default;

    /// None, whatever the host offers.
    std::set<std::size_t>
    supportedViewConfigurations(const std::vector<AUAudioUnitViewConfiguration>& available) override;

    /// Brings the kernel and the system limiter to the limiter's output format and allocates both. Fails with
    /// the limiter's own error; what was done before stays done.
    Result<void> allocateRenderResources() override;
    void deallocateRenderResources() override;
    void reset() override;

    Ref<AUAudioUnitBusArray> inputBusses() override;
    Ref<AUAudioUnitBusArray> outputBusses() override;
    AUAudioFrameCount maximumFramesToRender() override;
    /// Reaches the kernel, not the system limiter, which has a limit of its own.
    void setMaximumFramesToRender(AUAudioFrameCount frames) override;
    bool shouldBypassEffect() override;
    void setShouldBypassEffect(bool bypass) override;
    Ref<AUParameterTree> parameterTree() override;
    /// The tree stays; the given one is dropped.
    void setParameterTree(Ref<AUParameterTree> tree) override;
    std::vector<AUParameterAddress> parametersForOverviewWithCount(std::int64_t count) override;
    bool isMusicDeviceOrEffect() override;
    std::int64_t virtualMIDICableCount() override;
    std::vector<std::string> MIDIOutputNames() override;
    AUMIDIOutputEventBlock MIDIOutputEventBlock() override;
    void setMIDIOutputEventBlock(AUMIDIOutputEventBlock block) override;

    // State and presets. A host checks a file or state first: a value of the wrong kind, or a program without
    // resources, stops the process.
    /// A snapshot of the tree, without the base's own state. Reading it back moves no parameter: the format's
    /// writer and reader are not mirrors.
    std::optional<PropertyListDictionary> fullState() override;
    /// Stores the state and reads it as a preset: each parameter that the reader finds is set in the tree.
    void setFullState(std::optional<PropertyListDictionary> state) override;
    bool supportsUserPresets() override;
    /// Lists the factory directory and appends to `presets`, on every call again; the number of a preset is
    /// the place of its file among all entries.
    std::optional<std::vector<Ref<AUAudioUnitPreset>>> factoryPresets() override;
    Ref<AUAudioUnitPreset> currentPreset() override;
    /// From number 0 up a factory preset, below a user preset. What can't be found is logged, and the current
    /// preset stays.
    void setCurrentPreset(Ref<AUAudioUnitPreset> preset) override;
    /// Reads the file of the preset's name in the factory directory, for user presets too. What it holds is
    /// reported to whatever delegate stands. Fails with kAudioUnitErr_InvalidFilePath.
    Result<PropertyListDictionary> presetStateFor(const AUAudioUnitPreset& preset) override;

    // Channels. Two in, two out.
    bool canPerformInput() override;
    bool canPerformOutput() override;
    bool canProcessInPlace() override;
    std::optional<std::vector<std::int64_t>> channelCapabilities() override;
    std::optional<std::vector<std::int64_t>> channelMap() override;
    void setChannelMap(std::optional<std::vector<std::int64_t>> map) override;

    /// A new closure on each call. It keeps the unit, and uses the MIDI output block and the system limiter's
    /// render block of this moment. One call: the kernel, then, while kLimiterFinalLimiter is exactly 1.0,
    /// the system limiter into the same list, fed by a second pull. Render thread; apart from failures it
    /// neither allocates nor logs.
    AUInternalRenderBlock internalRenderBlock() override;

    // Of the delegate of presets.
    /// Sets the tree's parameter of the address, if there is one.
    void onFoundParameter(std::int64_t group, const std::string& identifier, std::uint64_t address,
                          float value) override;

    // Bridges for the editor, by address. A negative address belongs to no parameter.
    void setParameter(std::int32_t address, float value);
    float getParameter(std::int32_t address);
    /// 1.0 without reduction, falling.
    virtual float getDynamicsValue1();
    virtual float getDynamicsValue2();
    /// Linear output peaks, 0.0 to 1.0.
    virtual float getPeakValue1();
    virtual float getPeakValue2();
    /// Hertz, of the first output bus.
    double getSamplerate();

    /// The adapter's own buses as arrays. The host sees the system limiter's instead.
    const Ref<AUAudioUnitBusArray>& inputBusArray();
    const Ref<AUAudioUnitBusArray>& outputBusArray();

protected:
    /// The members stand; `initWithComponentDescription` comes next.
    explicit QOR_Limiter_Extension_AudioUnit(const AudioComponentDescription& componentDescription);

private:
    friend class AudioUnitInspector; // the tests' way to what is private

    /// The system limiter's unit. The process stops if it isn't there.
    AUAudioUnit& wrapped() const;
    void bringAdapterToWrappedFormat();
    void handHostCallbacksToAdapter();
    void bringWrappedInputToOutputFormat();

    /// A pull callback that delivers the kernel's output of the render call in progress. Built and not used.
    AURenderPullInputBlock renderPullInputBlock();
    /// Writes the display names below the node to the log, indented by `level` blanks. Nothing calls it.
    void dumpParameters(const std::string& name, const AUParameterGroup* tree, int level);
};

} // namespace qor
