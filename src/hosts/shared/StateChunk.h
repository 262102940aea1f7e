// What a host saves of the plug-in, and presets: property lists that the unit's own reader restores in full.
#pragma once

#include "hosts/shared/PropertyListChecker.h"
#include "hosts/shared/UnitHost.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>

namespace qor::host {

/// One value for each parameter, by address.
using ParameterValues = std::array<float, kParameterCount>;

ParameterValues defaultParameterValues() noexcept;
/// The values of a unit as they stand, held to their ranges. Any thread.
ParameterValues parameterValues(const UnitHost& host) noexcept;

/// The preset format with one group per parameter, "group 00" to "group 11", each with a single "param":
/// the shape in which the reader takes every parameter.
PropertyListDictionary stateDictionary(const ParameterValues& values, const std::string& name);

/// The same as XML bytes. Fails for a name that XML can't hold.
Result<Data> stateBytes(const ParameterValues& values, const std::string& name);

/// What a session keeps of the unit. Main thread.
Data saveState(const UnitHost& host);
/// Restores what `saveState` gave, bit for bit. Anything else, or a damaged one, is refused with the reason,
/// and the unit keeps what it had. Main thread.
Result<void> restoreState(UnitHost& host, std::span<const std::uint8_t> bytes);

/// Gives a checked state or preset to the unit. Main thread.
void applyState(UnitHost& host, const CheckedState& state);

} // namespace qor::host
