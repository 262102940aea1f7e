#include "kernel/ParameterTable.h"

#include <algorithm>
#include <cmath>

namespace qor {

namespace {

char lower(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool sameLetters(std::string_view a, std::string_view b) noexcept {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lower(x) == lower(y); });
}

constexpr bool rowsStandAtTheirAddresses() {
    for (std::size_t i = 0; i < kParameterCount; ++i) {
        if (kParameterTable[i].address != i) {
            return false;
        }
    }
    return true;
}
static_assert(rowsStandAtTheirAddresses());

} // namespace

float ParameterRow::clamped(float value) const noexcept {
    if (std::isnan(value)) {
        return defaultValue;
    }
    return std::clamp(value, minimum, maximum);
}

const ParameterRow* parameterRow(AUParameterAddress address) noexcept {
    return address < kParameterCount ? &kParameterTable[address] : nullptr;
}

const ParameterRow* parameterRowNamed(std::string_view name) noexcept {
    for (const ParameterRow& row : kParameterTable) {
        if (sameLetters(name, row.identifier) || sameLetters(name, row.shortName)) {
            return &row;
        }
    }
    std::int64_t address = 0;
    if (parseInt64(name, address) && address >= 0) {
        return parameterRow(static_cast<AUParameterAddress>(address));
    }
    return nullptr;
}

std::string parameterValueText(const ParameterRow& row, float value) {
    if (row.isStepped() && std::isfinite(value)) {
        const auto last = static_cast<float>(row.valueNames.size() - 1);
        return row.valueNames[static_cast<std::size_t>(std::clamp(value, 0.0F, last))];
    }
    return fixedText(static_cast<double>(value), row.digits);
}

std::optional<float> parameterValueFromText(const ParameterRow& row, std::string_view source) {
    for (std::size_t i = 0; i < row.valueNames.size(); ++i) {
        if (sameLetters(source, row.valueNames[i])) {
            return static_cast<float>(i);
        }
    }
    double value = 0.0;
    if (!parseDouble(source, value) || !std::isfinite(static_cast<float>(value))) {
        return std::nullopt;
    }
    return static_cast<float>(value);
}

} // namespace qor
