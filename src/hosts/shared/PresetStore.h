// Factory and user presets as files: listing, finding, reading, saving.
#pragma once

#include "hosts/shared/PropertyListChecker.h"
#include "hosts/shared/StateChunk.h"

#include <string>
#include <string_view>
#include <vector>

namespace qor::host {

struct PresetEntry {
    std::string name;
    bool isFactory = false;
    URL file;
};

/// The user's own presets: "qor-limiter/presets" below the data directory; absent without a home directory.
std::optional<URL> userPresetDirectory();

/// All presets that are there, factory ones first, each kind in the order of its names.
std::vector<PresetEntry> listPresets();

/// The preset that a text means: a path (it holds a slash or ends in ".plist"), otherwise the name of a user
/// or a factory preset, in that order; letters count as they are first, then in any case. An error names what
/// is near.
Result<PresetEntry> findPreset(std::string_view nameOrFile);

/// Reads and checks. An error's text names the file, the place and the remedy.
Result<CheckedState> readPreset(const PresetEntry& entry,
                                Completeness completeness = Completeness::someParameters);
Result<CheckedState> readPresetFile(const URL& file, Completeness completeness);

/// Reads a preset and gives it to the unit; on an error the unit keeps what it had. Main thread.
Result<void> loadPreset(UnitHost& host, const PresetEntry& entry);

/// Writes a user preset atomically, over one of the same name. A name may be any line of text that a file
/// name can hold, up to 100 bytes.
Result<PresetEntry> savePreset(const std::string& name, const ParameterValues& values);

/// The user's own preset of exactly that name. An error says what the name means instead.
Result<PresetEntry> findUserPreset(std::string_view name);
/// Deletes a preset of the user's own; refuses any other file.
Result<void> deletePreset(const PresetEntry& entry);

} // namespace qor::host
