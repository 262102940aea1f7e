// The texts that the simple values of an XML property list may have.
#pragma once

#include <string_view>

namespace platform {

using ScalarCheck = bool (*)(std::string_view text);

/// The check for the text inside a tag "integer", "real", "date", "data", "true" or "false"; null for any
/// other tag.
ScalarCheck scalarCheck(std::string_view tag) noexcept;
/// What the check wants, for messages: "a whole number of 64 bits".
std::string_view scalarWords(std::string_view tag) noexcept;

/// "#65" or "#x41" of a character that XML may hold.
bool isCharacterNumber(std::string_view name) noexcept;

} // namespace platform
