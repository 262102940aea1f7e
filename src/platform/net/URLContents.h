// The contents of a location, read while the caller waits.
#pragma once

#include "platform/core/Result.h"
#include "platform/files/Data.h"
#include "platform/files/URL.h"

namespace platform {

/// Loads a file, or a page over HTTP or HTTPS; a page with an error status (400 and above) is a failure. Any
/// thread; blocks.
Result<Data> dataWithContentsOfURL(const URL& url);

} // namespace platform
