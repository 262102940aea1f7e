// What a host asks for an audio unit.
#pragma once

#include "platform/audio/AUAudioUnit.h"
#include "platform/core/Result.h"

namespace platform {

class AUAudioUnitFactory {
public:
    AUAudioUnitFactory() = default;
    AUAudioUnitFactory(const AUAudioUnitFactory&) = delete;
    AUAudioUnitFactory& operator=(const AUAudioUnitFactory&) = delete;
    virtual ~AUAudioUnitFactory() = default;
    /// Main thread. Fails with the unit's error.
    virtual Result<Ref<AUAudioUnit>> createAudioUnit(const AudioComponentDescription& description) = 0;
};

} // namespace platform
