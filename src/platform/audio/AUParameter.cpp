#include "platform/audio/AUParameter.h"

#include "platform/audio/AUParameterGroup.h"
#include "platform/core/Text.h"

namespace platform {

AUParameter::AUParameter(std::string identifier, std::string name, AUParameterAddress address, AUValue min,
                         AUValue max, AudioUnitParameterUnit unit, std::optional<std::string> unitName,
                         AudioUnitParameterOptions flags,
                         std::optional<std::vector<std::string>> valueStrings,
                         std::optional<std::vector<AUParameterAddress>> dependentParameters)
    : AUParameterNode(std::move(identifier), std::move(name)), address_(address), minValue_(min),
      maxValue_(max), unit_(unit), unitName_(std::move(unitName)), flags_(flags),
      valueStrings_(std::move(valueStrings)), dependentParameters_(std::move(dependentParameters)) {}

template <class Callback>
const Callback* AUParameter::nearest(Callback AUParameterNode::*kind) const {
    for (const AUParameterNode* node = this; node != nullptr; node = node->parent()) {
        if (node->*kind) {
            return &(node->*kind);
        }
    }
    return nullptr;
}

AUValue AUParameter::value() {
    if (const auto* provider = nearest(&AUParameterNode::implementorValueProvider)) {
        return (*provider)(*this);
    }
    return value_.load(std::memory_order_relaxed);
}

void AUParameter::setValue(AUValue value, AUParameterObserverToken originator) {
    value_.store(value, std::memory_order_relaxed);
    if (const auto* observer = nearest(&AUParameterNode::implementorValueObserver)) {
        (*observer)(*this, value);
    }
    valueDidChange(value, originator);
}

void AUParameter::valueDidChange(AUValue value, AUParameterObserverToken originator) {
    for (AUParameterNode* node = this; node != nullptr; node = node->parent()) {
        node->notifyObservers(address_, value, originator);
    }
}

std::string AUParameter::stringFromValue(const AUValue* value) {
    if (const auto* callback = nearest(&AUParameterNode::implementorStringFromValueCallback)) {
        return (*callback)(*this, value);
    }
    return text(value != nullptr ? *value : this->value());
}

} // namespace platform
