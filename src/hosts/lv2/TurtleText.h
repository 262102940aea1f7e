// Literals of the Turtle language.
#pragma once

#include "platform/core/Text.h"

#include <string>
#include <string_view>

namespace qor::lv2 {

/// A text in quotes, with what would end it early escaped.
inline std::string quoted(std::string_view source) {
    std::string result = "\"";
    for (const char c : source) {
        if (c == '"' || c == '\\') {
            result += '\\';
        }
        if (c == '\n') {
            result += "\\n";
        } else {
            result += c;
        }
    }
    return result + "\"";
}

/// A number as Turtle reads it, with the digits that give the same float back.
inline std::string number(float value) {
    return platform::text(value);
}

} // namespace qor::lv2
