// Construction and the properties that a host asks for.
#include "unit/QOR_Limiter_Extension_AudioUnit.h"

#include "Common/Extensions.h"

namespace qor {

namespace {

Ref<QOR_Limiter_ExtensionDSPKernelAdapter>
announceAndMakeAdapter(const AudioComponentDescription& description) {
    debugprint("AUExtension::init()");
    debugprint(stringValue(description.componentManufacturer) + " : " +
               stringValue(description.componentSubType));
    return makeRef<QOR_Limiter_ExtensionDSPKernelAdapter>();
}

/// The default text of a list of texts.
std::string listText(const std::vector<std::string>& list) {
    std::string out = "[";
    for (const std::string& entry : list) {
        out += (out.size() > 1 ? ", \"" : "\"") + entry + "\"";
    }
    return out + "]";
}

} // namespace

QOR_Limiter_Extension_AudioUnit::QOR_Limiter_Extension_AudioUnit(
    const AudioComponentDescription& componentDescription)
    : kernelAdapter(announceAndMakeAdapter(componentDescription)),
      parameters(makeRef<QOR_Limiter_Extension_Parameters>(kernelAdapter)), effect(makeRef<AUPeakLimiter>()) {
}

Result<Ref<QOR_Limiter_Extension_AudioUnit>>
QOR_Limiter_Extension_AudioUnit::init(const AudioComponentDescription& componentDescription,
                                      [[maybe_unused]] AudioComponentInstantiationOptions options) {
    Ref<QOR_Limiter_Extension_AudioUnit> unit(new QOR_Limiter_Extension_AudioUnit(componentDescription));
    if (Result<void> base = unit->initWithComponentDescription(componentDescription, {}); !base) {
        return base.error();
    }
    return unit;
}

AUAudioUnit& QOR_Limiter_Extension_AudioUnit::wrapped() const {
    return unwrap(unwrapImplicit(effect).auAudioUnit());
}

std::set<std::size_t> QOR_Limiter_Extension_AudioUnit::supportedViewConfigurations(
    [[maybe_unused]] const std::vector<AUAudioUnitViewConfiguration>& available) {
    debugprint("AUExtension::supportedViewConfigurations()");
    return {};
}

Ref<AUAudioUnitBusArray> QOR_Limiter_Extension_AudioUnit::inputBusses() {
    Ref<AUAudioUnitBusArray> busses = wrapped().inputBusses();
    debugprint("AUExtension::inputBusses: " + std::to_string(busses->count()));
    return busses;
}

Ref<AUAudioUnitBusArray> QOR_Limiter_Extension_AudioUnit::outputBusses() {
    Ref<AUAudioUnitBusArray> busses = wrapped().outputBusses();
    debugprint("AUExtension::outputBusses: " + std::to_string(busses->count()));
    return busses;
}

AUAudioFrameCount QOR_Limiter_Extension_AudioUnit::maximumFramesToRender() {
    return AUAudioUnit::maximumFramesToRender();
}

void QOR_Limiter_Extension_AudioUnit::setMaximumFramesToRender(AUAudioFrameCount frames) {
    AUAudioUnit::setMaximumFramesToRender(frames);
    const AUAudioFrameCount taken = AUAudioUnit::maximumFramesToRender();
    debugprint("AUExtension::maximumFramesToRender (set): " + text(taken));
    kernelAdapter->setMaximumFramesToRender(taken);
}

bool QOR_Limiter_Extension_AudioUnit::shouldBypassEffect() {
    return AUAudioUnit::shouldBypassEffect();
}

void QOR_Limiter_Extension_AudioUnit::setShouldBypassEffect(bool bypass) {
    AUAudioUnit::setShouldBypassEffect(bypass);
    debugprint("AUExtension::shouldBypassEffect (did set)");
    kernelAdapter->setBypass(bypass);
    wrapped().setShouldBypassEffect(bypass);
}

Ref<AUParameterTree> QOR_Limiter_Extension_AudioUnit::parameterTree() {
    return parameters->parameterTree();
}

void QOR_Limiter_Extension_AudioUnit::setParameterTree([[maybe_unused]] Ref<AUParameterTree> tree) {
    debugprint("AUExtension::parameterTree (set) !!!");
}

std::vector<AUParameterAddress>
QOR_Limiter_Extension_AudioUnit::parametersForOverviewWithCount([[maybe_unused]] std::int64_t count) {
    debugprint("AUExtension::parametersForOverview()");
    return {};
}

bool QOR_Limiter_Extension_AudioUnit::isMusicDeviceOrEffect() {
    debugprint("AUExtension::isMusicDeviceOrEffect: true");
    return true;
}

std::int64_t QOR_Limiter_Extension_AudioUnit::virtualMIDICableCount() {
    debugprint("AUExtension::virtualMIDICableCount: 1");
    return 1;
}

std::vector<std::string> QOR_Limiter_Extension_AudioUnit::MIDIOutputNames() {
    std::vector<std::string> names{"QOR Limiter MIDI Out"};
    debugprint("AUExtension::midiOutputNames: " + listText(names));
    return names;
}

AUMIDIOutputEventBlock QOR_Limiter_Extension_AudioUnit::MIDIOutputEventBlock() {
    debugprint("AUExtension::midiOutputEventBlock (get) ");
    return _midiOutputEventBlock;
}

void QOR_Limiter_Extension_AudioUnit::setMIDIOutputEventBlock(AUMIDIOutputEventBlock block) {
    debugprint("AUExtension::midiOutputEventBlock (set) ");
    _midiOutputEventBlock = std::move(block);
    if (_midiOutputEventBlock) {
        kernelAdapter->setAUMIDIOutputEventBlock(_midiOutputEventBlock);
    }
}

bool QOR_Limiter_Extension_AudioUnit::supportsUserPresets() {
    debugprint("AUExtension::supportsUserPresets: true");
    return false; // and not what the line says: settled behaviour
}

bool QOR_Limiter_Extension_AudioUnit::canPerformInput() {
    debugprint("AUExtension::canPerformInput: true");
    return true;
}

bool QOR_Limiter_Extension_AudioUnit::canPerformOutput() {
    debugprint("AUExtension::canPerformOutput: true");
    return true;
}

bool QOR_Limiter_Extension_AudioUnit::canProcessInPlace() {
    debugprint("AUExtension::canProcessInPlace() true");
    return true;
}

std::optional<std::vector<std::int64_t>> QOR_Limiter_Extension_AudioUnit::channelCapabilities() {
    debugprint("AUExtension::channelCapabilities() 2:2");
    return std::vector<std::int64_t>{2, 2};
}

std::optional<std::vector<std::int64_t>> QOR_Limiter_Extension_AudioUnit::channelMap() {
    return std::nullopt;
}

void QOR_Limiter_Extension_AudioUnit::setChannelMap(
    [[maybe_unused]] std::optional<std::vector<std::int64_t>> map) {}

const Ref<AUAudioUnitBusArray>& QOR_Limiter_Extension_AudioUnit::inputBusArray() {
    if (!inputBusArray_) {
        inputBusArray_ = makeRef<AUAudioUnitBusArray>(this, AUAudioUnitBusType::Input,
                                                      std::vector{kernelAdapter->inputBus()});
    }
    return inputBusArray_;
}

const Ref<AUAudioUnitBusArray>& QOR_Limiter_Extension_AudioUnit::outputBusArray() {
    if (!outputBusArray_) {
        outputBusArray_ = makeRef<AUAudioUnitBusArray>(this, AUAudioUnitBusType::Output,
                                                       std::vector{kernelAdapter->outputBus()});
    }
    return outputBusArray_;
}

void QOR_Limiter_Extension_AudioUnit::dumpParameters([[maybe_unused]] const std::string& name,
                                                     const AUParameterGroup* tree, int level) {
    const std::string prefix(static_cast<std::size_t>(level), ' ');
    if (tree == nullptr || tree->children().empty()) {
        return;
    }
    for (const Ref<AUParameterNode>& child : tree->children()) {
        debugprint(prefix + child->displayName());
        if (const auto* group = dynamic_cast<const AUParameterGroup*>(child.get())) {
            dumpParameters(group->displayName(), group, level + 1);
        }
    }
}

} // namespace qor
