// What the preset tests share: a delegate that keeps what it hears, and a tree like the limiter's.
#pragma once

#include "unit/QORPreset.h"

#include <string>
#include <vector>

namespace test {

struct FoundParameter {
    std::int64_t group;
    std::string identifier;
    std::uint64_t address;
    float value;
    bool operator==(const FoundParameter&) const = default;
};

class RecordingDelegate : public qor::QORPresetDelegate {
public:
    void onFoundParameter(std::int64_t group, const std::string& identifier, std::uint64_t address,
                          float value) override {
        found.push_back({group, identifier, address, value});
    }
    std::vector<FoundParameter> found;
};

inline qor::Ref<qor::AUParameter> makeParameter(const std::string& identifier, std::uint64_t address,
                                                float value) {
    auto parameter = qor::AUParameterTree::createParameter(
        identifier, identifier, address, 0.0F, 1.0F, platform::AudioUnitParameterUnit::Generic, std::nullopt,
        platform::kAudioUnitParameterFlag_IsReadable, std::nullopt, std::nullopt);
    parameter->setValue(value);
    return parameter;
}

} // namespace test
