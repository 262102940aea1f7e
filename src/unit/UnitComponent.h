// By what the platform and the hosts know the unit.
#pragma once

#include "platform/audio/AudioComponent.h"

namespace qor {

inline constexpr platform::AudioComponentDescription kQORLimiterComponent{
    platform::kAudioUnitType_Effect, platform::fourCharacterCode("qlm1"), platform::fourCharacterCode("QRVK"),
    0, 0};

} // namespace qor
