// Ways to end the process on a broken invariant, each with the platform's own words.
#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace platform {

inline constexpr std::string_view kUnwrapMessage =
    "Unexpectedly found nil while unwrapping an Optional value";
inline constexpr std::string_view kImplicitUnwrapMessage =
    "Unexpectedly found nil while implicitly unwrapping an Optional value";

/// Writes the message and a line end to standard error and aborts.
[[noreturn]] void fatalError(std::string_view message) noexcept;

/// The value of an optional, pointer or reference that must be there (written out as a forced unwrap).
template <class T>
decltype(auto) unwrap(T&& optional) {
    if (!optional) {
        fatalError(kUnwrapMessage);
    }
    return *std::forward<T>(optional);
}

/// The same for a field that is declared as unwrapped on every use.
template <class T>
decltype(auto) unwrapImplicit(T&& optional) {
    if (!optional) {
        fatalError(kImplicitUnwrapMessage);
    }
    return *std::forward<T>(optional);
}

} // namespace platform
