#include "platform/files/AtomicFile.h"

#include "platform/files/FileDescriptor.h"

#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <filesystem>
#include <random>
#include <string>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace platform {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kRandomLetters = 6;

NSError writeError(const fs::path& path, int code) {
    return {NSPOSIXErrorDomain,
            code,
            {{NSLocalizedDescriptionKey, "The file can't be written: '" + path.string() +
                                             "': " + std::generic_category().message(code)}}};
}

/// Makes a file of a new name that begins with `prefix`. The permissions are what the user's mask leaves.
FileDescriptor createTemporary(const fs::path& directory, const std::string& prefix, std::string& path) {
    constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyz0123456789";
    constexpr int kAttempts = 100;
    std::random_device random;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        path = (directory / prefix).string();
        for (std::size_t i = 0; i < kRandomLetters; ++i) {
            path += kLetters[random() % kLetters.size()];
        }
        FileDescriptor file(::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
        if (file || errno != EEXIST) {
            return file;
        }
    }
    return FileDescriptor(-1);
}

/// Removes what killed writers left: a writer at work holds the lock on its temporary file.
void removeLeftovers(const fs::path& directory, const std::string& prefix) {
    std::error_code code;
    for (fs::directory_iterator entry(directory, code); !code && entry != fs::directory_iterator();
         entry.increment(code)) {
        const std::string name = entry->path().filename().string();
        if (name.rfind(prefix, 0) != 0 || name.size() != prefix.size() + kRandomLetters) {
            continue;
        }
        const FileDescriptor file(::open(entry->path().c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
        if (file && ::flock(file.get(), LOCK_EX | LOCK_NB) == 0) {
            ::unlink(entry->path().c_str());
        }
    }
}

/// Writes all bytes and brings them to the disk. Returns 0 or the error.
int writeThrough(int file, const Data& data) {
    std::size_t written = 0;
    while (written < data.size()) {
        const ssize_t count = ::write(file, data.data() + written, data.size() - written);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return count < 0 ? errno : EIO;
        }
        written += static_cast<std::size_t>(count);
    }
    return ::fsync(file) == 0 ? 0 : errno;
}

/// One attempt. Returns 0 or the error; ENOENT can mean that another process took the temporary file for a
/// leftover in the moment before it was locked.
int writeOnce(const Data& data, const fs::path& path, const std::string& prefix) {
    std::string temporary;
    const FileDescriptor file = createTemporary(path.parent_path(), prefix, temporary);
    if (!file) {
        return errno;
    }
    ::flock(file.get(), LOCK_EX | LOCK_NB);
    int code = writeThrough(file.get(), data);
    struct stat before {};
    if (code == 0 && ::stat(path.c_str(), &before) == 0 &&
        ::fchmod(file.get(), before.st_mode & 07777U) != 0) {
        code = errno;
    }
    if (code == 0 && ::rename(temporary.c_str(), path.c_str()) != 0) {
        code = errno;
    }
    if (code != 0) {
        ::unlink(temporary.c_str());
        return code;
    }
    // The rename itself must outlive a power cut; a file system that can't sync a directory still has it.
    const FileDescriptor directory(::open(path.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory) {
        ::fsync(directory.get());
    }
    return 0;
}

} // namespace

Result<void> writeAtomically(const Data& data, const URL& url) {
    std::error_code code;
    fs::path path = fs::absolute(url.path(), code);
    if (code || path.filename().empty()) {
        return writeError(url.path(), code ? code.value() : EINVAL);
    }
    if (fs::is_symlink(path, code)) {
        path = fs::weakly_canonical(path, code);
        if (code) {
            return writeError(url.path(), code.value());
        }
    }
    std::string prefix(1, '.');
    prefix += path.filename().string();
    prefix += kTemporaryMark;
    removeLeftovers(path.parent_path(), prefix);
    int error = writeOnce(data, path, prefix);
    if (error == ENOENT) {
        error = writeOnce(data, path, prefix);
    }
    if (error != 0) {
        return writeError(path, error);
    }
    return {};
}

} // namespace platform
