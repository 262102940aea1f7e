#include "platform/files/Environment.h"

#include <array>
#include <cstdlib>
#include <fstream>
#include <pwd.h>
#include <sstream>
#include <unistd.h>

namespace platform {
namespace {

std::optional<std::string> absoluteVariable(const char* name) {
    auto value = environmentVariable(name);
    return value && value->front() == '/' ? value : std::nullopt;
}

std::optional<std::string> belowHome(const char* name) {
    auto home = homeDirectory();
    return home ? std::optional(*home + "/" + name) : std::nullopt;
}

/// The value of a line `NAME="$HOME/dir"` or `NAME="/dir"`; absent for any other line.
std::optional<std::string> userDirectoryOfLine(const std::string& line, const std::string& name) {
    const std::size_t start = line.find_first_not_of(" \t");
    const std::string opening = name + "=\"";
    if (start == std::string::npos || line.compare(start, opening.size(), opening) != 0) {
        return std::nullopt;
    }
    std::string value;
    std::size_t i = start + opening.size();
    for (; i < line.size() && line[i] != '"'; ++i) {
        if (line[i] == '\\' && i + 1 < line.size()) {
            ++i;
        }
        value += line[i];
    }
    constexpr const char* kHome = "$HOME";
    if (value.rfind(kHome, 0) == 0 && (value.size() == 5 || value[5] == '/')) {
        const auto home = homeDirectory();
        return home ? std::optional(*home + value.substr(5)) : std::nullopt;
    }
    return !value.empty() && value.front() == '/' ? std::optional(value) : std::nullopt;
}

} // namespace

std::optional<std::string> environmentVariable(const char* name) {
    const char* value = std::getenv(name); // NOLINT(concurrency-mt-unsafe): nobody writes the environment
    return value == nullptr || *value == '\0' ? std::nullopt : std::optional<std::string>(value);
}

std::optional<std::string> homeDirectory() {
    if (auto home = absoluteVariable("HOME")) {
        return home;
    }
    std::array<char, 4096> buffer{};
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr ||
        found->pw_dir == nullptr || found->pw_dir[0] != '/') {
        return std::nullopt;
    }
    return found->pw_dir;
}

std::optional<std::string> configDirectory() {
    auto directory = absoluteVariable("XDG_CONFIG_HOME");
    return directory ? directory : belowHome(".config");
}

std::optional<std::string> dataDirectory() {
    auto directory = absoluteVariable("XDG_DATA_HOME");
    return directory ? directory : belowHome(".local/share");
}

std::vector<std::string> systemDataDirectories() {
    std::vector<std::string> directories;
    std::istringstream list(environmentVariable("XDG_DATA_DIRS").value_or("/usr/local/share:/usr/share"));
    for (std::string directory; std::getline(list, directory, ':');) {
        if (directory.starts_with('/')) {
            directories.push_back(directory);
        }
    }
    return directories;
}

std::optional<std::string> stateDirectory() {
    auto directory = absoluteVariable("XDG_STATE_HOME");
    return directory ? directory : belowHome(".local/state");
}

std::optional<std::string> documentsDirectory() {
    if (const auto config = configDirectory()) {
        std::ifstream file(*config + "/user-dirs.dirs");
        std::optional<std::string> found;
        for (std::string line; std::getline(file, line);) {
            if (auto directory = userDirectoryOfLine(line, "XDG_DOCUMENTS_DIR")) {
                found = directory; // as in a shell, the last line holds
            }
        }
        if (found) {
            return found;
        }
    }
    return belowHome("Documents");
}

} // namespace platform
