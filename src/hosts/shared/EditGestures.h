// Tells a plug-in's host what a person does in the editor, as gestures: begin, values, end.
#pragma once

#include "platform/audio/Audio.h"
#include "platform/core/Block.h"

#include <cstdint>
#include <vector>

namespace qor::host {

enum class EditPhase : std::uint8_t { begin, value, end };

/// The value is of meaning in phase `value` only.
using EditSink = Block<void(AUParameterAddress, EditPhase, float)>;

/// While a button or finger is down, all values of one parameter make one gesture; a value that comes without
/// (a typed one, the wheel, a preset) is a gesture of its own. Main thread.
class EditGestures {
public:
    void setSink(EditSink sink) { sink_ = std::move(sink); }
    /// A person has moved a parameter.
    void changed(AUParameterAddress address, float value, bool isTouched);
    /// Ends what is open once nothing is down any more.
    void settle(bool isTouched);

private:
    void tell(AUParameterAddress address, EditPhase phase, float value = 0.0F) const;

    EditSink sink_;
    std::vector<AUParameterAddress> open_; // in the order of their beginnings
};

} // namespace qor::host
