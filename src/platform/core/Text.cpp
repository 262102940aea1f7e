#include "platform/core/Text.h"

#include <array>
#include <charconv>
#include <cmath>

namespace platform {

namespace {

// Digits without an exponent where people would write the number so; the shortest that reads back in both
// forms.
template <class Float>
std::string shortest(Float value) {
    std::array<char, 64> buffer{};
    char* const end = buffer.data() + buffer.size();
    const auto magnitude = static_cast<double>(std::abs(value));
    if (!std::isfinite(value) || (magnitude != 0.0 && (magnitude < 1e-4 || magnitude >= 1e16))) {
        return {buffer.data(), std::to_chars(buffer.data(), end, value).ptr};
    }
    std::string result(buffer.data(), std::to_chars(buffer.data(), end, value, std::chars_format::fixed).ptr);
    if (result.find('.') == std::string::npos) {
        result += ".0";
    }
    return result;
}

template <class Integer>
std::string decimal(Integer value) {
    std::array<char, 24> buffer{};
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr};
}

template <class Number>
bool parseWhole(std::string_view source, Number& value) {
    if (source.size() > 1 && source.front() == '+' && source[1] != '-' && source[1] != '+') {
        source.remove_prefix(1);
    }
    const char* end = source.data() + source.size();
    const auto [rest, error] = std::from_chars(source.data(), end, value);
    return error == std::errc() && rest == end && !source.empty();
}

// Unicode code points of the Mac Roman bytes 0x80 to 0xFF.
constexpr std::array<char16_t, 128> kMacRomanUpper = {
    0x00C4, 0x00C5, 0x00C7, 0x00C9, 0x00D1, 0x00D6, 0x00DC, 0x00E1, 0x00E0, 0x00E2, 0x00E4, 0x00E3, 0x00E5,
    0x00E7, 0x00E9, 0x00E8, 0x00EA, 0x00EB, 0x00ED, 0x00EC, 0x00EE, 0x00EF, 0x00F1, 0x00F3, 0x00F2, 0x00F4,
    0x00F6, 0x00F5, 0x00FA, 0x00F9, 0x00FB, 0x00FC, 0x2020, 0x00B0, 0x00A2, 0x00A3, 0x00A7, 0x2022, 0x00B6,
    0x00DF, 0x00AE, 0x00A9, 0x2122, 0x00B4, 0x00A8, 0x2260, 0x00C6, 0x00D8, 0x221E, 0x00B1, 0x2264, 0x2265,
    0x00A5, 0x00B5, 0x2202, 0x2211, 0x220F, 0x03C0, 0x222B, 0x00AA, 0x00BA, 0x03A9, 0x00E6, 0x00F8, 0x00BF,
    0x00A1, 0x00AC, 0x221A, 0x0192, 0x2248, 0x2206, 0x00AB, 0x00BB, 0x2026, 0x00A0, 0x00C0, 0x00C3, 0x00D5,
    0x0152, 0x0153, 0x2013, 0x2014, 0x201C, 0x201D, 0x2018, 0x2019, 0x00F7, 0x25CA, 0x00FF, 0x0178, 0x2044,
    0x20AC, 0x2039, 0x203A, 0xFB01, 0xFB02, 0x2021, 0x00B7, 0x201A, 0x201E, 0x2030, 0x00C2, 0x00CA, 0x00C1,
    0x00CB, 0x00C8, 0x00CD, 0x00CE, 0x00CF, 0x00CC, 0x00D3, 0x00D4, 0xF8FF, 0x00D2, 0x00DA, 0x00DB, 0x00D9,
    0x0131, 0x02C6, 0x02DC, 0x00AF, 0x02D8, 0x02D9, 0x02DA, 0x00B8, 0x02DD, 0x02DB, 0x02C7};

void appendUtf8(std::string& out, char16_t code) {
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += static_cast<char>(0xC0 | (code >> 6));
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (code >> 12));
        out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    }
}

} // namespace

std::string text(double value) {
    return shortest(value);
}
std::string text(float value) {
    return shortest(value);
}
std::string text(std::int64_t value) {
    return decimal(value);
}
std::string text(std::uint64_t value) {
    return decimal(value);
}

std::string fixedText(double value, int digits) {
    std::array<char, 400>
        buffer{}; // 309 digits before the point and what a caller may reasonably ask behind it
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, digits)
            .ptr;
    return {buffer.data(), end};
}

bool parseDouble(std::string_view source, double& value) {
    return parseWhole(source, value);
}
bool parseFloat(std::string_view source, float& value) {
    return parseWhole(source, value);
}
bool parseInt64(std::string_view source, std::int64_t& value) {
    return parseWhole(source, value);
}

std::string decodeMacRoman(std::string_view bytes) {
    std::string result;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        appendUtf8(result, byte < 0x80 ? byte : kMacRomanUpper[byte - 0x80]);
    }
    return result;
}

} // namespace platform
