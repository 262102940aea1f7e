// Sound that comes through a pipe.
#pragma once

#include "hosts/cli/Failure.h"
#include "platform/files/FileDescriptor.h"

#include <string>

namespace qor::cli {

/// Whether the name leads to a pipe, as "/dev/stdin" can.
bool isPipe(const std::string& file);

/// Reads the pipe to its end into a file without a name in the folder for temporary files, as most formats
/// can only be read from a place where one can go back. The descriptor stands at the start. An interrupt ends
/// the reading.
Result<FileDescriptor> keepPipe(const std::string& file);

} // namespace qor::cli
