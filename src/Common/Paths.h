// The directories of the plug-in and the making of directories.
#pragma once

#include "platform/files/Files.h"

#include <optional>

namespace qor {

// Written without a guard; absent at first. Nothing assigns the last two.
inline std::optional<URL> documentsURL;
inline std::optional<URL> resourcesURL;
inline std::optional<URL> sharedURLAudio;
inline std::optional<URL> sharedURLMIDI;

/// Makes the directory and those above it if they are missing. False, with a log line, if that fails.
bool ensureDirectoryExists(const URL& url);

/// Fills `documentsURL` and `resourcesURL` and logs each, or that it is absent.
void getPaths();

} // namespace qor
