#include "AudioUnits/Apple Units/Effects/AUPeakLimiter.h"
#include "AudioUnits/Apple Units/Effects/DiagnosticText.h"

namespace qor {

using diagnostic::kNone;
using diagnostic::listText;
using diagnostic::valueText;

namespace {

// How many parameters the overview is asked for.
constexpr std::int64_t kOverviewCount = 8;

} // namespace

void AUPeakLimiter::nodeDiagnostics() {
    safeprint("AUPeakLimiter::nodeDiagnostics(): ---------------------------------------------");
    if (!internalEffect) {
        return;
    }
    const AVAudioUnitEffect& node = *internalEffect;
    const Ref<AUAudioUnit> unit = node.AUAudioUnit();

    safeprint(" - node name: " + node.name());
    safeprint(" - node unit: " + (unit ? valueText(unit->componentDescription()) : std::string(kNone)));
    if (unit) {
        unitDiagnostics(*unit);
    }
    safeprint(" - node last render time: " + valueText(node.lastRenderTime()));
    safeprint(" - node latency: " + valueText(node.latency()));
    safeprint(" - node number of inputs: " + valueText(node.numberOfInputs()));
    for (std::size_t i = 0; i < node.numberOfInputs(); ++i) {
        const std::string bus = " - node input bus " + valueText(i);
        safeprint(bus + " format: " + valueText(node.inputFormatForBus(i)));
        safeprint(bus + " name: " + valueText(node.nameForInputBus(i)));
    }
    safeprint(" - node number of outputs: " + valueText(node.numberOfOutputs()));
    for (std::size_t i = 0; i < node.numberOfOutputs(); ++i) {
        const std::string bus = " - node output bus " + valueText(i);
        safeprint(bus + " format: " + valueText(node.outputFormatForBus(i)));
        safeprint(bus + " name: " + valueText(node.nameForOutputBus(i)));
    }
    safeprint(" - node output presentation latency: " + valueText(node.outputPresentationLatency()));
}

void AUPeakLimiter::busDiagnostics(AUAudioUnitBus& bus, std::int64_t index) {
    const std::string prefix = " --- bus " + valueText(index);
    const AVAudioFormat& format = bus.format();

    safeprint(prefix + " type: " + valueText(bus.busType()));
    safeprint(prefix + " representation latency: " + valueText(bus.contextPresentationLatency()));
    safeprint(prefix + " format: " + valueText(format));
    safeprint(prefix + " format channel count: " + valueText(format.channelCount()));
    safeprint(prefix + " format common format: " + platform::text(format.commonFormat()));
    safeprint(prefix + " format channel layout: " + valueText(format.channelLayout()));
    safeprint(prefix + " format interleaved: " + valueText(format.isInterleaved()));
    safeprint(prefix + " format standard: " + valueText(format.isStandard()));
    safeprint(prefix + " format samplerate: " + valueText(format.sampleRate()));
    safeprint(prefix + " format settings: " + valueText(format.settings()));
    safeprint(prefix + " index: " + valueText(bus.index()));
    safeprint(prefix + " enabled: " + valueText(bus.isEnabled()));
    safeprint(prefix + " max. channel count: " + valueText(bus.maximumChannelCount()));
    safeprint(prefix + " name: " + valueText(bus.name()));
    safeprint(prefix + " should allocate buffer: " + valueText(bus.shouldAllocateBuffer()));
}

void AUPeakLimiter::unitDiagnostics(AUAudioUnit& unit) {
    const auto fact = [this](const char* label, const std::string& value) { safeprint(label + value); };
    const auto eachBus = [this](const AUAudioUnitBusArray& busses) {
        for (std::size_t i = 0; i < busses.count(); ++i) {
            busDiagnostics(busses[i], static_cast<std::int64_t>(i));
        }
    };
    const auto inputs = unit.inputBusses();
    const auto outputs = unit.outputBusses();

    fact(" -- unit all parameter values: ", valueText(unit.allParameterValues()));
    fact(" -- unit name: ", valueText(unit.audioUnitName()));
    fact(" -- unit short name: ", valueText(unit.audioUnitShortName()));
    fact(" -- unit can process inplace: ", valueText(unit.canProcessInPlace()));
    fact(" -- unit channel capabilities: ", listText(unit.channelCapabilities()));
    fact(" -- unit channel map: ", listText(unit.channelMap()));
    fact(" -- unit component: ", valueText(unit.component()));
    fact(" -- unit component description: ", valueText(unit.componentDescription()));
    fact(" -- unit component name: ", valueText(unit.componentName()));
    fact(" -- unit component version: ", diagnostic::versionText(unit.componentVersion()));
    fact(" -- unit context name: ", valueText(unit.contextName()));
    fact(" -- unit current preset: ", valueText(unit.currentPreset()));
    fact(" -- unit .factory presets: ", listText(unit.factoryPresets()));
    fact(" -- unit input busses: ", valueText(inputs));
    fact(" -- unit input bus count: ", valueText(inputs->count()));
    fact(" -- unit user presets: ", listText(unit.userPresets()));
    fact(" -- unit input bus type: ", valueText(inputs->busType()));
    eachBus(*inputs);
    fact(" -- unit music device: ", valueText(unit.isMusicDeviceOrEffect()));
    fact(" -- unit rendering offline: ", valueText(unit.isRenderingOffline()));
    fact(" -- unit latency: ", valueText(unit.latency()));
    fact(" -- unit manufacturer name: ", valueText(unit.manufacturerName()));
    fact(" -- unit max. frames to render: ", valueText(unit.maximumFramesToRender()));
    fact(" -- unit midi buffer size: ", valueText(unit.MIDIOutputBufferSizeHint()));
    fact(" -- unit midi output event block: ", valueText(unit.MIDIOutputEventBlock()));
    fact(" -- unit midi output names:", listText(unit.MIDIOutputNames()));
    fact(" -- unit musical context block: ", valueText(unit.musicalContextBlock()));
    fact(" -- unit output busses: ", valueText(outputs));
    fact(" -- unit output bus count: ", valueText(outputs->count()));
    fact(" -- unit output bus type: ", valueText(outputs->busType()));
    eachBus(*outputs);
    fact(" -- unit parameters for overview: ", listText(unit.parametersForOverviewWithCount(kOverviewCount)));
    fact(" -- unit parameter tree: ", valueText(unit.parameterTree()));
    fact(" -- unit provides user interface: ", valueText(unit.providesUserInterface()));
    fact(" -- unit render quality: ", valueText(unit.renderQuality()));
    fact(" -- unit resources allocated: ", valueText(unit.renderResourcesAllocated()));
    fact(" -- unit should bypass effect: ", valueText(unit.shouldBypassEffect()));
    fact(" -- unit supported view configurations: ", listText(unit.supportedViewConfigurations({})));
    fact(" -- unit suppoerts MPE: ", valueText(unit.supportsMPE()));
    fact(" -- unit supports user presets: ", valueText(unit.supportsUserPresets()));
    fact(" -- unit tail time: ", valueText(unit.tailTime()));
    fact(" -- unit transport state block: ", valueText(unit.transportStateBlock()));
    fact(" -- unit midi cable count: ", valueText(unit.virtualMIDICableCount()));
}

} // namespace qor
