#include "hosts/cli/FileChecks.h"

#include "platform/files/FileDescriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>

namespace qor::cli {

bool isSameFile(const std::string& one, const std::string& other) {
    struct stat a {};
    struct stat b {};
    if (::stat(one.c_str(), &a) == 0 && ::stat(other.c_str(), &b) == 0) {
        return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
    }
    std::error_code failed;
    const auto pathOne = std::filesystem::weakly_canonical(one, failed);
    const auto pathOther = std::filesystem::weakly_canonical(other, failed);
    return !failed && pathOne == pathOther;
}

Result<void> requireReadableFile(const std::string& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0) {
        if (errno == ENOENT || errno == ENOTDIR) {
            return workFailed("cannot read " + quotedName(file) + ": there is no such file. Check the path.");
        }
        return workFailed("cannot read " + quotedName(file) + ": " + std::generic_category().message(errno) +
                          ". Check the path and the permissions.");
    }
    if (S_ISDIR(status.st_mode)) {
        return workFailed("cannot read " + quotedName(file) + ": it is a folder. Name a file in it.");
    }
    if (S_ISFIFO(status.st_mode)) {
        return {};
    }
    const FileDescriptor opened(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!opened) {
        return workFailed("cannot read " + quotedName(file) + ": " + std::generic_category().message(errno) +
                          ". Make the file readable for you (chmod u+r).");
    }
    return {};
}

} // namespace qor::cli
