// The look at a property list's text that comes before it is parsed.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// How much a property list may ask of its reader.
struct PropertyListLimits {
    std::size_t bytes = std::size_t{64} << 20U;
    std::size_t depth = 128; // nested arrays and dictionaries
};

/// Says what is wrong with the text of an XML property list, with its line, or nothing. The parser behind it
/// reads damaged numbers and dates as 0, drops a key without a value and recurses without bound when it
/// frees; so structure, depth, numbers, dates, base64, character codes and encoding are checked here. A
/// document type with declarations of its own is refused: with it goes every entity that expands.
std::optional<std::string> findPropertyListFault(std::string_view xml, const PropertyListLimits& limits);

} // namespace platform
