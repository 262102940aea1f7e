// The program's own bundle: where its resources lie.
#pragma once

#include "platform/files/URL.h"

#include <optional>
#include <string>

namespace platform {

/// The bundle of the running program or plug-in. Its identifier, directory name and override variable are
/// given by the build.
class Bundle {
public:
    static const Bundle& main() noexcept;

    /// The reverse-domain name of the program.
    const std::string& bundleIdentifier() const noexcept { return identifier_; }
    /// The program's directory name below the user's configuration and data directories.
    const std::string& directoryName() const noexcept { return directoryName_; }
    /// The variable that moves the resources elsewhere.
    const std::string& overrideVariable() const noexcept { return overrideVariable_; }

    /// The directory with the resources; absent if there is none. Where the override variable is set it alone
    /// decides. Otherwise the first directory that holds resources of: "resources" and "../Resources" beside
    /// the file that holds this code, "share/NAME" beside any of the directories above that file, the source
    /// tree if that file lies in the build tree, "NAME/resources" in the user's data directory, the
    /// installation's data directory, and NAME in the system's data directories. Looked up on each call.
    std::optional<URL> resourceURL() const;

private:
    Bundle();

    std::string identifier_;
    std::string directoryName_;
    std::string overrideVariable_;
};

} // namespace platform
