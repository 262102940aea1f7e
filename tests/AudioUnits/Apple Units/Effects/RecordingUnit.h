// A unit in the place of the system limiter that keeps what is sent through its plain handle.
#pragma once

#include "platform/audio/Audio.h"

#include <ostream>
#include <vector>

namespace test {

/// One call of AudioUnitSetParameter.
struct SentParameter {
    std::uint32_t id;
    std::uint32_t scope;
    std::uint32_t element;
    float value;
    std::uint32_t offset;

    friend bool operator==(const SentParameter&, const SentParameter&) = default;
    friend std::ostream& operator<<(std::ostream& out, const SentParameter& sent) {
        return out << "{" << sent.id << ", " << sent.scope << ", " << sent.element << ", " << sent.value
                   << ", " << sent.offset << "}";
    }
};

class RecordingUnit final : public platform::AUAudioUnit, public platform::AudioUnitHandle {
public:
    explicit RecordingUnit(std::vector<SentParameter>& sent) : sent_(sent) {}

    platform::AudioUnit plainHandle() noexcept override { return this; }
    platform::OSStatus setParameter(std::uint32_t id, std::uint32_t scope, std::uint32_t element, float value,
                                    std::uint32_t offset) noexcept override {
        sent_.push_back({id, scope, element, value, offset});
        return platform::noErr;
    }
    platform::OSStatus getParameter(std::uint32_t /*id*/, std::uint32_t /*scope*/, std::uint32_t /*element*/,
                                    float& /*value*/) noexcept override {
        return platform::kAudioUnitErr_InvalidParameter;
    }

private:
    std::vector<SentParameter>& sent_;
};

/// While it lives, new system limiters are recording units.
class RecordedLimiters {
public:
    std::vector<SentParameter> sent;

private:
    platform::AudioComponentRegistration registration_{
        {platform::kSystemPeakLimiter, "Test: Recorder", "Test", 1},
        [this](const platform::AudioComponentDescription&, platform::AudioComponentInstantiationOptions) {
            return platform::Result<platform::Ref<platform::AUAudioUnit>>(
                platform::makeRef<RecordingUnit>(sent));
        }};
};

/// While it lives, the platform has no limiter.
class NoLimiter {
    platform::AudioComponentRegistration registration_{
        {platform::kSystemPeakLimiter, "Test: None", "Test", 1},
        [](const platform::AudioComponentDescription&, platform::AudioComponentInstantiationOptions) {
            return platform::Result<platform::Ref<platform::AUAudioUnit>>(
                platform::NSError("test", platform::kAudioComponentErr_NotFound));
        }};
};

} // namespace test
