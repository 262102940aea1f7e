// The buffers that a class of the tools drops without freeing: by design they stay allocated until the
// process ends.
#pragma once

#include <cstddef>

namespace RVK {

/// Enters a buffer from the C allocator into a list that is reachable as long as the process lives, so that a
/// leak checker can tell a buffer that stays by design from one that was lost. An absent pointer is ignored.
void keepUntilExit(void* buffer) noexcept;

/// How many buffers are in the list.
std::size_t keptBuffers() noexcept;

} // namespace RVK
