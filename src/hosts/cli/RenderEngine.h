// What a render needs of the limiter, so that the loop over the file does not know which one it drives.
#pragma once

#include "hosts/cli/Automation.h"
#include "hosts/cli/Failure.h"
#include "hosts/cli/MeterTable.h"

#include <cstdint>
#include <span>

namespace qor::cli {

inline constexpr std::uint32_t kLargestBlock = 4096; // frames of one render call

/// A limiter for two channels, with its parameters at their defaults after construction. One thread.
class RenderEngine {
public:
    RenderEngine() = default;
    RenderEngine(const RenderEngine&) = delete;
    RenderEngine& operator=(const RenderEngine&) = delete;
    virtual ~RenderEngine() = default;

    /// Before the first render. `sampleRate` in Hz.
    virtual Result<void> allocate(double sampleRate) = 0;
    /// By way of the parameter tree. `address` is one of the table's.
    virtual Result<void> setParameter(AUParameterAddress address, float value) = 0;
    /// Straight to the kernel, whatever the address and the value.
    virtual void setRawParameter(std::int32_t address, float value) = 0;
    /// Renders at most `kLargestBlock` frames from the file's frame `sampleTime` on. `events` lie within
    /// them.
    virtual Result<void> render(std::int64_t sampleTime, std::span<const AutomationEvent> events,
                                std::uint32_t frames, const float* const input[2],
                                float* const output[2]) = 0;
    /// What the meters say now.
    virtual MeterValues meters() = 0;
    /// How often the limiter's state was no longer finite and had to be made anew.
    virtual std::uint64_t breakdowns() const = 0;
};

} // namespace qor::cli
