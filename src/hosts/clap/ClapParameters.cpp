#include "hosts/clap/ClapParameters.h"

#include "hosts/clap/ClapMoreExtensions.h"

#include "kernel/ParameterTable.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace qor::clap {

namespace {

/// The host's bypass in the shape of the table's rows. It has no address: nothing of it reaches the unit.
constexpr ParameterRow kBypassRow{kBypassId,
                                  "kHostBypass",
                                  "Plug-in Bypass",
                                  0.0F,
                                  1.0F,
                                  0.0F,
                                  AudioUnitParameterUnit::Boolean,
                                  "hostbypass",
                                  "Plug-in Bypass",
                                  "host_bypass",
                                  0,
                                  parameterNames::kSwitch,
                                  "Lets the input through, crossfaded over 10 ms."};

const ParameterRow* rowOf(clap_id id) noexcept {
    return id == kBypassId ? &kBypassRow : parameterRow(id);
}

template <std::size_t Size>
void copyText(char (&target)[Size], std::string_view text) noexcept {
    const std::size_t length = std::min(text.size(), Size - 1);
    std::memcpy(target, text.data(), length);
    target[length] = '\0';
}

std::string_view trimmed(std::string_view text) noexcept {
    constexpr std::string_view kBlank = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlank);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kBlank) - first + 1);
}

} // namespace

std::uint32_t parameterCount() noexcept {
    return static_cast<std::uint32_t>(kParameterCount + 1);
}

bool parameterInfo(std::uint32_t index, clap_param_info_t& info) noexcept {
    if (index >= parameterCount()) {
        return false;
    }
    const ParameterRow& row = index < kParameterCount ? kParameterTable[index] : kBypassRow;
    info = {};
    info.id = static_cast<clap_id>(row.address);
    info.flags = CLAP_PARAM_IS_AUTOMATABLE;
    if (row.isStepped()) {
        info.flags |= CLAP_PARAM_IS_STEPPED;
    }
    if (row.valueNames.size() > 2) {
        info.flags |= kParamIsEnum;
    }
    if (info.id == kBypassId) {
        info.flags |= CLAP_PARAM_IS_BYPASS;
    }
    copyText(info.name, row.hostName);
    info.min_value = static_cast<double>(row.minimum);
    info.max_value = static_cast<double>(row.maximum);
    info.default_value = static_cast<double>(row.defaultValue);
    return true;
}

bool isKnownParameter(clap_id id) noexcept {
    return rowOf(id) != nullptr;
}

std::optional<float> acceptedValue(clap_id id, double value) noexcept {
    const ParameterRow* const row = rowOf(id);
    if (row == nullptr || !std::isfinite(value)) {
        return std::nullopt;
    }
    const double held =
        std::clamp(value, static_cast<double>(row->minimum), static_cast<double>(row->maximum));
    return static_cast<float>(row->isStepped() ? std::trunc(held) : held);
}

std::optional<std::string> valueText(clap_id id, double value) {
    const std::optional<float> accepted = acceptedValue(id, value);
    return accepted ? std::optional(parameterValueText(*rowOf(id), *accepted)) : std::nullopt;
}

std::optional<double> textValue(clap_id id, std::string_view text) {
    const ParameterRow* const row = rowOf(id);
    if (row == nullptr) {
        return std::nullopt;
    }
    const std::optional<float> value = parameterValueFromText(*row, trimmed(text));
    const std::optional<float> accepted =
        value ? acceptedValue(id, static_cast<double>(*value)) : std::nullopt;
    return accepted ? std::optional(static_cast<double>(*accepted)) : std::nullopt;
}

} // namespace qor::clap
