// What the process knows of itself.
#pragma once

#include <string>

namespace platform {

/// A text that differs on every call, on every machine and in every process: a random UUID, the process id
/// and a counter, in upper-case hexadecimal and joined by "-". Any thread.
std::string globallyUniqueString();

} // namespace platform
