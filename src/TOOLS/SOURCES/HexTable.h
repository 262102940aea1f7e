// Two upper-case hexadecimal digits for each byte value.
#pragma once

#include <array>
#include <cstddef>

namespace RVK {

/// 512 characters and an ending zero; the digits of value n are at 2 * n and 2 * n + 1. One for each unit
/// that uses it.
static constexpr std::array<char, 513> hextable = [] {
    constexpr const char* kDigits = "0123456789ABCDEF";
    std::array<char, 513> table{};
    for (std::size_t value = 0; value < 256; ++value) {
        table[2 * value] = kDigits[value >> 4];
        table[2 * value + 1] = kDigits[value & 0xFU];
    }
    return table;
}();

} // namespace RVK
