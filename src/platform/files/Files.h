// Everything of the platform's files library, brought into the system's namespace.
#pragma once

#include "platform/core/Core.h"
#include "platform/files/AtomicFile.h"
#include "platform/files/Bundle.h"
#include "platform/files/Data.h"
#include "platform/files/Environment.h"
#include "platform/files/FileManager.h"
#include "platform/files/KeyedCoder.h"
#include "platform/files/NSUserDefaults.h"
#include "platform/files/PropertyList.h"
#include "platform/files/PropertyListSerialization.h"
#include "platform/files/URL.h"

namespace qor {
using namespace platform;
} // namespace qor
