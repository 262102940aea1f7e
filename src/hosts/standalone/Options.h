// The program's arguments.
#pragma once

#include "hosts/standalone/Sound.h"

#include <optional>
#include <string>

namespace qor::app {

struct Options {
    SoundOptions sound;
    double scale = 0.0; // pixels per point; 0: the desktop's
    bool listDevices = false;
    bool log = false;
};

/// What the arguments say, or the exit status with which to end at once: help and version are printed, and so
/// is what is wrong.
struct ParsedOptions {
    Options options;
    std::optional<int> exitStatus;
};
ParsedOptions parseOptions(int argumentCount, const char* const* arguments);

} // namespace qor::app
