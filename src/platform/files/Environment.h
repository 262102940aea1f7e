// The user's directories as the desktop's base-directory rules name them.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace platform {

/// A variable of the environment; absent if it is unset or empty.
std::optional<std::string> environmentVariable(const char* name);

/// The user's home directory; absent if the environment and the user database give none.
std::optional<std::string> homeDirectory();
/// `XDG_CONFIG_HOME`, otherwise ".config" in the home directory. A path that is not absolute counts as unset.
std::optional<std::string> configDirectory();
/// `XDG_DATA_HOME`, otherwise ".local/share" in the home directory.
std::optional<std::string> dataDirectory();
/// `XDG_DATA_DIRS`, otherwise "/usr/local/share" and "/usr/share"; without those that are not absolute.
std::vector<std::string> systemDataDirectories();
/// `XDG_STATE_HOME`, otherwise ".local/state" in the home directory.
std::optional<std::string> stateDirectory();
/// The user's documents: `XDG_DOCUMENTS_DIR` of "user-dirs.dirs" in the configuration directory, otherwise
/// "Documents" in the home directory.
std::optional<std::string> documentsDirectory();

} // namespace platform
