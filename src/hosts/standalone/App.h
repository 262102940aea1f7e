// The program: a window with the editor, the unit, and the sound.
#pragma once

#include "hosts/standalone/Options.h"

namespace qor::app {

/// Runs until the window is closed or a signal comes. Returns the exit status: 0, or 1 if there is no window.
int runApp(const Options& options);

} // namespace qor::app
