#include "Common/Extensions.h"

#include "platform/core/ProcessInfo.h"

#include <bit>

namespace qor {

namespace {

void printOnMainQueue(std::string_view text) {
    dispatchAsyncMain([line = std::string(text)] { print(line); });
}

/// The platform's conversion from big-endian to the processor's own order.
constexpr std::uint32_t swapBigToHost(std::uint32_t value) noexcept {
    if constexpr (std::endian::native == std::endian::big) {
        return value;
    } else {
        return (value >> 24) | ((value >> 8) & 0xFF00U) | ((value << 8) & 0xFF0000U) | (value << 24);
    }
}

std::optional<std::string> decodeAsMacRoman(std::string_view bytes) {
    return decodeMacRoman(bytes);
}

} // namespace

void debugprint(std::string_view text) {
    printOnMainQueue(text);
}

void safeprint(std::string_view text) {
    printOnMainQueue(text);
}

std::string stringValue(std::uint32_t value) {
    return stringValue(value, &decodeAsMacRoman);
}

std::string stringValue(std::uint32_t value, TextDecoder decode) {
    const std::uint32_t swapped = swapBigToHost(value);
    std::string bytes;
    for (const unsigned shift : {0U, 8U, 16U, 24U}) {
        bytes += static_cast<char>((swapped >> shift) & 0xFFU);
    }
    return decode(bytes).value_or("FAIL");
}

std::string uniqueName(const std::optional<std::string>& withPrefix) {
    const std::string unique = globallyUniqueString();
    return withPrefix ? *withPrefix + "-" + unique : unique;
}

} // namespace qor
