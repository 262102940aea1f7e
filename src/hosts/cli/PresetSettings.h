// Presets as the command line uses them.
#pragma once

#include "hosts/cli/ParameterSettings.h"
#include "hosts/shared/PresetStore.h"

#include <string>
#include <vector>

namespace qor::cli {

/// The settings that bring a limiter to a preset's values. The knee comes before the threshold, whose law it
/// chooses, and the filter's lower edge goes out of the way before the upper one is set.
std::vector<ParameterSetting> presetSettings(const host::CheckedState& preset);

/// Finds, reads and checks the preset that a text means; an error is one of wrong usage if there is no such
/// preset, otherwise one of the work.
Result<host::CheckedState> openPreset(const std::string& nameOrFile);

/// All twelve values: those of a preset (unless it is empty: the defaults), with "NAME=VALUE" texts on top.
Result<host::ParameterValues> valuesFrom(const std::string& preset, const std::vector<std::string>& settings);

} // namespace qor::cli
