#include "hosts/cli/ParameterSettings.h"

#include <cmath>
#include <optional>
#include <string>

namespace qor::cli {

namespace {

constexpr std::int64_t kHighestRawAddress = 15;

std::string rangeText(const ParameterRow& row) {
    return "a value from " + text(row.minimum) + " to " + text(row.maximum);
}

// `wanted` says what to give instead, as in "a finite number".
Result<float> parseFinite(std::string_view source, const std::string& wanted) {
    float value = 0.0F;
    if (parseFloat(source, value)) {
        if (std::isfinite(value)) {
            return value;
        }
        return wrongUsage(shown(source) + " is not finite. Give " + wanted + ".");
    }
    double wide = 0.0;
    if (parseDouble(source, wide)) {
        return wrongUsage(shown(source) + " does not fit a 32-bit float. Give " + wanted + ".");
    }
    return wrongUsage(shown(source) + " is no number. Give " + wanted + ".");
}

// The value of a mode or switch that is written by its name.
std::optional<float> valueNamed(const ParameterRow& row, std::string_view source) {
    float number = 0.0F;
    return parseFloat(source, number) ? std::nullopt : parameterValueFromText(row, source);
}

struct Assignment {
    std::string_view name;
    std::string_view value;
};

Result<Assignment> splitAssignment(std::string_view argument, const char* form) {
    const std::size_t place = argument.find('=');
    if (place == std::string_view::npos || place == 0) {
        return wrongUsage(shown(argument) + " is not of the form " + form + ".");
    }
    return Assignment{argument.substr(0, place), argument.substr(place + 1)};
}

} // namespace

Result<float> parseValue(const ParameterRow& row, std::string_view source) {
    if (const std::optional<float> named = valueNamed(row, source); named) {
        return *named;
    }
    const std::string wanted = std::string(row.shortName) + " " + rangeText(row);
    Result<float> value = parseFinite(source, wanted);
    if (value && (value.value() < row.minimum || value.value() > row.maximum)) {
        return wrongUsage(shown(source) + " is outside the range. Give " + wanted + ".");
    }
    return value;
}

Result<ParameterSetting> parseSetting(std::string_view argument) {
    const Result<Assignment> parts = splitAssignment(argument, "NAME=VALUE, as in threshold=0.5");
    if (!parts) {
        return parts.error();
    }
    const Result<const ParameterRow*> row = findParameter(parts.value().name);
    if (!row) {
        return row.error();
    }
    const Result<float> value = parseValue(*row.value(), parts.value().value);
    if (!value) {
        return value.error();
    }
    return ParameterSetting{row.value()->address, value.value(), false};
}

Result<ParameterSetting> parseRawSetting(std::string_view argument) {
    const Result<Assignment> parts = splitAssignment(argument, "ADDRESS=VALUE, as in 6=1.9");
    if (!parts) {
        return parts.error();
    }
    std::int64_t address = 0;
    if (!parseInt64(parts.value().name, address) || address < 0 || address > kHighestRawAddress) {
        return wrongUsage(shown(parts.value().name) +
                          " is no raw address. Give a whole number from 0 to 15.");
    }
    const Result<float> value = parseFinite(parts.value().value, "a finite number");
    if (!value) {
        return value.error();
    }
    return ParameterSetting{static_cast<AUParameterAddress>(address), value.value(), true};
}

} // namespace qor::cli
