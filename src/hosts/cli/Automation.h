// Parameter changes at sample positions, from a text file to the render calls.
#pragma once

#include "hosts/cli/Failure.h"
#include "platform/audio/AudioTypes.h"

#include <cstdint>
#include <istream>
#include <span>
#include <string>
#include <vector>

namespace qor::cli {

struct AutomationEvent {
    AUEventSampleTime time = 0; // frames from the start of the file
    AUParameterAddress address = 0;
    float value = 0.0F;
};

/// Lines "SAMPLETIME NAME VALUE"; '#' starts a comment; empty lines count for nothing. Sorted by time; events
/// at one time keep the order of their lines. An error names the file and the line.
Result<std::vector<AutomationEvent>> parseAutomation(std::istream& lines, const std::string& name);
Result<std::vector<AutomationEvent>> readAutomation(const std::string& file);

/// Hands the events out to successive render calls.
class AutomationCursor {
public:
    explicit AutomationCursor(std::vector<AutomationEvent> events);

    /// The events from where the last call ended up to `start` + `frames`.
    std::span<const AutomationEvent> take(AUEventSampleTime start, std::uint32_t frames);
    /// Events that no call has reached yet.
    std::size_t left() const noexcept { return events_.size() - next_; }
    /// The first of them.
    const AutomationEvent& nextEvent() const { return events_[next_]; }

private:
    std::vector<AutomationEvent> events_;
    std::size_t next_ = 0;
};

} // namespace qor::cli
