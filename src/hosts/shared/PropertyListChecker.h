// What stands between a user's preset or state and the unit, which stops the process at a value of the wrong
// kind.
#pragma once

#include "kernel/ParameterTable.h"
#include "platform/files/Files.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace qor::host {

/// A preset or state that the unit can read without harm.
struct CheckedState {
    PropertyListDictionary dictionary;                        // its values are held to the parameters' ranges
    std::string name;                                         // empty if it has none
    std::array<std::optional<float>, kParameterCount> values; // what it sets, by address
    std::vector<std::string> notes;                           // what is unusual, one line each
};

/// How much a state must hold.
enum class Completeness : std::uint8_t {
    someParameters, // a preset: at least one parameter that the reader takes
    allParameters,  // a saved session: all twelve
};

/// 1 MiB and eight levels: a preset needs 8 KiB and three.
inline constexpr PropertyListLimits kStateLimits{std::size_t{1} << 20U, 8};

/// Parses and checks. An error's text begins with the line or the key path, and says what was found and what
/// is wanted; it names no file.
Result<CheckedState> checkState(const Data& bytes, Completeness completeness);
Result<CheckedState> checkState(const PropertyListDictionary& dictionary, Completeness completeness);

} // namespace qor::host
