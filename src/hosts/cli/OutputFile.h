// A file that the program writes, with errors that say what to do.
#pragma once

#include "hosts/cli/Failure.h"
#include "platform/files/AtomicFile.h"

#include <memory>
#include <string>

namespace qor::cli {

/// Appears under its name only when it is complete; see `platform::AtomicFile`.
class OutputFile {
public:
    /// Fails if the target's folder is missing or cannot be written, or the target is not a plain file.
    static Result<std::unique_ptr<OutputFile>> create(const std::string& target);

    /// Open for reading and writing, at the start of an empty file.
    int descriptor() const noexcept { return file_->descriptor(); }
    /// As the user wrote it.
    const std::string& target() const noexcept { return target_; }

    /// Appends the bytes.
    Result<void> write(std::string_view bytes) { return explained(file_->write(bytes)); }
    /// Brings the content to the disk, so that hardly anything can fail in `commit`.
    Result<void> sync() { return explained(file_->sync()); }
    /// Gives the file its name. Nothing may be written afterwards.
    Result<void> commit() { return explained(file_->commit()); }

private:
    OutputFile(std::string target, std::unique_ptr<AtomicFile> file)
        : target_(std::move(target)), file_(std::move(file)) {}
    Result<void> explained(const Result<void>& result) const;

    std::string target_;
    std::unique_ptr<AtomicFile> file_;
};

/// "cannot write 'FILE': REASON. REMEDY", for an errno value.
NSError writeFailure(const std::string& file, int code);

} // namespace qor::cli
