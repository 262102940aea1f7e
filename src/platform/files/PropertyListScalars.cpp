#include "platform/files/PropertyListScalars.h"

#include "platform/core/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>

namespace platform {
namespace {

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool isInteger(std::string_view text) {
    std::int64_t value = 0;
    return parseInt64(trimmed(text), value);
}

bool isReal(std::string_view text) {
    double value = 0.0;
    return parseDouble(trimmed(text), value);
}

/// "2024-02-29T23:59:59Z". The parser counts seconds in 32 bits from 2001, which bounds the years.
bool isDate(std::string_view text) {
    constexpr std::string_view kShape = "dddd-dd-ddTdd:dd:ddZ";
    constexpr int kFirstYear = 1934;
    constexpr int kLastYear = 2068;
    const std::string_view date = trimmed(text);
    const auto fits = [](char c, char shape) { return shape == 'd' ? c >= '0' && c <= '9' : c == shape; };
    if (!std::equal(date.begin(), date.end(), kShape.begin(), kShape.end(), fits)) {
        return false;
    }
    const auto number = [date](std::size_t at, std::size_t length) {
        int value = 0;
        std::from_chars(date.data() + at, date.data() + at + length, value);
        return value;
    };
    const auto within = [](int value, int low, int high) { return value >= low && value <= high; };
    return within(number(0, 4), kFirstYear, kLastYear) && within(number(5, 2), 1, 12) &&
           within(number(8, 2), 1, 31) && number(11, 2) < 24 && number(14, 2) < 60 && number(17, 2) < 60;
}

bool isBase64(std::string_view text) {
    std::size_t letters = 0;
    std::size_t padding = 0;
    for (const char c : text) {
        if (c == ' ' || c == '\t' || c == '\r' || c == '\n') {
            continue;
        }
        const bool letter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
                            c == '+' || c == '/';
        if (c == '=') {
            ++padding;
        } else if (!letter || padding > 0) {
            return false;
        } else {
            ++letters;
        }
    }
    return padding <= 2 && (letters + padding) % 4 == 0;
}

bool isNothing(std::string_view text) {
    return trimmed(text).empty();
}

struct Scalar {
    std::string_view tag;
    ScalarCheck check;
    std::string_view words;
};

constexpr std::array<Scalar, 6> kScalars = {{
    {"integer", isInteger, "a whole number of 64 bits"},
    {"real", isReal, "a number"},
    {"date", isDate, "a date such as 2024-02-29T23:59:59Z"},
    {"data", isBase64, "base64"},
    {"true", isNothing, "empty"},
    {"false", isNothing, "empty"},
}};

const Scalar* find(std::string_view tag) noexcept {
    const auto* found = std::find_if(kScalars.begin(), kScalars.end(),
                                     [tag](const Scalar& scalar) { return scalar.tag == tag; });
    return found == kScalars.end() ? nullptr : found;
}

} // namespace

ScalarCheck scalarCheck(std::string_view tag) noexcept {
    const Scalar* scalar = find(tag);
    return scalar == nullptr ? nullptr : scalar->check;
}

std::string_view scalarWords(std::string_view tag) noexcept {
    const Scalar* scalar = find(tag);
    return scalar == nullptr ? std::string_view("known") : scalar->words;
}

bool isCharacterNumber(std::string_view name) noexcept {
    if (!name.starts_with('#')) {
        return false;
    }
    name.remove_prefix(1);
    const bool hexadecimal = name.starts_with('x');
    name.remove_prefix(hexadecimal ? 1 : 0);
    std::uint32_t code = 0;
    const auto [end, error] =
        std::from_chars(name.data(), name.data() + name.size(), code, hexadecimal ? 16 : 10);
    if (error != std::errc() || end != name.data() + name.size()) {
        return false;
    }
    const bool control = code < 0x20 && code != '\t' && code != '\n' && code != '\r';
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    return !control && !surrogate && code <= 0x10FFFF;
}

} // namespace platform
