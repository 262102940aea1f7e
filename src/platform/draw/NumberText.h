// Numbers as they stand in descriptions of drawings.
#pragma once

#include "platform/core/Text.h"

#include <string>

namespace platform {

/// Appends a space and the number, without a fraction where it has none.
inline void appendNumber(std::string& line, double number) {
    std::string digits = text(number);
    if (digits.ends_with(".0")) {
        digits.resize(digits.size() - 2);
    }
    line += ' ';
    line += digits;
}

} // namespace platform
