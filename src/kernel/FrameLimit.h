// The design limit of a render call.
#pragma once

namespace qor {

/// Frames that every buffer of the signal path holds.
inline constexpr int kFrameLimit = 4096;

} // namespace qor
