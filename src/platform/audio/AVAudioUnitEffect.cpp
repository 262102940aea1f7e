#include "platform/audio/AVAudioUnitEffect.h"

#include "platform/audio/AVAudioEngine.h"
#include "platform/core/Fatal.h"

#include <utility>

namespace platform {

AVAudioUnitEffect::AVAudioUnitEffect(const AudioComponentDescription& description)
    : description_(description) {
    if (auto made = instantiateAudioUnit(description)) {
        unit_ = std::move(made).value();
    }
}

// An engine keeps its nodes, so none is attached when it dies.
AVAudioUnitEffect::~AVAudioUnitEffect() = default;

AudioUnit AVAudioUnitEffect::audioUnit() const noexcept {
    return unit_ ? unit_->plainHandle() : nullptr;
}

std::string AVAudioUnitEffect::name() const {
    return unit_ ? unit_->audioUnitName().value_or(std::string()) : std::string();
}

std::size_t AVAudioUnitEffect::numberOfInputs() const {
    return unit_ ? unit_->inputBusses()->count() : 0;
}

std::size_t AVAudioUnitEffect::numberOfOutputs() const {
    return unit_ ? unit_->outputBusses()->count() : 0;
}

AVAudioFormat AVAudioUnitEffect::inputFormatForBus(std::size_t bus) const {
    return (*unwrap(unit_).inputBusses())[bus].format();
}

AVAudioFormat AVAudioUnitEffect::outputFormatForBus(std::size_t bus) const {
    return (*unwrap(unit_).outputBusses())[bus].format();
}

std::optional<std::string> AVAudioUnitEffect::nameForInputBus(std::size_t bus) const {
    return (*unwrap(unit_).inputBusses())[bus].name();
}

std::optional<std::string> AVAudioUnitEffect::nameForOutputBus(std::size_t bus) const {
    return (*unwrap(unit_).outputBusses())[bus].name();
}

double AVAudioUnitEffect::latency() const {
    return unit_ ? unit_->latency() : 0.0;
}

} // namespace platform
