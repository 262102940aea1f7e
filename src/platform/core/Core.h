// Everything of the platform's core, brought into the system's namespace.
#pragma once

#include "platform/core/Block.h"
#include "platform/core/Checked.h"
#include "platform/core/Fatal.h"
#include "platform/core/Log.h"
#include "platform/core/MathCalls.h"
#include "platform/core/NSError.h"
#include "platform/core/NSTimer.h"
#include "platform/core/ProcessInfo.h"
#include "platform/core/Ref.h"
#include "platform/core/Result.h"
#include "platform/core/RunLoop.h"
#include "platform/core/Saturate.h"
#include "platform/core/Text.h"

namespace qor {
using namespace platform;
} // namespace qor
