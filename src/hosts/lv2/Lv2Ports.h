// The ports of the LV2 plug-in, shared by its code and by the generator of its description.
#pragma once

#include "kernel/ParameterTable.h"

#include <array>
#include <cstdint>

namespace qor::lv2 {

inline constexpr const char* kPluginUri = "urn:qor:limiter";
inline constexpr const char* kUiUri = "urn:qor:limiter#ui";

// In the order of their indices. A session keeps values by symbol, so symbols never change; indices may not
// move within one minor version either.
inline constexpr std::uint32_t kInputLeft = 0;
inline constexpr std::uint32_t kInputRight = 1;
inline constexpr std::uint32_t kOutputLeft = 2;
inline constexpr std::uint32_t kOutputRight = 3;
inline constexpr std::uint32_t kFirstParameter = 4;
inline constexpr std::uint32_t kEnabled = kFirstParameter + kParameterCount;
inline constexpr std::uint32_t kFirstMeter = kEnabled + 1;

struct MeterPort {
    const char* symbol;
    const char* name;
    float rest; // shown before the first block
};
inline constexpr std::array<MeterPort, 4> kMeterPorts{{
    {"gain_1", "Gain 1", 1.0F},
    {"gain_2", "Gain 2", 1.0F},
    {"peak_1", "Peak 1", 0.0F},
    {"peak_2", "Peak 2", 0.0F},
}};
inline constexpr std::uint32_t kPortCount = kFirstMeter + static_cast<std::uint32_t>(kMeterPorts.size());

} // namespace qor::lv2
