// Parameters in words, for the log.
#pragma once

#include "platform/audio/Audio.h"

#include <cstdint>
#include <string>

namespace qor {

/// Writes everything that is known of a parameter to the log, indented by `level` tabs.
void printParameter(AUParameter& parameter, std::int64_t level);
/// Writes a line for each mask that lies wholly in the flags.
void verboseFlags(AudioUnitParameterOptions flags, std::int64_t level);
/// "generic", "indexed" and so on; "unknown parameter kind" beyond the published ones.
std::string verboseParameterKind(AudioUnitParameterUnit kind);

} // namespace qor
