// A file that appears under its name only when it is complete.
#pragma once

#include "hosts/cli/Failure.h"

#include <memory>
#include <string>

namespace qor::cli {

/// Writes to a temporary file beside the target and renames it in `commit`. Destroyed before that, it leaves
/// the target as it was and removes the temporary file. A target that is a symbolic link is followed; an
/// existing target keeps its permissions.
class AtomicFile {
public:
    /// Fails if the target's folder is missing or cannot be written, or the target is not a plain file.
    static Result<std::unique_ptr<AtomicFile>> create(const std::string& target);

    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    /// Open for reading and writing, at the start of an empty file.
    int descriptor() const noexcept { return descriptor_; }
    const std::string& target() const noexcept { return target_; }

    /// Appends the bytes.
    Result<void> write(std::string_view bytes);
    /// Brings the content to the disk and gives the file its name. Nothing may be written afterwards.
    Result<void> commit();

private:
    AtomicFile(std::string target, std::string resolved, std::string temporary, int descriptor);

    std::string target_;    // as the user wrote it
    std::string resolved_;  // behind symbolic links
    std::string temporary_; // empty once renamed
    int descriptor_;
};

/// "cannot write 'FILE': REASON. REMEDY", for an errno value.
NSError writeFailure(const std::string& file, int code);

} // namespace qor::cli
