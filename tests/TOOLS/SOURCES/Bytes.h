// Strings of any bytes, and the bytes of strings.
#pragma once

#include "TOOLS/SOURCES/CString.h"

#include <cstring>
#include <string>
#include <string_view>

namespace test {

inline constexpr char* kAbsent = nullptr;

/// Fills a string with bytes that may hold zeros.
inline void fill(RVK::CString& string, std::string_view bytes) {
    string.reassign(static_cast<int>(bytes.size()));
    std::memcpy(string.data, bytes.data(), bytes.size());
}

inline std::string bytesOf(const RVK::CString& string) {
    return {string.data, static_cast<std::size_t>(string.length)};
}

/// A text that the compiler doesn't know to be a literal: `char*`, not `const char*`.
class Mutable {
public:
    explicit Mutable(std::string text) : text_(std::move(text)) {}
    operator char*() { return text_.data(); } // NOLINT: stands for the pointer

private:
    std::string text_;
};

} // namespace test
