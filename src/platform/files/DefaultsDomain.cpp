#include "platform/files/DefaultsDomain.h"

#include "platform/core/Log.h"
#include "platform/files/AtomicFile.h"
#include "platform/files/FileLock.h"
#include "platform/files/PropertyListSerialization.h"

#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <filesystem>
#include <map>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace platform {
namespace {

constexpr std::uint64_t kNeverSeen = ~std::uint64_t{0};

Data readAll(int file) {
    constexpr std::size_t kPiece = 1U << 16U;
    Data result;
    while (true) {
        const std::size_t size = result.size();
        result.resize(size + kPiece);
        const ssize_t count = ::read(file, result.data() + size, kPiece);
        if (count < 0 && errno == EINTR) {
            result.resize(size);
            continue;
        }
        result.resize(size + static_cast<std::size_t>(count > 0 ? count : 0));
        if (count <= 0) {
            return result;
        }
    }
}

} // namespace

DefaultsDomain::DefaultsDomain(std::string path) : path_(std::move(path)) {}

Ref<DefaultsDomain> DefaultsDomain::at(const std::string& path) {
    static std::mutex mutex;
    static std::map<std::string, Ref<DefaultsDomain>> domains;
    const std::lock_guard lock(mutex);
    Ref<DefaultsDomain>& domain = domains[path];
    if (!domain) {
        domain = makeRef<DefaultsDomain>(path);
    }
    return domain;
}

DefaultsDomain::Stamp DefaultsDomain::stampOf(int file) {
    struct stat status {};
    if (::fstat(file, &status) != 0) {
        return {};
    }
    return {status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

DefaultsDomain::Stamp DefaultsDomain::stampOfPath() const {
    struct stat status {};
    if (::stat(path_.c_str(), &status) != 0) {
        return {};
    }
    return {status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

/// Opens the file that is there now and takes its stamp.
void DefaultsDomain::pin() {
    pinned_.emplace(::open(path_.c_str(), O_RDONLY | O_CLOEXEC));
    stamp_ = *pinned_ ? stampOf(pinned_->get()) : Stamp{};
}

/// Reads the file into `entries_`. False if it is there and damaged.
bool DefaultsDomain::load() {
    if (stampOfPath() == stamp_) {
        return true;
    }
    pin();
    PropertyListDictionary entries;
    if (*pinned_) {
        const auto bytes = readAll(pinned_->get());
        NSPropertyListFormat format = NSPropertyListXMLFormat_v1_0;
        auto list = PropertyListSerialization::propertyListWithData(bytes, NSPropertyListImmutable, format);
        if (!list || list.value().asDictionary() == nullptr) {
            stamp_ = {kNeverSeen};
            return false;
        }
        entries = std::move(*list.value().asDictionary());
    } else if (errno != ENOENT && errno != ENOTDIR) {
        stamp_ = stampOfPath(); // not readable (permissions): keep what is known
        return true;
    }
    entries_ = std::move(entries);
    applyUnsaved();
    return true;
}

void DefaultsDomain::applyUnsaved() {
    for (const auto& [key, value] : unsaved_) {
        if (value) {
            entries_.set(key, *value);
        } else {
            entries_.remove(key);
        }
    }
}

/// Renames the damaged file to the first free name. The caller holds the lock.
void DefaultsDomain::setAside() {
    std::error_code code;
    int number = 1;
    std::string aside;
    do {
        aside = path_ + ".damaged-" + std::to_string(number++);
    } while (std::filesystem::exists(aside, code));
    std::filesystem::rename(path_, aside, code);
    print("NSUserDefaults: WARNING: The file '" + path_ + "' is damaged" +
          (code ? " and can't be renamed: " + code.message() : " and was set aside as '" + aside + "'") +
          ". Starting without its values.");
    entries_ = {};
    pin();
    applyUnsaved();
}

/// Brings `entries_` to the file's state.
void DefaultsDomain::follow() {
    if (load()) {
        return;
    }
    const FileLock lock(lockPath());
    if (!load()) { // still damaged, and no other process is at it
        setAside();
    }
}

std::optional<PropertyList> DefaultsDomain::value(const std::string& key) {
    const std::lock_guard guard(mutex_);
    follow();
    const PropertyList* found = entries_.find(key);
    return found == nullptr ? std::nullopt : std::optional(*found);
}

PropertyListDictionary DefaultsDomain::dictionary() {
    const std::lock_guard guard(mutex_);
    follow();
    return entries_;
}

void DefaultsDomain::save() {
    auto bytes = PropertyListSerialization::dataWithPropertyList(entries_, NSPropertyListXMLFormat_v1_0, 0);
    const auto written =
        bytes ? writeAtomically(bytes.value(), URL::fileURLWithPath(path_)) : Result<void>(bytes.error());
    if (!written) {
        print("NSUserDefaults: WARNING: The values are kept in memory only: " +
              written.error().localizedDescription());
        return;
    }
    unsaved_.clear();
    pin();
}

void DefaultsDomain::setValue(const std::string& key, std::optional<PropertyList> value) {
    const std::lock_guard guard(mutex_);
    std::error_code code;
    std::filesystem::create_directories(std::filesystem::path(path_).parent_path(), code);
    const FileLock lock(lockPath()); // without it (a read-only place) saving says what is wrong
    if (!load()) {
        setAside();
    }
    std::erase_if(unsaved_, [&key](const auto& change) { return change.first == key; });
    unsaved_.emplace_back(key, std::move(value));
    applyUnsaved();
    save();
}

} // namespace platform
