// Parameter values as people write them.
#pragma once

#include "hosts/cli/ParameterNames.h"

#include <string_view>

namespace qor::cli {

struct ParameterSetting {
    AUParameterAddress address = 0;
    float value = 0.0F;
    bool raw = false; // goes to the kernel as it is, past the tree and its ranges
};

/// A finite number in the parameter's range, or the name of a value ("linked").
Result<float> parseValue(const ParameterRow& row, std::string_view source);

/// "NAME=VALUE".
Result<ParameterSetting> parseSetting(std::string_view argument);
/// "ADDRESS=VALUE" with an address from 0 to 15 and any finite value.
Result<ParameterSetting> parseRawSetting(std::string_view argument);

} // namespace qor::cli
