// Number and code texts that never depend on the process's locale.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

/// The shortest text that reads back as the same value, with ".0" where there is no fraction: "44100.0",
/// "0.1", "1e+20", "nan", "inf".
std::string text(double value);
std::string text(float value);
std::string text(std::int64_t value);
std::string text(std::uint64_t value);
inline std::string text(int value) {
    return text(static_cast<std::int64_t>(value));
}
inline std::string text(unsigned value) {
    return text(static_cast<std::uint64_t>(value));
}
/// "true" or "false".
inline std::string text(bool value) {
    return value ? "true" : "false";
}

/// The value with a fixed number of digits behind the point, halves to even on the exact value, as "%.*f"
/// gives it in the "C" locale.
std::string fixedText(double value, int digits);

/// The whole text as a number, with an optional sign; false if it is anything else. Accepts what `text`
/// writes.
bool parseDouble(std::string_view source, double& value);
bool parseFloat(std::string_view source, float& value);
bool parseInt64(std::string_view source, std::int64_t& value);

/// Bytes in the Mac Roman encoding as UTF-8.
std::string decodeMacRoman(std::string_view bytes);

} // namespace platform
