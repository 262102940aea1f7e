// What the system peak limiter's render block works with.
#pragma once

#include "platform/audio/AVAudioPCMBuffer.h"
#include "platform/audio/PeakLimiterDSP.h"
#include "platform/audio/SystemPeakLimiter.h"

#include <array>
#include <atomic>
#include <memory>

namespace platform {

/// Shared by the unit and its render blocks. `allocate`, `deallocate` and `reset` belong to the configuration
/// thread, never while `render` runs; parameters and bypass may be set from any thread.
class SystemPeakLimiter::Renderer {
public:
    struct Range {
        float lowest;
        float highest;
        float initial;
    };
    static constexpr std::array<Range, 3> kRanges{{
        {0.001F, 0.03F, 0.012F},
        {0.001F, 0.06F, 0.024F},
        {-40.0F, 40.0F, 0.0F},
    }};

    Renderer() noexcept;

    void allocate(const AVAudioFormat& format, std::uint32_t maximumFrames);
    void deallocate() noexcept;
    void reset() noexcept { dsp_.reset(); }

    /// False for an unknown number or a NaN; otherwise the value is stored within its range.
    bool setParameter(AUParameterAddress address, float value) noexcept QOR_NONBLOCKING;
    float parameter(AUParameterAddress address) const noexcept QOR_NONBLOCKING;

    OSStatus render(AudioUnitRenderActionFlags* flags, const AudioTimeStamp* timestamp, std::uint32_t frames,
                    long bus, AudioBufferList* output, const AURenderEvent* events,
                    const AURenderPullInputBlock& pull) noexcept QOR_NONBLOCKING;

    std::atomic<bool> bypass{false};

private:
    void limit(float* left, float* right, std::uint32_t frames, const AudioTimeStamp* timestamp,
               const AURenderEvent* events) noexcept QOR_NONBLOCKING;
    void takeParameters() noexcept QOR_NONBLOCKING;

    PeakLimiterDSP dsp_;
    std::array<std::atomic<float>, 3> parameters_;
    std::unique_ptr<AVAudioPCMBuffer> buffer_; // absent without render resources
    bool wasBypassed_ = false;                 // render thread
};

} // namespace platform
