#include "platform/files/AtomicFile.h"

#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <filesystem>
#include <random>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace platform {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kRandomLetters = 6;
constexpr std::size_t kLongestPart = 200; // bytes of the name in a temporary name, which may have 255
constexpr int kMostLinks = 40;            // as many as the system follows

NSError writeError(const std::string& path, int code) {
    return {NSPOSIXErrorDomain,
            code,
            {{NSLocalizedDescriptionKey,
              "The file can't be written: '" + path + "': " + std::generic_category().message(code)}}};
}

/// Where the bytes are to end up, also if nothing is there yet. Returns 0 or the error.
int followLinks(fs::path& path) {
    std::error_code code;
    for (int links = 0; fs::is_symlink(path, code); ++links) {
        if (links == kMostLinks) {
            return ELOOP;
        }
        const fs::path next = fs::read_symlink(path, code);
        if (code) {
            return code.value();
        }
        path = next.is_absolute() ? next : path.parent_path() / next;
    }
    return 0;
}

/// What temporary names of a file begin with.
std::string temporaryPrefix(const fs::path& path) {
    std::string name = path.filename().string();
    if (name.size() > kLongestPart) {
        std::size_t end = kLongestPart;
        while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0U) == 0x80U) {
            --end; // not in the middle of a character
        }
        name.resize(end);
    }
    return "." + name + kTemporaryMark;
}

bool isNamed(int file, const std::string& path) {
    struct stat open {};
    struct stat named {};
    return ::fstat(file, &open) == 0 && ::lstat(path.c_str(), &named) == 0 && open.st_dev == named.st_dev &&
           open.st_ino == named.st_ino;
}

/// Makes and locks a file of a new name that begins with `prefix`. The permissions are what the user's mask
/// leaves. On failure `errno` says why.
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
        if (!file && errno != EEXIST) {
            return file;
        }
        // In the moment before the lock another writer can take the file for a leftover. On a file system
        // without locks nobody takes any.
        if (file && (::flock(file.get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) &&
            isNamed(file.get(), path)) {
            return file;
        }
    }
    errno = EEXIST;
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
        const FileDescriptor file(
            ::open(entry->path().c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
        if (file && ::flock(file.get(), LOCK_EX | LOCK_NB) == 0) {
            ::unlink(entry->path().c_str());
        }
    }
}

fs::path directoryOf(const fs::path& path) {
    return path.has_parent_path() ? path.parent_path() : fs::path(".");
}

} // namespace

Result<std::unique_ptr<AtomicFile>> AtomicFile::create(const std::string& path) {
    fs::path resolved = path;
    if (const int code = followLinks(resolved); code != 0) {
        return writeError(path, code);
    }
    struct stat existing {};
    const bool exists = ::stat(resolved.c_str(), &existing) == 0;
    const int missing = exists ? 0 : errno;
    if (!resolved.has_filename() || (exists && S_ISDIR(existing.st_mode))) {
        return writeError(path, path.empty() ? ENOENT : EISDIR);
    }
    if (exists && !S_ISREG(existing.st_mode)) {
        return writeError(path, ENOTSUP);
    }
    if (!exists && missing != ENOENT) { // said now and not when all the work is done
        return writeError(path, missing);
    }
    const fs::path directory = directoryOf(resolved);
    const std::string prefix = temporaryPrefix(resolved);
    removeLeftovers(directory, prefix);
    std::string temporary;
    FileDescriptor file = createTemporary(directory, prefix, temporary);
    if (!file) {
        return writeError(path, errno);
    }
    if (exists) { // not fatal where the file system has no permissions
        static_cast<void>(::fchmod(file.get(), existing.st_mode & 07777U));
    }
    return std::unique_ptr<AtomicFile>(
        new AtomicFile(path, resolved.string(), std::move(temporary), std::move(file)));
}

AtomicFile::AtomicFile(std::string path, std::string resolved, std::string temporary, FileDescriptor file)
    : path_(std::move(path)), resolved_(std::move(resolved)), temporary_(std::move(temporary)),
      file_(std::move(file)) {}

AtomicFile::~AtomicFile() {
    if (!temporary_.empty()) {
        ::unlink(temporary_.c_str());
    }
}

NSError AtomicFile::failure(int code) const {
    return writeError(path_, code);
}

Result<void> AtomicFile::write(std::string_view bytes) {
    const int code = writeAll(file_.get(), bytes);
    return code == 0 ? Result<void>() : failure(code);
}

Result<void> AtomicFile::sync() {
    return ::fsync(file_.get()) == 0 ? Result<void>() : failure(errno);
}

Result<void> AtomicFile::commit() {
    if (Result<void> synced = sync(); !synced) {
        return synced;
    }
    if (::rename(temporary_.c_str(), resolved_.c_str()) != 0) {
        return failure(errno);
    }
    temporary_.clear();
    // The rename itself must outlive a power cut; a file system that can't sync a directory still has it.
    const FileDescriptor directory(
        ::open(directoryOf(resolved_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory) {
        ::fsync(directory.get());
    }
    return {};
}

Result<void> writeAtomically(const Data& data, const URL& url) {
    const Result<std::unique_ptr<AtomicFile>> file = AtomicFile::create(url.path());
    if (!file) {
        return file.error();
    }
    if (Result<void> written = file.value()->write(textView(data)); !written) {
        return written;
    }
    return file.value()->commit();
}

} // namespace platform
