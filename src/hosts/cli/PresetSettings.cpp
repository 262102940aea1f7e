#include "hosts/cli/PresetSettings.h"

#include <array>

namespace qor::cli {

std::vector<ParameterSetting> presetSettings(const host::CheckedState& preset) {
    constexpr std::array<AUParameterAddress, kParameterCount> kOrder = {
        kLimiterKnee,     kLimiterAttack,        kLimiterRelease,       kLimiterThreshold,
        kLimiterTrim,     kLimiterMix,           kLimiterMode,          kLimiterBypass,
        kLimiterAudition, kLimiterInputFilterLP, kLimiterInputFilterHP, kLimiterFinalLimiter};
    std::vector<ParameterSetting> settings;
    if (preset.values.at(kLimiterInputFilterHP)) {
        settings.push_back({kLimiterInputFilterHP, 0.0F, false});
    }
    for (const AUParameterAddress address : kOrder) {
        if (const auto value = preset.values.at(address)) {
            settings.push_back({address, *value, false});
        }
    }
    return settings;
}

Result<host::CheckedState> openPreset(const std::string& nameOrFile) {
    const auto entry = host::findPreset(nameOrFile);
    if (!entry) {
        return wrongUsage(entry.error().localizedDescription());
    }
    auto preset = host::readPreset(entry.value());
    if (!preset) {
        return workFailed(preset.error().localizedDescription());
    }
    return preset;
}

Result<host::ParameterValues> valuesFrom(const std::string& preset,
                                         const std::vector<std::string>& settings) {
    host::ParameterValues values = host::defaultParameterValues();
    if (!preset.empty()) {
        const auto opened = openPreset(preset);
        if (!opened) {
            return opened.error();
        }
        for (const ParameterRow& row : kParameterTable) {
            values.at(row.address) = opened.value().values.at(row.address).value_or(values.at(row.address));
        }
    }
    for (const std::string& source : settings) {
        const auto setting = parseSetting(source);
        if (!setting) {
            return wrongUsage("--set: " + setting.error().localizedDescription());
        }
        values.at(setting.value().address) = setting.value().value;
    }
    return values;
}

} // namespace qor::cli
