// An open file that closes itself.
#pragma once

#include <cerrno>
#include <cstddef>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace platform {

/// Owns a file descriptor; a negative one means that opening failed (`errno` says why).
class FileDescriptor {
public:
    explicit FileDescriptor(int descriptor) noexcept : descriptor_(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    FileDescriptor& operator=(FileDescriptor&&) = delete;
    ~FileDescriptor() {
        if (descriptor_ >= 0) {
            ::close(descriptor_);
        }
    }

    explicit operator bool() const noexcept { return descriptor_ >= 0; }
    int get() const noexcept { return descriptor_; }

private:
    int descriptor_;
};

/// Writes all bytes, also where the system takes them piece by piece. Returns 0 or the error.
inline int writeAll(int file, std::string_view bytes) noexcept {
    while (!bytes.empty()) {
        const ssize_t count = ::write(file, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return count < 0 ? errno : ENOSPC;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return 0;
}

} // namespace platform
