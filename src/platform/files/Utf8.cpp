#include "platform/files/Utf8.h"

#include <algorithm>
#include <cstdint>

namespace platform {
namespace {

/// The length of the well-formed character at the start of the text, 0 if there is none.
std::size_t characterLength(std::string_view text) noexcept {
    const auto byte = [text](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
    const std::uint8_t first = byte(0);
    if (first < 0x80) {
        return 1;
    }
    const std::size_t length = first >= 0xF0 ? 4 : (first >= 0xE0 ? 3 : 2);
    if (first < 0xC2 || first > 0xF4 || text.size() < length) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0U) != 0x80U) {
            return 0;
        }
    }
    const std::uint8_t second = byte(1);
    const bool overlong = (first == 0xE0 && second < 0xA0) || (first == 0xF0 && second < 0x90);
    const bool surrogate = first == 0xED && second > 0x9F;
    const bool beyond = first == 0xF4 && second > 0x8F;
    return overlong || surrogate || beyond ? 0 : length;
}

} // namespace

std::size_t findBadUtf8(std::string_view text) noexcept {
    std::size_t i = 0;
    while (i < text.size()) {
        const std::size_t length = characterLength(text.substr(i));
        if (length == 0) {
            return i;
        }
        i += length;
    }
    return std::string_view::npos;
}

bool isXmlText(std::string_view text) noexcept {
    const auto forbidden = [](char c) {
        return static_cast<std::uint8_t>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r';
    };
    return findBadUtf8(text) == std::string_view::npos && std::none_of(text.begin(), text.end(), forbidden);
}

} // namespace platform
