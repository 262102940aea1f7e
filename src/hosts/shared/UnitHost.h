// The one place that drives a unit: every plug-in format, the standalone program and the command line use it.
#pragma once

#include "hosts/shared/BypassFade.h"
#include "hosts/shared/ChunkEvents.h"
#include "hosts/shared/EventOrder.h"
#include "hosts/shared/ServiceThread.h"
#include "unit/QOR_Limiter_Extension_AudioUnit.h"

#include <atomic>
#include <memory>
#include <mutex>

namespace qor::host {

struct UnitHostOptions {
    /// Every pull of the unit delivers the input, the final limiter's too: the unit as it is, for comparison.
    bool plainPull = false;
    /// Denormal numbers count as 0 during a render call.
    bool flushToZero = true;
    /// A service thread pumps the run loop until the host says that it does so itself.
    bool serviced = true;
    const Clock* clock = &steadyClock();
};

struct Meters {
    float dynamics1 = 1.0F; // 1: no reduction
    float dynamics2 = 1.0F;
    float peak1 = 0.0F; // linear, 0 to 1
    float peak2 = 0.0F;
};

/// Guards what all instances of the process share: the preset delegate, the instance count of the wave
/// tables.
std::recursive_mutex& wholeProcessMutex() noexcept;

/// Owns a unit and its run loop, and stands between it and the host: any block size and event order, bad
/// audio, the final limiter behind the kernel, parameters that follow automation, recall.
class UnitHost final : private Serviced {
public:
    static Result<std::unique_ptr<UnitHost>> create(const UnitHostOptions& options = {});
    ~UnitHost() override;
    UnitHost(const UnitHost&) = delete;
    UnitHost& operator=(const UnitHost&) = delete;

    // Main thread
    // ---------------------------------------------------------------------------------------------

    /// Makes ready to render at a rate in hertz. Rendering starts at sample time 0 with the parameters as
    /// they stand.
    Result<void> activate(double sampleRate);
    void deactivate();
    bool isActive() const noexcept { return active_; }
    double sampleRate() const noexcept { return sampleRate_; }
    /// Back to the state after activation. Not while `render` runs.
    void reset();

    /// Holds the value to the parameter's range and sets it through the tree, whose observers are told,
    /// `originator` left out. Refuses an unknown address and a value that is not finite.
    Result<void> setParameter(AUParameterAddress address, float value,
                              AUParameterObserverToken originator = 0);
    /// Runs a change that restores state on the unit, then brings the kernel in line with all twelve values.
    void changeState(const Block<void(QOR_Limiter_Extension_AudioUnit&)>& change);

    /// Runs what the unit queued, and tells the tree's observers what automation has moved.
    void pump();
    /// From now on the host calls `pump` regularly itself (an editor is open), or leaves it to the service
    /// thread.
    void setPumpedByHost(bool pumped) noexcept { pumpedByHost_.store(pumped); }
    RunLoop& runLoop() noexcept { return loop_; }
    /// Good until `onUnitReplaced` is called.
    QOR_Limiter_Extension_AudioUnit& unit() noexcept { return *owned_->unit; }
    const Ref<QOR_Limiter_Extension_AudioUnit>& unitRef() noexcept { return owned_->unit; }
    /// Called after a unit whose state was broken has been replaced by a fresh one. From within `pump`, which
    /// may be the service thread's: to be set under the lock once the unit is active.
    void setOnUnitReplaced(Block<void()> block) { onUnitReplaced_ = std::move(block); }
    /// The lock of all main-thread operations; held by whoever reaches for the unit itself while a service
    /// thread runs.
    std::recursive_mutex& mutex() noexcept { return mutex_; }

    // Render thread
    // -------------------------------------------------------------------------------------------

    /// Renders any number of frames; events are applied at their frames. A null input channel is silence, a
    /// null output channel is dropped; input and output may be the same places in any combination. Without
    /// frames the events are applied at once. Before `activate` the output is silence.
    void render(const float* const input[2], float* const output[2], std::uint32_t frames,
                const EventSource& events) noexcept QOR_NONBLOCKING;
    /// `reset` for hosts that ask for it between two render calls.
    void resetInRender() noexcept QOR_NONBLOCKING;
    /// Ends the bypass's crossfade at once; for a state that is recalled, not switched.
    void settleBypass() noexcept { bypass_.settle(); }

    // Any thread
    // ----------------------------------------------------------------------------------------------

    /// The kernel's value, as written last.
    float parameter(AUParameterAddress address) const noexcept QOR_NONBLOCKING;
    Meters meters() const noexcept QOR_NONBLOCKING;
    /// The host's own bypass, apart from the parameter of that name.
    void setBypassed(bool bypassed) noexcept { bypass_.setBypassed(bypassed); }
    bool isBypassed() const noexcept { return bypass_.isBypassed(); }
    /// How often a unit's state was found broken.
    std::uint64_t replacements() const noexcept { return replacements_.load(std::memory_order_relaxed); }

private:
    static constexpr std::uint32_t kChunk = 4096; // what the kernel's buffers hold

    /// Keeps the adapter whose values are read from being replaced meanwhile. Never waits.
    class Reading {
    public:
        explicit Reading(const UnitHost& host) noexcept : host_(host) { host_.readers_.fetch_add(1); }
        ~Reading() { host_.readers_.fetch_sub(1); }
        Reading(const Reading&) = delete;
        Reading& operator=(const Reading&) = delete;
        QOR_Limiter_ExtensionDSPKernelAdapter* operator->() const noexcept { return host_.shown_.load(); }

    private:
        const UnitHost& host_;
    };

    struct LiveUnit {
        Ref<QOR_Limiter_Extension_AudioUnit> unit;
        AUInternalRenderBlock render;
    };

    explicit UnitHost(const UnitHostOptions& options);

    static Result<std::unique_ptr<LiveUnit>> makeUnit();
    Result<void> allocate(LiveUnit& live) const;
    static void release(LiveUnit& live);
    static void resendParameters(QOR_Limiter_Extension_AudioUnit& unit) noexcept QOR_NONBLOCKING_IN_RENDER;
    void service() override;
    void replaceBrokenUnit();
    void takeIncomingUnit();
    void tellObservers();

    void renderChunk(const float* const input[2], float* const output[2], std::uint32_t frames,
                     const AURenderEvent* events) noexcept QOR_NONBLOCKING;
    OSStatus pull(std::uint32_t frames, AudioBufferList* list) noexcept QOR_NONBLOCKING;
    void deliverHeldDown(float* const output[2], std::uint32_t frames) noexcept QOR_NONBLOCKING;

    const UnitHostOptions options_;
    RunLoop loop_;
    std::unique_ptr<LiveUnit> owned_;
    std::unique_ptr<LiveUnit> incoming_; // waits for the render thread to take it over
    Block<void()> onUnitReplaced_;
    mutable std::recursive_mutex mutex_;
    std::shared_ptr<ServiceThread> serviceThread_;
    std::atomic<bool> pumpedByHost_{false};
    bool active_ = false;
    double sampleRate_ = 0.0;

    // Between the threads.
    std::atomic<std::uint32_t> automated_{0}; // one bit for each parameter that events have moved
    std::atomic<bool> broken_{false};         // the unit's state is not finite: it is left alone
    std::atomic<LiveUnit*> next_{nullptr};
    std::atomic<std::uint64_t> replacements_{0};
    std::atomic<QOR_Limiter_ExtensionDSPKernelAdapter*> shown_{nullptr}; // of `owned_`
    mutable std::atomic<std::uint32_t> readers_{0};                      // that hold `shown_` right now
    BypassFade bypass_;

    // The render thread's own.
    LiveUnit* live_ = nullptr;
    std::int64_t sampleTime_ = 0;
    EventOrder order_;
    ChunkEvents chunkEvents_;
    AURenderPullInputBlock pullBlock_;
    const float* chunkInput_[2] = {};
    float* chunkOutput_[2] = {};
    const float* dry_[2] = {}; // this chunk's input as the unit got it
    unsigned pulls_ = 0;
    bool chunkBroken_ = false;
    float spare_[2][kChunk] = {};   // in place of an output channel that is not there
    float dryCopy_[2][kChunk] = {}; // the input, where the unit did not take it
};

} // namespace qor::host
