// State, factory presets and the current preset.
#include "unit/QOR_Limiter_Extension_AudioUnit.h"

#include "Common/Extensions.h"

#include <algorithm>

namespace qor {

namespace {

/// Where the factory presets lie. The process stops if the program has no resources.
URL factoryDirectory() {
    URL url = unwrap(Bundle::main().resourceURL());
    url.appendPathComponent("QOR Limiter Folder/Library/Factory Presets/");
    return url;
}

/// Always with the extension in lower case, while the listing takes any.
URL factoryFile(const AUAudioUnitPreset& preset) {
    return factoryDirectory().appendingPathComponent(preset.name() + ".plist");
}

bool exists(const URL& url) {
    return FileManager::defaultManager().fileExistsAtPath(url.path());
}

void logMissing(const AUAudioUnitPreset& preset) {
    debugprint("AUExtension::ERROR: The preset file '" + preset.name() + ".plist' does not exist.");
}

bool hasPresetExtension(const URL& url) {
    std::string extension = url.pathExtension();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return extension == "PLIST";
}

} // namespace

std::optional<PropertyListDictionary> QOR_Limiter_Extension_AudioUnit::fullState() {
    QORPreset preset;
    preset.makeFrom(parameterTree().get());
    _fullState = preset.getDictionary();
    return _fullState;
}

void QOR_Limiter_Extension_AudioUnit::setFullState(std::optional<PropertyListDictionary> state) {
    _fullState = std::move(state);
    QORPreset preset;
    QORPreset::delegate = shared_from_this();
    preset.makeFrom(_fullState);
}

void QOR_Limiter_Extension_AudioUnit::onFoundParameter([[maybe_unused]] std::int64_t group,
                                                       [[maybe_unused]] const std::string& identifier,
                                                       std::uint64_t address, float value) {
    if (const Ref<AUParameterTree> tree = parameterTree()) {
        if (const Ref<AUParameter> parameter = tree->parameterWithAddress(address)) {
            parameter->setValue(value);
        }
    }
}

std::optional<std::vector<Ref<AUAudioUnitPreset>>> QOR_Limiter_Extension_AudioUnit::factoryPresets() {
    const URL directory = factoryDirectory();
    const auto names = FileManager::defaultManager().contentsOfDirectoryAtPath(directory.path());
    if (!names) {
        debugprint("Creating factory presets failed: " + names.error().localizedDescription());
        return presets;
    }
    std::int64_t index = 0;
    for (const std::string& name : names.value()) {
        const URL file = directory.appendingPathComponent(name);
        if (exists(file) && hasPresetExtension(file)) {
            auto preset = makeRef<AUAudioUnitPreset>();
            preset->setName(file.deletingPathExtension().lastPathComponent());
            preset->setNumber(index);
            presets.push_back(std::move(preset));
        }
        ++index;
    }
    return presets;
}

Ref<AUAudioUnitPreset> QOR_Limiter_Extension_AudioUnit::currentPreset() {
    return _currentPreset;
}

void QOR_Limiter_Extension_AudioUnit::setCurrentPreset(Ref<AUAudioUnitPreset> preset) {
    if (!preset) {
        _currentPreset = nullptr;
        return;
    }
    if (preset->number() >= 0) {
        if (preset->number() >= static_cast<std::int64_t>(presets.size())) {
            debugprint("AUExtension::ERROR: The preset number " + text(preset->number()) + " is invalid.");
            return;
        }
        const URL file = factoryFile(*preset);
        if (!exists(file)) {
            logMissing(*preset);
            return;
        }
        QORPreset reader;
        QORPreset::delegate = shared_from_this();
        reader.load(file);
    } else {
        auto state = presetStateFor(*preset);
        if (!state) {
            debugprint("AUExtension::ERROR: Unable to restore set for preset " + preset->name());
            return;
        }
        setFullState(std::move(state).value());
    }
    _currentPreset = std::move(preset);
}

Result<PropertyListDictionary>
QOR_Limiter_Extension_AudioUnit::presetStateFor(const AUAudioUnitPreset& preset) {
    const URL file = factoryFile(preset);
    if (!exists(file)) {
        logMissing(preset);
        return NSError(NSOSStatusErrorDomain, kAudioUnitErr_InvalidFilePath);
    }
    QORPreset reader;
    reader.load(file);
    return reader.getDictionary().value_or(PropertyListDictionary{});
}

} // namespace qor
