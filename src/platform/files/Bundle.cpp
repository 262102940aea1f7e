#include "platform/files/Bundle.h"

#include "platform/files/Environment.h"

#include <algorithm>
#include <dlfcn.h>
#include <filesystem>
#include <system_error>
#include <vector>

namespace platform {
namespace {

namespace fs = std::filesystem;

constexpr int kAncestors = 6; // a VST3 bundle lies five directories below its prefix

bool isDirectory(const fs::path& path) {
    std::error_code code;
    return fs::is_directory(path, code);
}

/// A directory of the right name can also be the user's own, without resources: these hold this entry.
bool holdsResources(const fs::path& path) {
    return isDirectory(path / PLATFORM_BUNDLE_MARKER);
}

/// The shared object or program that this code is part of.
std::optional<fs::path> ownFile() {
    Dl_info info{};
    if (::dladdr(reinterpret_cast<const void*>(&Bundle::main), &info) == 0 || info.dli_fname == nullptr) {
        return std::nullopt;
    }
    std::error_code code;
    fs::path file = fs::canonical(info.dli_fname, code);
    if (code) { // a program that was started through the search path
        file = fs::read_symlink("/proc/self/exe", code);
    }
    return code ? std::nullopt : std::optional(file);
}

bool liesBelow(const fs::path& file, const fs::path& directory) {
    const fs::path relative = file.lexically_relative(directory);
    return !relative.empty() && *relative.begin() != "..";
}

std::optional<fs::path> besideOwnFile(const fs::path& file, const std::string& name) {
    const fs::path directory = file.parent_path();
    for (const fs::path& candidate : {directory / "resources", directory.parent_path() / "Resources"}) {
        if (holdsResources(candidate)) {
            return candidate;
        }
    }
    fs::path ancestor = directory;
    for (int i = 0; i < kAncestors && ancestor.has_relative_path(); ++i, ancestor = ancestor.parent_path()) {
        if (holdsResources(ancestor / "share" / name)) {
            return ancestor / "share" / name;
        }
    }
    return std::nullopt;
}

/// Where an installation for one user puts them: plug-ins lie in directories of their own then, far from
/// "share".
std::optional<fs::path> userResources(const std::string& name) {
    const std::optional<std::string> data = dataDirectory();
    if (!data) {
        return std::nullopt;
    }
    const fs::path candidate = fs::path(*data) / name / "resources";
    return isDirectory(candidate) ? std::optional(candidate) : std::nullopt;
}

URL directoryURL(const fs::path& path) {
    return URL::fileURLWithPath(path.string() + "/");
}

} // namespace

Bundle::Bundle()
    : identifier_(PLATFORM_BUNDLE_IDENTIFIER), directoryName_(PLATFORM_BUNDLE_DIRECTORY),
      overrideVariable_(PLATFORM_BUNDLE_VARIABLE) {}

const Bundle& Bundle::main() noexcept {
    static const Bundle bundle;
    return bundle;
}

std::optional<URL> Bundle::resourceURL() const {
    if (const auto given = environmentVariable(overrideVariable_.c_str())) {
        return isDirectory(*given) ? std::optional(directoryURL(*given)) : std::nullopt;
    }
    if (const auto file = ownFile()) {
        if (const auto found = besideOwnFile(*file, directoryName_)) {
            return directoryURL(*found);
        }
        if (liesBelow(*file, PLATFORM_BUILD_TREE) && holdsResources(PLATFORM_SOURCE_RESOURCES)) {
            return directoryURL(PLATFORM_SOURCE_RESOURCES);
        }
    }
    if (const auto own = userResources(directoryName_)) {
        return directoryURL(*own);
    }
    std::vector<fs::path> installed = {PLATFORM_INSTALLED_RESOURCES};
    for (const std::string& directory : systemDataDirectories()) {
        installed.push_back(fs::path(directory) / directoryName_);
    }
    const auto found = std::find_if(installed.begin(), installed.end(), holdsResources);
    if (found != installed.end()) {
        return directoryURL(*found);
    }
    return std::nullopt;
}

} // namespace platform
