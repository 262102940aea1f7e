// Checking texts before they go into XML or come out of it.
#pragma once

#include <cstddef>
#include <string_view>

namespace platform {

/// The place of the first byte that is not part of a well-formed UTF-8 character, or `npos`.
std::size_t findBadUtf8(std::string_view text) noexcept;

/// Whether XML can hold the text: well-formed UTF-8 without control characters other than tab, line feed and
/// carriage return.
bool isXmlText(std::string_view text) noexcept;

} // namespace platform
