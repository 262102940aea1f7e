// Everything of the window layer, brought into the system's namespace.
#pragma once

#include "platform/window/NativeWindow.h"

namespace qor {
using namespace platform;
} // namespace qor
