// The forced conversions of the preset reader: a value of another kind stops the process. A host checks a
// user's file or state before it comes here.
#pragma once

#include "platform/files/Files.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string>

namespace qor {

inline std::int64_t forcedInteger(const PropertyList& value) {
    return unwrap(value.asInteger());
}

/// An integer from 0 up.
inline std::uint64_t forcedUnsigned(const PropertyList& value) {
    const auto integer = value.asInteger();
    return unwrap(integer && *integer >= 0 ? std::optional(static_cast<std::uint64_t>(*integer))
                                           : std::nullopt);
}

inline std::uint32_t forcedUnsigned32(const PropertyList& value) {
    const std::uint64_t wide = forcedUnsigned(value);
    return unwrap(wide <= std::numeric_limits<std::uint32_t>::max()
                      ? std::optional(static_cast<std::uint32_t>(wide))
                      : std::nullopt);
}

/// A real or an integer, narrowed to 32 bits.
inline float forcedFloat(const PropertyList& value) {
    return static_cast<float>(unwrap(value.asNumber()));
}

inline const std::string& forcedString(const PropertyList& value) {
    return unwrap(value.asString());
}

inline const PropertyListDictionary& forcedDictionary(const PropertyList& value) {
    return unwrap(value.asDictionary());
}

} // namespace qor
