// Writing a file whole or not at all.
#pragma once

#include "platform/core/Result.h"
#include "platform/files/Data.h"
#include "platform/files/FileDescriptor.h"
#include "platform/files/URL.h"

#include <memory>
#include <string>
#include <string_view>

namespace platform {

/// A file in the making. The bytes go to a temporary neighbour, which `commit` brings to the disk and renames
/// over the file: at every moment, also after a power cut, the old or the new content is there. Destroyed
/// before that, it leaves the file as it was and no neighbour.
///
/// A file that exists keeps its permissions, a new one gets what the user's mask leaves. A symbolic link
/// stays, and what it points to is replaced. What a killed writer left behind is removed by the next writer
/// of the same file. Errors are of `NSPOSIXErrorDomain`; their text names the path. One thread at a time.
class AtomicFile {
public:
    /// Fails with EISDIR for a directory or a path that ends in a slash, with ENOTSUP for anything else that
    /// is no plain file (a device is never replaced), and where no neighbour can be made.
    static Result<std::unique_ptr<AtomicFile>> create(const std::string& path);

    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    /// The neighbour, open for reading and writing, at the start of an empty file.
    int descriptor() const noexcept { return file_.get(); }

    /// Appends the bytes.
    Result<void> write(std::string_view bytes);
    /// Brings what was written to the disk.
    Result<void> sync();
    /// Brings what was written to the disk and gives it its name. Nothing may be written afterwards.
    Result<void> commit();

private:
    AtomicFile(std::string path, std::string resolved, std::string temporary, FileDescriptor file);
    NSError failure(int code) const;

    std::string path_;      // as it was given
    std::string resolved_;  // behind symbolic links
    std::string temporary_; // empty once renamed
    FileDescriptor file_;   // locked, so that other writers know that it is no leftover
};

/// Writes the bytes as an `AtomicFile`.
Result<void> writeAtomically(const Data& data, const URL& url);

/// How the temporary neighbours of a file are named: "." + name + this + six random characters. Of a very
/// long name only the beginning is taken.
inline constexpr const char* kTemporaryMark = ".tmp-";

} // namespace platform
