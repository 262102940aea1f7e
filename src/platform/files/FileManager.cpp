#include "platform/files/FileManager.h"

#include "platform/files/Environment.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace platform {
namespace {

namespace fs = std::filesystem;

NSError fileError(const std::string& what, const std::string& path, const std::error_code& code) {
    return {NSPOSIXErrorDomain,
            code.value(),
            {{NSLocalizedDescriptionKey, what + " '" + path + "': " + code.message()}}};
}

} // namespace

FileManager& FileManager::defaultManager() noexcept {
    static FileManager manager;
    return manager;
}

bool FileManager::fileExistsAtPath(const std::string& path) const {
    std::error_code code;
    return fs::exists(path, code) && !code;
}

std::optional<Data> FileManager::contentsAtPath(const std::string& path) const {
    std::error_code code;
    if (fs::is_directory(path, code)) {
        return std::nullopt;
    }
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return std::nullopt;
    }
    Data data{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    return file.bad() ? std::nullopt : std::optional(std::move(data));
}

Result<std::vector<std::string>> FileManager::contentsOfDirectoryAtPath(const std::string& path) const {
    std::error_code code;
    std::vector<std::string> names;
    for (fs::directory_iterator entry(path, code); !code && entry != fs::directory_iterator();
         entry.increment(code)) {
        names.push_back(entry->path().filename().string());
    }
    if (code) {
        return fileError("The directory can't be read:", path, code);
    }
    return names;
}

Result<void> FileManager::createDirectoryAtURL(const URL& url, bool withIntermediateDirectories,
                                               const FileAttributes& /*attributes*/) const {
    const std::string path = url.path();
    std::error_code code;
    if (withIntermediateDirectories) {
        fs::create_directories(path, code);
    } else if (!fs::create_directory(path, code) && !code) {
        code = std::make_error_code(std::errc::file_exists);
    }
    if (code) {
        return fileError("The directory can't be made:", path, code);
    }
    return {};
}

std::vector<URL> FileManager::URLsForDirectory(SearchPathDirectory directory,
                                               SearchPathDomainMask inDomains) const {
    if (directory != SearchPathDirectory::documentDirectory ||
        inDomains != SearchPathDomainMask::userDomainMask) {
        return {};
    }
    const auto documents = documentsDirectory();
    return documents ? std::vector{URL::fileURLWithPath(*documents + "/")} : std::vector<URL>{};
}

} // namespace platform
