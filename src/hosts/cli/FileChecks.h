// Questions about files that are asked before any work begins.
#pragma once

#include "hosts/cli/Failure.h"

#include <string>

namespace qor::cli {

/// Whether both names lead to one file, also through symbolic or hard links; files that do not exist yet are
/// compared by their paths.
bool isSameFile(const std::string& one, const std::string& other);

/// Refuses a missing file, a folder, and a file that may not be read. A pipe is not opened: its writer would
/// take that for the reader.
Result<void> requireReadableFile(const std::string& file);

} // namespace qor::cli
