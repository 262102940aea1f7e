#include "AudioUnits/Apple Units/Effects/DiagnosticText.h"

namespace qor::diagnostic {

std::string valueText(const AVAudioFormat& format) {
    return format.description();
}

std::string valueText(AUAudioUnitBusType type) {
    return type == AUAudioUnitBusType::Input ? "input" : "output";
}

std::string valueText(const AudioComponent& component) {
    return component.name + " (" + valueText(component.description) + ")";
}

std::string valueText(const AudioComponentDescription& description) {
    return platform::text(description);
}

std::string valueText(const AudioTimeStamp& stamp) {
    return "sample " + platform::text(stamp.mSampleTime);
}

std::string valueText(const AUAudioUnitPreset& preset) {
    return platform::text(preset.number()) + " \"" + preset.name() + "\"";
}

std::string valueText(const AUAudioUnitBusArray& busses) {
    std::string line = "[";
    for (std::size_t i = 0; i < busses.count(); ++i) {
        line += (i == 0 ? "" : ", ") + valueText(busses[i].format());
    }
    return line + "]";
}

std::string valueText(const AUParameterTree& tree) {
    std::string line = "[";
    const char* separator = "";
    for (const auto& parameter : tree.allParameters()) {
        line += separator + parameter->identifier();
        separator = ", ";
    }
    return line + "]";
}

std::string valueText(const std::map<std::string, std::string>& settings) {
    std::string line = "[";
    const char* separator = "";
    for (const auto& [key, value] : settings) {
        line.append(separator).append(key).append(": ").append(value);
        separator = ", ";
    }
    return line + "]";
}

std::string versionText(std::uint32_t version) {
    return platform::text(version >> 16) + "." + platform::text((version >> 8) & 0xFFU) + "." +
           platform::text(version & 0xFFU);
}

} // namespace qor::diagnostic
