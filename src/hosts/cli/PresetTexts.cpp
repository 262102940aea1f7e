#include "hosts/cli/PresetTexts.h"

#include "hosts/cli/JsonText.h"

#include <algorithm>
#include <string_view>

namespace qor::cli {

namespace {

std::string padded(std::string_view source, std::size_t width) {
    return std::string(source) + std::string(source.size() < width ? width - source.size() : 0, ' ');
}

std::string shownName(const host::PresetEntry& entry, const host::CheckedState& preset) {
    return preset.name.empty() ? entry.name : preset.name;
}

} // namespace

std::string presetsAsTable(const std::vector<host::PresetEntry>& presets) {
    std::string result = "KIND     NAME\n";
    for (const host::PresetEntry& preset : presets) {
        result += (preset.isFactory ? "factory  " : "user     ") + preset.name + '\n';
    }
    return result;
}

std::string presetsAsJson(const std::vector<host::PresetEntry>& presets) {
    std::string result;
    for (const host::PresetEntry& preset : presets) {
        result += (result.empty() ? "\n  {\"name\": " : ",\n  {\"name\": ") + jsonText(preset.name) +
                  ", \"factory\": " + text(preset.isFactory) + ", \"file\": " + jsonText(preset.file.path()) +
                  "}";
    }
    return "[" + result + "\n]\n";
}

std::string presetAsTable(const host::PresetEntry& entry, const host::CheckedState& preset) {
    constexpr std::size_t kNameWidth = 15;
    constexpr std::size_t kValueWidth = 13;
    std::string result = "name: " + shownName(entry, preset) + "\nfile: " + entry.file.path() + '\n';
    for (const ParameterRow& row : kParameterTable) {
        if (const auto value = preset.values.at(row.address)) {
            const std::string line = padded(row.shortName, kNameWidth) + padded(text(*value), kValueWidth) +
                                     (row.isStepped() ? parameterValueText(row, *value) : "");
            result += line.substr(0, line.find_last_not_of(' ') + 1) + '\n';
        }
    }
    return result;
}

std::string presetAsJson(const host::PresetEntry& entry, const host::CheckedState& preset) {
    std::string values;
    for (const ParameterRow& row : kParameterTable) {
        if (const auto value = preset.values.at(row.address)) {
            values +=
                (values.empty() ? "\n    " : ",\n    ") + jsonText(row.identifier) + ": " + text(*value);
        }
    }
    return "{\n  \"name\": " + jsonText(shownName(entry, preset)) +
           ",\n  \"file\": " + jsonText(entry.file.path()) + ",\n  \"values\": {" + values + "\n  }\n}\n";
}

} // namespace qor::cli
