// The numbers of the limiter's parameters.
#pragma once

#include "platform/audio/AudioTypes.h"
#include "platform/core/Core.h"

namespace qor {

/// Parameter addresses; the slots beyond them are inert.
enum : AUParameterAddress {
    kLimiterAttack = 0,
    kLimiterRelease = 1,
    kLimiterThreshold = 2,
    kLimiterKnee = 3,
    kLimiterTrim = 4,
    kLimiterMix = 5,
    kLimiterMode = 6,
    kLimiterBypass = 7,
    kLimiterAudition = 8,
    kLimiterInputFilterHP = 9,
    kLimiterInputFilterLP = 10,
    kLimiterFinalLimiter = 11,
};

} // namespace qor
