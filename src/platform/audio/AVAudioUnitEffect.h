// An effect unit as a node, with or without an engine.
#pragma once

#include "platform/audio/AUAudioUnit.h"

#include <optional>
#include <string>

namespace platform {

class AVAudioEngine;

/// A node that holds a unit made from its description. Configuration thread.
class AVAudioUnitEffect {
public:
    /// Makes the unit; an unknown description leaves the node without one.
    explicit AVAudioUnitEffect(const AudioComponentDescription& description);
    AVAudioUnitEffect(const AVAudioUnitEffect&) = delete;
    AVAudioUnitEffect& operator=(const AVAudioUnitEffect&) = delete;
    ~AVAudioUnitEffect();

    /// Absent if the description was unknown.
    const Ref<platform::AUAudioUnit>& AUAudioUnit() const noexcept { return unit_; }
    /// The unit's plain handle; absent without a unit. Lives as long as the unit.
    AudioUnit audioUnit() const noexcept;
    const AudioComponentDescription& audioComponentDescription() const noexcept { return description_; }
    /// The unit's name, empty without a unit.
    std::string name() const;

    std::size_t numberOfInputs() const;
    std::size_t numberOfOutputs() const;
    /// The bus's format; the process stops for a bus that is not there.
    AVAudioFormat inputFormatForBus(std::size_t bus) const;
    AVAudioFormat outputFormatForBus(std::size_t bus) const;
    std::optional<std::string> nameForInputBus(std::size_t bus) const;
    std::optional<std::string> nameForOutputBus(std::size_t bus) const;

    /// When the node rendered last; absent, as no engine here renders.
    std::optional<AudioTimeStamp> lastRenderTime() const { return std::nullopt; }
    /// Seconds.
    double latency() const;
    /// Seconds from the node's output to the device; no engine here has one.
    double outputPresentationLatency() const { return 0.0; }
    /// The engine that the node is attached to, if any.
    AVAudioEngine* engine() const noexcept { return engine_; }

private:
    friend class AVAudioEngine;

    AudioComponentDescription description_;
    Ref<platform::AUAudioUnit> unit_;
    AVAudioEngine* engine_ = nullptr;
};

} // namespace platform
