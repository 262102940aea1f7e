// One connection point of an audio unit.
#pragma once

#include "platform/audio/AVAudioFormat.h"
#include "platform/core/Block.h"
#include "platform/core/Ref.h"
#include "platform/core/Result.h"

#include <cstdint>
#include <optional>
#include <string>

namespace platform {

class AUAudioUnit;

enum class AUAudioUnitBusType : long { Input = 1, Output = 2 };

/// A bus with the format that its audio has. Configuration thread.
class AUAudioUnitBus {
public:
    /// Asked before a format is taken; an error keeps the earlier format.
    using FormatVeto = Block<Result<void>(const AVAudioFormat&)>;

    /// `initWithFormat:error:`. Refuses a format without channels, or whose rate is not finite and above 0,
    /// with kAudioUnitErr_FormatNotSupported.
    static Result<Ref<AUAudioUnitBus>> initWithFormat(const AVAudioFormat& format);

    const AVAudioFormat& format() const noexcept { return format_; }
    /// Takes the format over, or fails and keeps the earlier one: what `initWithFormat` refuses, more
    /// channels than `maximumChannelCount`, or the veto's own error.
    Result<void> setFormat(const AVAudioFormat& format);
    /// The owner's say in `setFormat` (a unit refuses while it holds render resources). Tests set one that
    /// fails on demand. Absent at first.
    void setFormatVeto(FormatVeto veto) { veto_ = std::move(veto); }
    const FormatVeto& formatVeto() const noexcept { return veto_; }

    bool shouldAllocateBuffer() const noexcept { return shouldAllocateBuffer_; }
    void setShouldAllocateBuffer(bool should) noexcept { shouldAllocateBuffer_ = should; }
    bool isEnabled() const noexcept { return enabled_; }
    void setEnabled(bool enabled) noexcept { enabled_ = enabled; }
    /// 0: no limit.
    std::uint32_t maximumChannelCount() const noexcept { return maximumChannelCount_; }
    void setMaximumChannelCount(std::uint32_t count) noexcept { maximumChannelCount_ = count; }
    const std::optional<std::string>& name() const noexcept { return name_; }
    void setName(std::optional<std::string> name) { name_ = std::move(name); }

    /// Place in its array, and what array that is; 0 and output until an array has taken the bus.
    std::int64_t index() const noexcept { return index_; }
    AUAudioUnitBusType busType() const noexcept { return busType_; }
    AUAudioUnit* ownerAudioUnit() const noexcept { return owner_; }
    /// Used by the array that takes the bus. `owner` is not owned.
    void setPlace(AUAudioUnit* owner, AUAudioUnitBusType type, std::int64_t index) noexcept {
        owner_ = owner;
        busType_ = type;
        index_ = index;
    }

    /// Seconds between this bus and the device; nothing here knows one.
    double contextPresentationLatency() const noexcept { return 0.0; }

private:
    explicit AUAudioUnitBus(const AVAudioFormat& format) : format_(format) {}

    AVAudioFormat format_;
    FormatVeto veto_;
    bool shouldAllocateBuffer_ = true;
    bool enabled_ = true;
    std::uint32_t maximumChannelCount_ = 0;
    std::optional<std::string> name_;
    AUAudioUnit* owner_ = nullptr;
    AUAudioUnitBusType busType_ = AUAudioUnitBusType::Output;
    std::int64_t index_ = 0;
};

} // namespace platform
