// The system's peak limiter with three clamped properties and its diagnostics.
#pragma once

#include "platform/audio/Audio.h"

#include <cstdint>
#include <string_view>

namespace qor {

/// Owns a node with the system limiter, made outside any graph. Failures are words in the log; nothing is
/// raised. Configuration thread.
class AUPeakLimiter {
    const AudioComponentDescription cd{kAudioUnitType_Effect, kAudioUnitSubType_PeakLimiter,
                                       kAudioUnitManufacturer_Apple, 0, 0};
    Ref<AVAudioEngine> engine; // absent until `run`

public:
    /// The system unit's node; present after construction.
    Ref<AVAudioUnitEffect> internalEffect;

    /// Creates the node and sends the initial values: 0.012 s, 0.024 s, 0 dB.
    AUPeakLimiter();
    AUPeakLimiter(const AUPeakLimiter&) = delete;
    AUPeakLimiter& operator=(const AUPeakLimiter&) = delete;
    virtual ~AUPeakLimiter() = default;

    /// The system unit, absent if the platform has none. The process stops if there is no node.
    Ref<AUAudioUnit> auAudioUnit() const;

    /// Seconds, 0.001 to 0.03. A write stores the value held within the range and sends it to the unit.
    double attackTime() const noexcept { return attackTime_; }
    void setAttackTime(double seconds);
    /// Seconds, 0.001 to 0.06.
    double decayTime() const noexcept { return decayTime_; }
    void setDecayTime(double seconds);
    /// Decibels, -40 to 40.
    double preGain() const noexcept { return preGain_; }
    void setPreGain(double decibels);

    /// Attaches the node to an engine, dumps it and detaches it again. The bus has no effect.
    void run(AUAudioUnitBus& bus);

    // What the platform reports about the node, one line per fact, written through `safeprint`.
    void nodeDiagnostics();
    void busDiagnostics(AUAudioUnitBus& bus, std::int64_t index);
    void unitDiagnostics(AUAudioUnit& unit);

    /// Writes the line from a task on the main queue. Any thread.
    void safeprint(std::string_view line);

protected:
    /// The engine that `run` uses; may be absent.
    virtual Ref<AVAudioEngine> makeEngine();

private:
    double attackTime_ = 0.012;
    double decayTime_ = 0.024;
    double preGain_ = 0.0;

    AudioUnit internalAU() const;
    void create();
    void initialize();
    /// Sends one value; without a unit nothing happens.
    void send(AudioUnitParameterID id, double value) const;
};

} // namespace qor
