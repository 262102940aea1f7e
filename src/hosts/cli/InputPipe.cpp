#include "hosts/cli/InputPipe.h"

#include "hosts/cli/Interrupt.h"

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

NSError readFailure(const std::string& file, int code) {
    if (code == EINTR) {
        return workFailed("stopped; " + quotedName(file) + " was not read to its end.");
    }
    return workFailed("cannot read " + quotedName(file) + ": " + std::generic_category().message(code) +
                      ". Check what writes into the pipe.");
}

NSError keepFailure(const std::string& file, const fs::path& folder, int code) {
    return workFailed("cannot keep " + quotedName(file) + " in " + quotedName(folder.string()) + ": " +
                      std::generic_category().message(code) +
                      ". Set TMPDIR to a folder with room that you may write to.");
}

FileDescriptor makeNameless(const fs::path& folder) {
    std::string name = (folder / "qor-limiter-XXXXXX").string();
    FileDescriptor file(::mkostemp(name.data(), O_CLOEXEC));
    if (file) {
        ::unlink(name.c_str());
    }
    return file;
}

} // namespace

bool isPipe(const std::string& file) {
    struct stat status {};
    return ::stat(file.c_str(), &status) == 0 && S_ISFIFO(status.st_mode);
}

Result<FileDescriptor> keepPipe(const std::string& file) {
    const FileDescriptor pipe(::open(file.c_str(), O_RDONLY | O_CLOEXEC)); // waits for a writer
    if (!pipe) {
        return readFailure(file, errno);
    }
    std::error_code failed;
    const fs::path folder = fs::temp_directory_path(failed);
    FileDescriptor kept = makeNameless(folder);
    if (!kept) {
        return keepFailure(file, folder, errno);
    }
    std::array<char, 65536> bytes;
    for (;;) {
        const ssize_t count = ::read(pipe.get(), bytes.data(), bytes.size());
        if (count == 0) {
            break;
        }
        if (count < 0 || interrupted()) {
            return readFailure(file, count < 0 ? errno : EINTR);
        }
        if (const int code = writeAll(kept.get(), {bytes.data(), static_cast<std::size_t>(count)});
            code != 0) {
            return keepFailure(file, folder, code);
        }
    }
    ::lseek(kept.get(), 0, SEEK_SET);
    return kept;
}

} // namespace qor::cli
