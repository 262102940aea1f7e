#include "platform/audio/AUAudioUnitBusArray.h"

#include "platform/core/Fatal.h"
#include "platform/core/Text.h"

#include <utility>

namespace platform {

AUAudioUnitBusArray::AUAudioUnitBusArray(AUAudioUnit* owner, AUAudioUnitBusType type,
                                         std::vector<Ref<AUAudioUnitBus>> busses)
    : owner_(owner), type_(type), busses_(std::move(busses)) {
    std::int64_t index = 0;
    for (const auto& bus : busses_) {
        bus->setPlace(owner_, type_, index++);
    }
}

void AUAudioUnitBusArray::disown() noexcept {
    owner_ = nullptr;
    for (const auto& bus : busses_) {
        bus->setPlace(nullptr, type_, bus->index());
        bus->setFormatVeto({});
    }
}

AUAudioUnitBus& AUAudioUnitBusArray::operator[](std::size_t index) const {
    if (index >= busses_.size()) {
        fatalError("AUAudioUnitBusArray: index " + text(static_cast<std::uint64_t>(index)) +
                   " is beyond the last bus of " + text(static_cast<std::uint64_t>(busses_.size())));
    }
    return *busses_[index];
}

} // namespace platform
