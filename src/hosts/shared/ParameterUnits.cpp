#include "hosts/shared/ParameterUnits.h"

#include <cmath>

namespace qor::host {

namespace {

constexpr double kTrimRange = 40.0; // decibels from end to end, 0 dB in the middle

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlank = " \t";
    const std::size_t first = text.find_first_not_of(kBlank);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(kBlank) - first + 1);
}

/// The number before a unit; absent if the text doesn't end in it.
std::optional<double> numberBefore(std::string_view text, std::string_view unit) {
    if (!text.ends_with(unit)) {
        return std::nullopt;
    }
    const std::string_view digits = trimmed(text.substr(0, text.size() - unit.size()));
    double value = 0.0;
    const bool read = parseDouble(digits.starts_with('+') ? digits.substr(1) : digits, value);
    return read && std::isfinite(value) ? std::optional<double>(value) : std::nullopt;
}

} // namespace

std::string textWithUnit(const ParameterRow& row, float value) {
    if (row.isStepped()) {
        return parameterValueText(row, value);
    }
    std::string shown = fixedText(static_cast<double>(value) * 100.0, 1) + " %";
    if (row.address == kLimiterTrim) {
        const double decibels = (static_cast<double>(value) - 0.5) * kTrimRange;
        shown += " (" + std::string(decibels < 0.0 ? "" : "+") + fixedText(decibels, 1) + " dB)";
    }
    return shown;
}

std::string labelledText(const ParameterRow& row, float value) {
    return std::string(row.hostName) + "  " + textWithUnit(row, value);
}

std::optional<float> valueFromTypedText(const ParameterRow& row, std::string_view typed) {
    const std::string_view text = trimmed(typed);
    if (row.isStepped()) {
        const auto value = parameterValueFromText(row, text);
        return value ? std::optional<float>(row.clamped(*value)) : std::nullopt;
    }
    if (row.address == kLimiterTrim) {
        for (const char* unit : {"dB", "db", "DB"}) {
            if (const auto decibels = numberBefore(text, unit)) {
                return row.clamped(static_cast<float>(*decibels / kTrimRange + 0.5));
            }
        }
    }
    auto percent = numberBefore(text, "%");
    if (!percent) {
        percent = numberBefore(text, "");
    }
    return percent ? std::optional<float>(row.clamped(static_cast<float>(*percent / 100.0))) : std::nullopt;
}

} // namespace qor::host
