// How a part of the command line says that it could not do its work: an error whose code is the exit status.
#pragma once

#include "platform/core/Core.h"

#include <string>
#include <string_view>

namespace qor::cli {

inline constexpr const char* kErrorDomain = "qor-limiter";
inline constexpr int kExitSuccess = 0;
inline constexpr int kExitWorkFailed = 1;
inline constexpr int kExitWrongUsage = 2;

/// The request was fine, the work was not possible. The text names the file, the place and the remedy.
inline NSError workFailed(std::string text) {
    return {kErrorDomain, kExitWorkFailed, {{NSLocalizedDescriptionKey, std::move(text)}}};
}

/// The arguments ask for something that does not exist.
inline NSError wrongUsage(std::string text) {
    return {kErrorDomain, kExitWrongUsage, {{NSLocalizedDescriptionKey, std::move(text)}}};
}

/// A file's name in error texts, so that blanks and empty names can be seen.
inline std::string quotedName(std::string_view name) {
    std::string result = "'";
    result += name;
    result += '\'';
    return result;
}

/// A piece of the user's input in error texts: cut where it is long, control characters as '?'.
inline std::string shown(std::string_view source) {
    constexpr std::size_t kLongest = 60;
    std::string result = "'";
    for (const char c : source.substr(0, kLongest)) {
        result += (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) ? '?' : c;
    }
    result += source.size() > kLongest ? "...'" : "'";
    return result;
}

} // namespace qor::cli
