// What the system asks of the file system.
#pragma once

#include "platform/core/Result.h"
#include "platform/files/Data.h"
#include "platform/files/URL.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace platform {

enum class SearchPathDirectory : std::uint64_t { documentDirectory = 9 };
enum class SearchPathDomainMask : std::uint64_t { userDomainMask = 1 };

using FileAttributes = std::map<std::string, std::string>;

/// Stateless; any thread. Errors are of `NSPOSIXErrorDomain`, their text names the path.
class FileManager {
public:
    static FileManager& defaultManager() noexcept;

    /// True for files and directories, links followed.
    bool fileExistsAtPath(const std::string& path) const;
    /// A file's bytes; absent if it can't be read or is a directory.
    std::optional<Data> contentsAtPath(const std::string& path) const;
    /// The names in a directory, without "." and "..", in the order in which the directory gives them.
    Result<std::vector<std::string>> contentsOfDirectoryAtPath(const std::string& path) const;
    /// Makes a directory. With intermediate directories one that exists already is a success.
    Result<void> createDirectoryAtURL(const URL& url, bool withIntermediateDirectories,
                                      const FileAttributes& attributes = {}) const;
    /// The user's document directory, as a list of one; empty if it can't be told.
    std::vector<URL> URLsForDirectory(SearchPathDirectory directory, SearchPathDomainMask inDomains) const;
};

} // namespace platform
