// What people may call a parameter on the command line.
#pragma once

#include "hosts/cli/Failure.h"
#include "kernel/ParameterTable.h"

#include <cstddef>
#include <string_view>

namespace qor::cli {

/// The row that a name means: an identifier, a short name or an address from 0 to 11; letters in any case. An
/// unknown name is refused with the closest one.
Result<const ParameterRow*> findParameter(std::string_view name);

/// The smallest number of letters to insert, delete or replace that makes one text of the other.
std::size_t editDistance(std::string_view a, std::string_view b);

} // namespace qor::cli
