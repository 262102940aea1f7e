#include "platform/core/ProcessInfo.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <random>
#include <unistd.h>

namespace platform {

namespace {

void appendHex(std::string& out, std::uint64_t value, int digits) {
    constexpr const char* kDigits = "0123456789ABCDEF";
    for (int digit = digits - 1; digit >= 0; --digit) {
        out += kDigits[(value >> (4 * digit)) & 0xFU];
    }
}

/// 16 random bytes with the marks of a random UUID (RFC 4122, version 4).
std::array<std::uint8_t, 16> randomUuid() {
    std::random_device source; // 32 bits a call
    std::array<std::uint8_t, 16> bytes{};
    for (std::size_t word = 0; word < bytes.size(); word += 4) {
        const std::uint32_t bits = source();
        for (std::size_t byte = 0; byte < 4; ++byte) {
            bytes[word + byte] = static_cast<std::uint8_t>(bits >> (8 * byte));
        }
    }
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0FU) | 0x40U);
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3FU) | 0x80U);
    return bytes;
}

} // namespace

std::string globallyUniqueString() {
    static std::atomic<std::uint64_t> counter{0};
    std::string result;
    int written = 0;
    for (const std::uint8_t byte : randomUuid()) {
        if (written == 4 || written == 6 || written == 8 || written == 10) {
            result += '-';
        }
        appendHex(result, byte, 2);
        ++written;
    }
    result += '-';
    appendHex(result, static_cast<std::uint64_t>(::getpid()), 8);
    result += '-';
    appendHex(result, counter.fetch_add(1, std::memory_order_relaxed), 16);
    return result;
}

} // namespace platform
