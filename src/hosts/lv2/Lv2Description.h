// Makes the Turtle files of the LV2 bundle from the parameter table and the factory presets.
#pragma once

#include "kernel/ParameterTable.h"

#include <array>
#include <string>
#include <vector>

namespace qor::lv2 {

/// A preset as the bundle needs it.
struct PresetValues {
    std::string name;
    std::array<float, kParameterCount> values{};
};

/// "urn:qor:limiter#preset-drum-bus": letters and digits of the name in lower case, the rest as hyphens.
std::string presetUri(const std::string& name);

std::string manifestTurtle(const std::vector<PresetValues>& presets);
std::string pluginTurtle();
std::string presetsTurtle(const std::vector<PresetValues>& presets);

} // namespace qor::lv2
