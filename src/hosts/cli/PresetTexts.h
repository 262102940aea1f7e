// Presets as texts for people and programs.
#pragma once

#include "hosts/shared/PresetStore.h"

#include <string>
#include <vector>

namespace qor::cli {

/// One line per preset: its kind and its name.
std::string presetsAsTable(const std::vector<host::PresetEntry>& presets);
/// An array of objects with "name", "factory" and "file".
std::string presetsAsJson(const std::vector<host::PresetEntry>& presets);

/// One line per parameter: short name, value, the value's own text.
std::string presetAsTable(const host::PresetEntry& entry, const host::CheckedState& preset);
/// An object with "name", "file" and the values by identifier.
std::string presetAsJson(const host::PresetEntry& entry, const host::CheckedState& preset);

} // namespace qor::cli
