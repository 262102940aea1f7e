// Pictures from files' bytes.
#pragma once

#include "platform/core/Result.h"
#include "platform/draw/UIImage.h"
#include "platform/files/Data.h"

namespace platform {

/// Decodes PNG, JPEG and whatever else the machine's picture loaders know, turned upright as the file asks
/// for. A picture above 16384 pixels in a direction is refused. Any thread.
Result<UIImage> imageWithData(const Data& data);

} // namespace platform
