// A data table of place names; nothing in the limiter reads it.
#pragma once

#include <array>
#include <string>

namespace qor {

/// The capitals of the countries, in the alphabetical order of the countries, in UTF-8. Filled on first use,
/// from any thread; read-only.
const std::array<std::string, 197>& capitals();

} // namespace qor
