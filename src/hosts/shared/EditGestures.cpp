#include "hosts/shared/EditGestures.h"

#include <algorithm>
#include <utility>

namespace qor::host {

void EditGestures::changed(AUParameterAddress address, float value, bool isTouched) {
    const bool isOpen = std::find(open_.begin(), open_.end(), address) != open_.end();
    if (!isOpen) {
        tell(address, EditPhase::begin);
    }
    tell(address, EditPhase::value, value);
    if (!isOpen && isTouched) {
        open_.push_back(address);
    } else if (!isOpen) {
        tell(address, EditPhase::end);
    }
}

void EditGestures::settle(bool isTouched) {
    if (isTouched) {
        return;
    }
    for (const AUParameterAddress address : std::exchange(open_, {})) {
        tell(address, EditPhase::end);
    }
}

void EditGestures::tell(AUParameterAddress address, EditPhase phase, float value) const {
    if (sink_) {
        sink_(address, phase, value);
    }
}

} // namespace qor::host
