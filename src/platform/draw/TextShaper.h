// The text engine behind the layouts: finds glyphs, breaks lines, and gives their outlines.
#pragma once

#include "platform/draw/TextBlock.h"

namespace platform {

/// Lays a text out with the built-in faces alone. Costs a few tenths of a millisecond; `laidOut` keeps the
/// result.
TextBlock shapeText(const TextBlockKey& key);

} // namespace platform
