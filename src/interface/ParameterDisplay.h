// Which field of the panel shows which parameter.
#pragma once

#include "interface/QORLimiterViewBase.h"

#include <cstdint>

namespace qor {

/// Stores a parameter's value, widened, where the panel draws it from: the six knobs take it as it is, the
/// two buttons are on at exactly 1.0. Other addresses change nothing.
void showParameter(QORLimiterViewBase& base, std::int64_t address, float value);

} // namespace qor
