// Lets long work end in good order when the user stops it.
#pragma once

namespace qor::cli {

/// From now on SIGINT, SIGTERM and SIGHUP only set a flag, and writing to a closed pipe or beyond a size
/// limit fails instead of ending the process. They end waiting system calls with EINTR; a second one of a
/// kind ends the process. Main thread, once.
void catchInterrupts() noexcept;

/// Whether one of them has come.
bool interrupted() noexcept;

} // namespace qor::cli
