// The plain handle of an audio unit: parameters by number, without the object model.
#pragma once

#include "platform/audio/AudioTypes.h"

namespace platform {

using AudioUnitParameterID = std::uint32_t;
using AudioUnitScope = std::uint32_t;
using AudioUnitElement = std::uint32_t;
using AudioUnitParameterValue = float;

inline constexpr AudioUnitScope kAudioUnitScope_Global = 0;
inline constexpr AudioUnitScope kAudioUnitScope_Input = 1;
inline constexpr AudioUnitScope kAudioUnitScope_Output = 2;

inline constexpr OSStatus kAudioUnitErr_Initialized = -10849;
inline constexpr OSStatus kAudioUnitErr_InvalidElement = -10877;
inline constexpr OSStatus kAudioUnitErr_InvalidScope = -10866;
inline constexpr OSStatus kAudioUnitErr_InvalidParameterValue = -66743;
inline constexpr OSStatus kAudio_ParamError = -50;

inline constexpr AudioUnitParameterID kLimiterParam_AttackTime = 0; // seconds
inline constexpr AudioUnitParameterID kLimiterParam_DecayTime = 1;  // seconds
inline constexpr AudioUnitParameterID kLimiterParam_PreGain = 2;    // decibels

/// What a unit offers through its plain handle. Safe on any thread, the render thread included.
class AudioUnitHandle {
public:
    AudioUnitHandle() = default;
    AudioUnitHandle(const AudioUnitHandle&) = delete;
    AudioUnitHandle& operator=(const AudioUnitHandle&) = delete;

    /// `offset` in frames from the start of the next render call; a unit may apply the value at that call's
    /// start.
    virtual OSStatus setParameter(AudioUnitParameterID id, AudioUnitScope scope, AudioUnitElement element,
                                  AudioUnitParameterValue value, std::uint32_t offset) noexcept = 0;
    virtual OSStatus getParameter(AudioUnitParameterID id, AudioUnitScope scope, AudioUnitElement element,
                                  AudioUnitParameterValue& value) noexcept = 0;

protected:
    ~AudioUnitHandle() = default;
};

/// Not owned: it lives as long as its unit. Null if absent.
using AudioUnit = AudioUnitHandle*;

/// Sets one parameter. An absent unit gives kAudio_ParamError; otherwise the unit's own answer.
OSStatus AudioUnitSetParameter(AudioUnit unit, AudioUnitParameterID id, AudioUnitScope scope,
                               AudioUnitElement element, AudioUnitParameterValue value,
                               std::uint32_t offset) noexcept;
OSStatus AudioUnitGetParameter(AudioUnit unit, AudioUnitParameterID id, AudioUnitScope scope,
                               AudioUnitElement element, AudioUnitParameterValue& value) noexcept;

} // namespace platform
