// Included before the framework's sources: they read saved numbers by the process's locale, and would take
// "0.35" for 0 where a comma stands before the fraction.
#pragma once

#include "platform/core/Text.h"

#include <cstdlib>

namespace std { // NOLINT(cert-dcl58-cpp): the sources call std::atof, which the macro below renames

inline double qorReadNumber(const char* source) {
    double value = 0.0;
    return platform::parseDouble(source, value) ? value : 0.0;
}

} // namespace std

#define atof qorReadNumber
