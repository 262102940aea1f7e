#include "hosts/cli/AtomicFile.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace qor::cli {

namespace {

namespace fs = std::filesystem;

const char* remedyFor(int code) {
    switch (code) {
    case ENOSPC:
    case EDQUOT:
        return "Free some space or choose another disk.";
    case EFBIG:
        return "The file is larger than the system allows here; choose a smaller format or raise the limit.";
    case EACCES:
    case EPERM:
    case EROFS:
        return "Choose a folder that you may write to.";
    case ENOENT:
    case ENOTDIR:
        return "Create the folder first.";
    default:
        return "Choose another place.";
    }
}

// Where the bytes are to end up: a symbolic link stays, what it points to is replaced.
fs::path behindLinks(const fs::path& target) {
    fs::path path = target;
    std::error_code ignored;
    for (int hops = 0; hops < 40 && fs::is_symlink(path, ignored); ++hops) {
        const fs::path next = fs::read_symlink(path, ignored);
        path = next.is_absolute() ? next : path.parent_path() / next;
    }
    return path;
}

// The mode a new file would get from `open`. The mask can only be read by setting it; the program has one
// thread when it opens its outputs.
mode_t permissionsOfNewFile() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666U & ~mask;
}

} // namespace

NSError writeFailure(const std::string& file, int code) {
    return workFailed("cannot write " + quotedName(file) + ": " + std::generic_category().message(code) +
                      ". " + remedyFor(code));
}

Result<std::unique_ptr<AtomicFile>> AtomicFile::create(const std::string& target) {
    if (target.empty()) {
        return wrongUsage("an output file needs a name");
    }
    const fs::path resolved = behindLinks(target);
    mode_t mode = permissionsOfNewFile();
    struct stat existing {};
    if (::stat(resolved.c_str(), &existing) == 0) {
        if (S_ISDIR(existing.st_mode)) {
            return workFailed("cannot write " + quotedName(target) + ": it is a folder. Add a file name.");
        }
        if (!S_ISREG(existing.st_mode)) {
            return workFailed("cannot write " + quotedName(target) +
                              ": it is not a plain file. Name a plain file.");
        }
        mode = existing.st_mode & 07777U;
    }
    if (!resolved.has_filename()) {
        return workFailed("cannot write " + quotedName(target) + ": it names a folder. Add a file name.");
    }
    const fs::path folder = resolved.has_parent_path() ? resolved.parent_path() : fs::path(".");
    std::string temporary = (folder / ".qor-limiter-XXXXXX").string();
    const int descriptor = ::mkostemp(temporary.data(), O_CLOEXEC);
    if (descriptor < 0) {
        return writeFailure(target, errno);
    }
    // Not fatal where the file system has no permissions.
    static_cast<void>(::fchmod(descriptor, mode));
    return std::unique_ptr<AtomicFile>(
        new AtomicFile(target, resolved.string(), std::move(temporary), descriptor));
}

AtomicFile::AtomicFile(std::string target, std::string resolved, std::string temporary, int descriptor)
    : target_(std::move(target)), resolved_(std::move(resolved)), temporary_(std::move(temporary)),
      descriptor_(descriptor) {}

AtomicFile::~AtomicFile() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
    if (!temporary_.empty()) {
        ::unlink(temporary_.c_str());
    }
}

Result<void> AtomicFile::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return writeFailure(target_, written < 0 ? errno : ENOSPC);
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return {};
}

Result<void> AtomicFile::commit() {
    if (::fsync(descriptor_) != 0) {
        return writeFailure(target_, errno);
    }
    const int descriptor = std::exchange(descriptor_, -1);
    if (::close(descriptor) != 0) {
        return writeFailure(target_, errno);
    }
    if (::rename(temporary_.c_str(), resolved_.c_str()) != 0) {
        return writeFailure(target_, errno);
    }
    temporary_.clear();
    // The new name itself: best effort, the content is safe already.
    const fs::path parent = fs::path(resolved_).parent_path();
    const int folder = ::open(parent.empty() ? "." : parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        static_cast<void>(::fsync(folder));
        ::close(folder);
    }
    return {};
}

} // namespace qor::cli
