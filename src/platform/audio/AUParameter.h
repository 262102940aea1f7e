// One parameter of an audio unit.
#pragma once

#include "platform/audio/AUParameterNode.h"

#include <atomic>
#include <optional>
#include <string>
#include <vector>

namespace platform {

enum class AudioUnitParameterUnit : std::uint32_t {
    Generic = 0,
    Indexed = 1,
    Boolean = 2,
    Percent = 3,
    Seconds = 4,
    Decibels = 13,
};

using AudioUnitParameterOptions = std::uint32_t;
inline constexpr AudioUnitParameterOptions kAudioUnitParameterFlag_IsReadable = 0x40000000;
inline constexpr AudioUnitParameterOptions kAudioUnitParameterFlag_IsWritable = 0x80000000;

/// A value with its range. Made by `AUParameterTree::createParameter`. Values are read and set on any thread
/// but the render thread; no range is enforced here.
class AUParameter final : public AUParameterNode {
public:
    AUParameterAddress address() const noexcept { return address_; }
    AUValue minValue() const noexcept { return minValue_; }
    AUValue maxValue() const noexcept { return maxValue_; }
    AudioUnitParameterUnit unit() const noexcept { return unit_; }
    const std::optional<std::string>& unitName() const noexcept { return unitName_; }
    AudioUnitParameterOptions flags() const noexcept { return flags_; }
    const std::optional<std::vector<std::string>>& valueStrings() const noexcept { return valueStrings_; }
    const std::optional<std::vector<AUParameterAddress>>& dependentParameters() const noexcept {
        return dependentParameters_;
    }

    /// The nearest value provider's answer, or what was set last.
    AUValue value();
    /// Stores the value, then tells the nearest implementor's observer, then all observers from here up to
    /// the root, `originator` left out.
    void setValue(AUValue value, AUParameterObserverToken originator = 0);
    /// Tells the observers of a value that reached the implementor by another way (an automation event); the
    /// implementor's observer is not called.
    void valueDidChange(AUValue value, AUParameterObserverToken originator = 0);

    /// The text of `*value`, or of the parameter's own value if there is none.
    std::string stringFromValue(const AUValue* value);

private:
    friend class AUParameterTree;
    AUParameter(std::string identifier, std::string name, AUParameterAddress address, AUValue min,
                AUValue max, AudioUnitParameterUnit unit, std::optional<std::string> unitName,
                AudioUnitParameterOptions flags, std::optional<std::vector<std::string>> valueStrings,
                std::optional<std::vector<AUParameterAddress>> dependentParameters);

    /// The nearest callback of one kind from here up to the root, absent if there is none.
    template <class Callback>
    const Callback* nearest(Callback AUParameterNode::*kind) const;

    AUParameterAddress address_;
    AUValue minValue_;
    AUValue maxValue_;
    AudioUnitParameterUnit unit_;
    std::optional<std::string> unitName_;
    AudioUnitParameterOptions flags_;
    std::optional<std::vector<std::string>> valueStrings_;
    std::optional<std::vector<AUParameterAddress>> dependentParameters_;
    std::atomic<AUValue> value_{0.0F};
};

} // namespace platform
