// The signal path of the system peak limiter.
#pragma once

#include "platform/core/RealTime.h"

#include <cstdint>

namespace platform {

/// A stereo-linked peak limiter without latency.
///
/// The louder channel's magnitude x after the pre-gain asks for the reduction u = 1 - 1/x, or none up to the
/// ceiling of 1.0. A first memory takes u over at once when it rises and lets it go with the decay constant;
/// a second one follows the first with the attack constant and never exceeds it. Both channels get the gain 1
/// - memory, or 1/x where that is lower: a peak that the memory has not caught yet is held at the ceiling on
/// its own sample.
///
/// For finite and non-finite input alike no output sample exceeds 1.0 in magnitude. While nothing is to be
/// reduced, a sample is multiplied by the pre-gain alone, by exactly 1.0 at 0 dB. A NaN counts as 0, and what
/// the pre-gain lifts beyond 2^100 counts as 2^100. The samples do not depend on how a signal is cut into
/// calls.
///
/// No operation allocates, locks or fails. `process` and `set` belong to one thread at a time.
class PeakLimiterDSP {
public:
    /// How long the pre-gain takes to reach a new value, in seconds.
    static constexpr double kPreGainRampSeconds = 0.01;

    /// Takes the sample rate in hertz (above 0) and forgets the past.
    void prepare(double sampleRate) noexcept;
    /// Forgets the past: no reduction, and the next pre-gain holds at once.
    void reset() noexcept QOR_NONBLOCKING_IN_RENDER;
    /// Time constants in seconds (above 0), pre-gain in decibels. Cheap if nothing has changed.
    void set(float attackSeconds, float decaySeconds, float preGainDecibels) noexcept QOR_NONBLOCKING;

    /// Limits in place. `right` may be null for mono. The two may not overlap.
    void process(float* left, float* right, std::uint32_t frames) noexcept QOR_NONBLOCKING;

    /// The reduction that the memory holds: 0 for none, towards 1 for silence.
    double reduction() const noexcept { return memory_; }

private:
    static constexpr std::uint32_t kChunk = 64; // frames, small enough for the stack and the first cache

    template <bool kStereo>
    void processChunk(float* left, float* right, std::uint32_t frames) noexcept QOR_NONBLOCKING;
    /// Fills `gains` with the pre-gain of each frame and moves the ramp on.
    void rampPreGain(float* gains, std::uint32_t frames) noexcept QOR_NONBLOCKING;
    void updateCoefficients() noexcept QOR_NONBLOCKING_IN_RENDER;

    double sampleRate_ = 44100.0;
    float attack_ = 0.0F; // seconds, as set
    float decay_ = 0.0F;
    float preGainDecibels_ = 0.0F;

    double attackKeep_ = 0.0; // share of the second memory that a frame keeps
    double decayKeep_ = 0.0;  // share of the first
    double held_ = 0.0;       // first memory: the reduction asked for
    double memory_ = 0.0;     // second memory: the reduction in force

    bool fresh_ = true; // no frame since the reset
    double preGain_ = 1.0;
    double preGainTarget_ = 1.0;
    double preGainStep_ = 0.0;   // per frame
    std::uint32_t rampLeft_ = 0; // frames
};

} // namespace platform
