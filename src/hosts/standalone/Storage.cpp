#include "hosts/standalone/Storage.h"

#include "hosts/standalone/AudioBackend.h"
#include "platform/files/AtomicFile.h"
#include "platform/files/Environment.h"

#include <cstdio>

namespace qor::app {

namespace {

constexpr const char* kFolder = "qor-limiter";
constexpr const char* kStateFile = "app-state.plist";
constexpr const char* kWindowFile = "app-window.plist";
constexpr const char* kWidth = "width";   // points
constexpr const char* kHeight = "height"; // points
constexpr double kSmallest = 100.0;       // points
constexpr double kLargest = 8000.0;       // points

} // namespace

Storage::Storage() {
    if (const auto directory = stateDirectory()) {
        folder_ = URL::fileURLWithPath(*directory + "/" + kFolder + "/");
    }
}

Result<void> Storage::restore(host::UnitHost& host) {
    if (!folder_) {
        return {};
    }
    const URL file = folder_->appendingPathComponent(kStateFile);
    const auto bytes = FileManager::defaultManager().contentsAtPath(file.path());
    if (!bytes) {
        return {};
    }
    if (auto restored = host::restoreState(host, *bytes); !restored) {
        const std::string aside = file.path() + ".damaged";
        const bool moved = std::rename(file.path().c_str(), aside.c_str()) == 0;
        return soundError(
            "the state in '" + file.path() + "' is damaged: " + restored.error().localizedDescription() +
            " The limiter starts with its defaults" + (moved ? "; the file is now '" + aside + "'." : "."));
    }
    kept_ = *bytes;
    return {};
}

Result<void> Storage::keep(const host::UnitHost& host) {
    Data bytes = host::saveState(host);
    if (!folder_ || bytes == kept_) {
        return {};
    }
    auto written = write(bytes, folder_->appendingPathComponent(kStateFile));
    if (written) {
        kept_ = std::move(bytes);
    }
    return written;
}

std::optional<CGSize> Storage::windowSize() const {
    if (!folder_) {
        return std::nullopt;
    }
    const auto bytes =
        FileManager::defaultManager().contentsAtPath(folder_->appendingPathComponent(kWindowFile).path());
    NSPropertyListFormat format = 0;
    if (!bytes) {
        return std::nullopt;
    }
    const auto list = PropertyListSerialization::propertyListWithData(*bytes, NSPropertyListImmutable, format,
                                                                      host::kStateLimits);
    const PropertyListDictionary* fields = list ? list.value().asDictionary() : nullptr;
    const auto length = [fields](const char* key) -> std::optional<double> {
        const PropertyList* field = fields == nullptr ? nullptr : fields->find(key);
        const auto number = field == nullptr ? std::nullopt : field->asNumber();
        return number && *number >= kSmallest && *number <= kLargest ? number : std::nullopt;
    };
    const auto width = length(kWidth);
    const auto height = length(kHeight);
    return width && height ? std::optional(CGSize{.width = *width, .height = *height}) : std::nullopt;
}

Result<void> Storage::keepWindowSize(const CGSize& size) {
    if (!folder_) {
        return {};
    }
    const PropertyListDictionary fields{{kWidth, size.width}, {kHeight, size.height}};
    auto bytes = PropertyListSerialization::dataWithPropertyList(fields, NSPropertyListXMLFormat_v1_0, 0);
    if (!bytes) {
        return bytes.error();
    }
    return write(bytes.value(), folder_->appendingPathComponent(kWindowFile));
}

Result<void> Storage::write(const Data& bytes, const URL& file) {
    if (auto made = FileManager::defaultManager().createDirectoryAtURL(*folder_, true); !made) {
        return made;
    }
    return writeAtomically(bytes, file);
}

} // namespace qor::app
