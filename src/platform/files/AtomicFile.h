// Writing a file whole or not at all.
#pragma once

#include "platform/core/Result.h"
#include "platform/files/Data.h"
#include "platform/files/URL.h"

namespace platform {

/// Writes the bytes beside the file, brings them to the disk and renames them over it: at every moment, also
/// after a power cut, the old or the new content is there. Keeps the permissions of a file that exists and
/// follows a symbolic link. What a killed writer left behind is removed by the next write of the same file.
/// Errors are of `NSPOSIXErrorDomain`; their text names the path.
Result<void> writeAtomically(const Data& data, const URL& url);

/// How the temporary neighbours of a file are named: "." + name + this + six random characters.
inline constexpr const char* kTemporaryMark = ".tmp-";

} // namespace platform
