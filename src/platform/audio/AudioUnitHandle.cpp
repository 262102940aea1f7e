#include "platform/audio/AudioUnitHandle.h"

namespace platform {

OSStatus AudioUnitSetParameter(AudioUnit unit, AudioUnitParameterID id, AudioUnitScope scope,
                               AudioUnitElement element, AudioUnitParameterValue value,
                               std::uint32_t offset) noexcept {
    return unit == nullptr ? kAudio_ParamError : unit->setParameter(id, scope, element, value, offset);
}

OSStatus AudioUnitGetParameter(AudioUnit unit, AudioUnitParameterID id, AudioUnitScope scope,
                               AudioUnitElement element, AudioUnitParameterValue& value) noexcept {
    return unit == nullptr ? kAudio_ParamError : unit->getParameter(id, scope, element, value);
}

} // namespace platform
