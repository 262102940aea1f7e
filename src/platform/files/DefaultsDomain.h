// One property-list file of the user defaults, shared with every other process that uses it.
#pragma once

#include "platform/core/Ref.h"
#include "platform/files/FileDescriptor.h"
#include "platform/files/PropertyList.h"

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace platform {

/// Any thread. A read follows what other processes wrote; a write takes the file's lock, reads what is there,
/// changes one key and replaces the file atomically, so that no other process's keys are lost. A damaged file
/// is renamed to "NAME.damaged-N" with a log line and counts as empty. A value that can't be written is kept
/// in memory, reported by a log line, and written with the next write that works.
class DefaultsDomain {
public:
    explicit DefaultsDomain(std::string path);

    std::optional<PropertyList> value(const std::string& key);
    /// An absent value removes the key.
    void setValue(const std::string& key, std::optional<PropertyList> value);
    PropertyListDictionary dictionary();

    const std::string& path() const noexcept { return path_; }
    /// The one domain object of this process for a file.
    static Ref<DefaultsDomain> at(const std::string& path);

private:
    /// What tells one state of the file from another.
    struct Stamp {
        std::uint64_t inode = 0;
        std::int64_t size = -1;
        std::int64_t seconds = 0;
        std::int64_t nanoseconds = 0;
        bool operator==(const Stamp&) const = default;
    };

    static Stamp stampOf(int file);
    Stamp stampOfPath() const;
    void pin();
    void follow();
    bool load();
    void setAside();
    void applyUnsaved();
    void save();
    std::string lockPath() const { return path_ + ".lock"; }

    const std::string path_;
    std::mutex mutex_;
    // The file that `entries_` stands for, kept open so that its inode number is not given to a later one.
    std::optional<FileDescriptor> pinned_;
    Stamp stamp_;
    PropertyListDictionary entries_;
    // Changes that the file does not have: a value, or nothing for a removed key.
    std::vector<std::pair<std::string, std::optional<PropertyList>>> unsaved_;
};

} // namespace platform
