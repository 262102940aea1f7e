// The input or output buses of an audio unit.
#pragma once

#include "platform/audio/AUAudioUnitBus.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace platform {

/// Buses in order. A unit may hand out another unit's array as its own. Configuration thread.
class AUAudioUnitBusArray {
public:
    /// `initWithAudioUnit:busType:busses:`. Tells each bus its type, its place and its owner (not owned, may
    /// be null).
    AUAudioUnitBusArray(AUAudioUnit* owner, AUAudioUnitBusType type,
                        std::vector<Ref<AUAudioUnitBus>> busses = {});
    ~AUAudioUnitBusArray() { disown(); }
    AUAudioUnitBusArray(const AUAudioUnitBusArray&) = delete;
    AUAudioUnitBusArray& operator=(const AUAudioUnitBusArray&) = delete;

    std::size_t count() const noexcept { return busses_.size(); }
    /// The process stops for an index at or beyond `count`.
    AUAudioUnitBus& operator[](std::size_t index) const;

    AUAudioUnitBusType busType() const noexcept { return type_; }
    AUAudioUnit* ownerAudioUnit() const noexcept { return owner_; }
    /// Called by an owner that goes: a lent array lives on without an owner and without a veto on formats.
    void disown() noexcept;

private:
    AUAudioUnit* owner_;
    AUAudioUnitBusType type_;
    std::vector<Ref<AUAudioUnitBus>> busses_;
};

} // namespace platform
