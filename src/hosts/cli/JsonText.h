// Texts inside JSON.
#pragma once

#include <string>
#include <string_view>

namespace qor::cli {

/// A text in quotes, with JSON's escapes.
inline std::string jsonText(std::string_view source) {
    constexpr std::string_view kHex = "0123456789abcdef";
    std::string result = "\"";
    for (const char c : source) {
        const auto code = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            result += '\\';
            result += c;
        } else if (code < 0x20) {
            result += "\\u00";
            result += kHex[code >> 4];
            result += kHex[code & 15U];
        } else {
            result += c;
        }
    }
    return result + '"';
}

} // namespace qor::cli
