// A lock between processes.
#pragma once

#include "platform/files/FileDescriptor.h"

#include <string>

namespace platform {

/// Holds the lock of a lock file for its lifetime; waits for it at construction. The system frees the lock of
/// a process that dies. Where the lock file can't be made `held` is false and work goes on without it.
class FileLock {
public:
    explicit FileLock(const std::string& path) noexcept;
    bool held() const noexcept { return held_; }

private:
    FileDescriptor file_;
    bool held_ = false;
};

} // namespace platform
