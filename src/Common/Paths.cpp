#include "Common/Paths.h"

#include "Common/Extensions.h"

namespace qor {

namespace {

void logPath(const char* what, const std::optional<URL>& url) {
    safeprint(url ? std::string("AudioUnitViewController::getPaths() : Audio Unit's ") + what +
                        " path is: " + url->path()
                  : std::string("AudioUnitViewController::getPaths() : ERROR: Audio Unit's ") + what +
                        " path is nil.");
}

} // namespace

bool ensureDirectoryExists(const URL& url) {
    const FileManager& files = FileManager::defaultManager();
    if (files.fileExistsAtPath(url.path())) {
        return true;
    }
    const auto made = files.createDirectoryAtURL(url, true, {});
    if (!made) {
        debugprint("ensureDirectoryExists() : ERROR: Creating required directory '" + url.path() +
                   "' failed: " + made.error().localizedDescription());
        return false;
    }
    return true;
}

void getPaths() {
    const auto documents = FileManager::defaultManager().URLsForDirectory(
        SearchPathDirectory::documentDirectory, SearchPathDomainMask::userDomainMask);
    documentsURL = documents.empty() ? std::nullopt : std::optional(documents.front());
    logPath("documents", documentsURL);
    resourcesURL = Bundle::main().resourceURL();
    logPath("resources", resourcesURL);
}

} // namespace qor
