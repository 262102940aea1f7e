// Pictures from locations into image views. What uses this loads the network and picture libraries.
#pragma once

#include "platform/core/Core.h"
#include "platform/view/UIImageView.h"

#include <string>

namespace qor {

/// Queues a task on the main queue that reads the location, there and then, and shows its picture. What fails
/// is said on the log by `debugprint`. Main thread.
void loadFrom(const Ref<platform::UIImageView>& view, const std::string& URLAddress);

/// Fetches the location in the background and shows its picture if the answer is an HTTP one with status 200;
/// another answer changes nothing. A text that is no location does nothing; a failure is written to the log.
/// Main thread.
void getImageFromURLString(const Ref<platform::UIImageView>& view, const std::string& imageURLString);

} // namespace qor
