// The parameters as the host sees them: the limiter's own, and the host's bypass.
#pragma once

#include "hosts/clap/ClapHeaders.h"
#include "platform/core/RealTime.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qor::clap {

/// The ids of the limiter's parameters are their addresses; this one is apart, with room between.
inline constexpr clap_id kBypassId = 1000;

std::uint32_t parameterCount() noexcept;
/// False for an index out of range.
bool parameterInfo(std::uint32_t index, clap_param_info_t& info) noexcept;
bool isKnownParameter(clap_id id) noexcept;
/// What a host's value means: held to the range, whole where the parameter is stepped. Absent for an unknown
/// id and for what is not finite.
std::optional<float> acceptedValue(clap_id id, double value) noexcept QOR_NONBLOCKING_IN_RENDER;
/// Absent under the same conditions. The same in every locale.
std::optional<std::string> valueText(clap_id id, double value);
std::optional<double> textValue(clap_id id, std::string_view text);

} // namespace qor::clap
