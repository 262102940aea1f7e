// Plain audio data as it passes between host, unit and kernel: buffers, time stamps, render events,
// callbacks.
#pragma once

#include "platform/core/Block.h"

#include <cstddef>
#include <cstdint>
#include <new>

namespace platform {

using OSStatus = std::int32_t;
inline constexpr OSStatus noErr = 0;
inline constexpr OSStatus kAudioUnitErr_InvalidParameter = -10878;
inline constexpr OSStatus kAudioUnitErr_NoConnection = -10876;
inline constexpr OSStatus kAudioUnitErr_FailedInitialization = -10875;
inline constexpr OSStatus kAudioUnitErr_TooManyFramesToProcess = -10874;
inline constexpr OSStatus kAudioUnitErr_FormatNotSupported = -10868;
inline constexpr OSStatus kAudioUnitErr_Uninitialized = -10867;
inline constexpr OSStatus kAudioUnitErr_InvalidFilePath = -66742;

/// One channel's (or interleaved channels') samples. `mData` is not owned.
struct AudioBuffer {
    std::uint32_t mNumberChannels = 0;
    std::uint32_t mDataByteSize = 0;
    void* mData = nullptr;
};

/// A list of buffers. The array goes on behind the structure: a list of n buffers lies in memory for n of
/// them (`AudioBufferListStorage` makes such memory).
struct AudioBufferList {
    std::uint32_t mNumberBuffers = 0;
    AudioBuffer mBuffers[1];
};

/// An owned list of exactly N buffers.
template <unsigned N>
class AudioBufferListStorage {
    static_assert(N >= 1);
    alignas(AudioBufferList) std::byte memory_[sizeof(AudioBufferList) + (N - 1) * sizeof(AudioBuffer)];

public:
    AudioBufferList& list = *new (memory_) AudioBufferList;

    AudioBufferListStorage() noexcept {
        list.mNumberBuffers = N;
        for (unsigned i = 1; i < N; ++i) {
            new (list.mBuffers + i) AudioBuffer;
        }
    }
    AudioBufferListStorage(const AudioBufferListStorage&) = delete;
    AudioBufferListStorage& operator=(const AudioBufferListStorage&) = delete;
};

struct AudioTimeStamp {
    double mSampleTime = 0.0; // in frames
    std::uint64_t mHostTime = 0;
    double mRateScalar = 0.0;
    std::uint64_t mWordClockTime = 0;
    std::uint32_t mFlags = 0; // bit 0: mSampleTime is valid
    std::uint32_t mReserved = 0;
};
inline constexpr std::uint32_t kAudioTimeStampSampleTimeValid = 1;

using AudioUnitRenderActionFlags = std::uint32_t;
using AUEventSampleTime = std::int64_t;
using AUParameterAddress = std::uint64_t;
using AUValue = float;

enum AURenderEventType : std::uint8_t {
    AURenderEventParameter = 1,
    AURenderEventParameterRamp = 2,
    AURenderEventMIDI = 8,
    AURenderEventMIDISysEx = 9,
};

union AURenderEvent;

/// The common head of all events; events form a list in the order of their times.
struct AURenderEventHeader {
    AURenderEvent* next;
    AUEventSampleTime eventSampleTime; // absolute, in frames, on the scale of AudioTimeStamp::mSampleTime
    std::uint8_t eventType;
    std::uint8_t reserved;
};

struct AUParameterEvent {
    AURenderEvent* next;
    AUEventSampleTime eventSampleTime;
    std::uint8_t eventType;
    std::uint8_t reserved[3];
    std::uint32_t rampDurationSampleFrames;
    AUParameterAddress parameterAddress;
    AUValue value;
};

struct AUMIDIEvent {
    AURenderEvent* next;
    AUEventSampleTime eventSampleTime;
    std::uint8_t eventType;
    std::uint8_t reserved;
    std::uint16_t length; // bytes in use; a system-exclusive event goes on behind the structure
    std::uint8_t cable;
    std::uint8_t data[3];
};

union AURenderEvent {
    AURenderEventHeader head;
    AUParameterEvent parameter;
    AUMIDIEvent MIDI;
};

/// Event time, cable, byte count, bytes.
using AUMIDIOutputEventBlock = Block<OSStatus(AUEventSampleTime, std::uint8_t, long, const std::uint8_t*)>;
/// Event time, cable, byte count, bytes.
using AUScheduleMIDIEventBlock = Block<void(AUEventSampleTime, std::uint8_t, long, const std::uint8_t*)>;
/// Tempo, time signature numerator and denominator, beat position, offset to the next beat, down beat of the
/// measure; any pointer may be null.
using AUHostMusicalContextBlock = Block<bool(double*, double*, long*, double*, long*, double*)>;
/// Flags, sample position, cycle start and end beat; any pointer may be null.
using AUHostTransportStateBlock = Block<bool(std::uint32_t*, double*, double*, double*)>;
/// Flags, time stamp, frame count, input bus number, list to fill.
using AURenderPullInputBlock = Block<OSStatus(AudioUnitRenderActionFlags*, const AudioTimeStamp*,
                                              std::uint32_t, long, AudioBufferList*)>;
/// Flags, time stamp, frame count, output bus number, output list, event list or null, pull callback or
/// absent.
using AUInternalRenderBlock =
    Block<OSStatus(AudioUnitRenderActionFlags*, const AudioTimeStamp*, std::uint32_t, long, AudioBufferList*,
                   const AURenderEvent*, AURenderPullInputBlock)>;

} // namespace platform
