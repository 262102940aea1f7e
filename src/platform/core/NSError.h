// The platform's error value.
#pragma once

#include <map>
#include <string>
#include <utility>

namespace platform {

inline constexpr const char* NSOSStatusErrorDomain = "NSOSStatusErrorDomain";
inline constexpr const char* NSCocoaErrorDomain = "NSCocoaErrorDomain";
inline constexpr const char* NSPOSIXErrorDomain = "NSPOSIXErrorDomain";
inline constexpr const char* NSLocalizedDescriptionKey = "NSLocalizedDescription";

/// What failed: a domain, a code of that domain, and texts by key.
struct NSError {
    std::string domain;
    long code = 0;
    std::map<std::string, std::string> userInfo;

    NSError() = default;
    NSError(std::string errorDomain, long errorCode, std::map<std::string, std::string> info = {})
        : domain(std::move(errorDomain)), code(errorCode), userInfo(std::move(info)) {}

    /// The text for people: the one in `userInfo` if there is one, otherwise domain and code.
    std::string localizedDescription() const {
        const auto found = userInfo.find(NSLocalizedDescriptionKey);
        if (found != userInfo.end()) {
            return found->second;
        }
        return "The operation couldn't be completed. (" + domain + " error " + std::to_string(code) + ".)";
    }
    /// The text for developers.
    std::string debugDescription() const {
        return "Error Domain=" + domain + " Code=" + std::to_string(code) + " \"" + localizedDescription() +
               "\"";
    }
};

} // namespace platform
