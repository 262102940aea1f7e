// Values as the editor shows them, with their units.
#pragma once

#include "kernel/ParameterTable.h"

#include <optional>
#include <string>
#include <string_view>

namespace qor::host {

/// A value's name for stepped parameters; otherwise the per cent that the knobs show, with decibels where
/// there is a fixed law: "50.0 % (+0.0 dB)".
std::string textWithUnit(const ParameterRow& row, float value);
/// The same as a line: "Trim  50.0 % (+0.0 dB)".
std::string labelledText(const ParameterRow& row, float value);
/// What a person types: a value's name, a number of per cent (the sign may be left out), or decibels for the
/// trim ("-3 dB"). Held to the range; absent for anything else.
std::optional<float> valueFromTypedText(const ParameterRow& row, std::string_view typed);

} // namespace qor::host
