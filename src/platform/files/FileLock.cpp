#include "platform/files/FileLock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>

namespace platform {

FileLock::FileLock(const std::string& path) noexcept
    : file_(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666)) {
    if (!file_) {
        return;
    }
    int result = 0;
    do {
        result = ::flock(file_.get(), LOCK_EX);
    } while (result != 0 && errno == EINTR);
    held_ = result == 0;
}

} // namespace platform
