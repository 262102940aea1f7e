#include "hosts/cli/Automation.h"

#include "hosts/cli/FileChecks.h"
#include "hosts/cli/ParameterSettings.h"

#include <algorithm>
#include <fstream>
#include <string_view>

namespace qor::cli {

namespace {

constexpr std::string_view kBlanks = " \t\r";
constexpr std::size_t kFields = 3;

std::vector<std::string_view> fieldsOf(std::string_view line) {
    line = line.substr(0, line.find('#'));
    std::vector<std::string_view> fields;
    for (std::size_t begin = line.find_first_not_of(kBlanks); begin != std::string_view::npos;) {
        const std::size_t end = std::min(line.find_first_of(kBlanks, begin), line.size());
        fields.push_back(line.substr(begin, end - begin));
        begin = line.find_first_not_of(kBlanks, end);
    }
    return fields;
}

Result<AutomationEvent> parseEvent(const std::vector<std::string_view>& fields) {
    if (fields.size() != kFields) {
        return workFailed(
            "a line holds SAMPLETIME NAME VALUE, as in \"48000 threshold 0.5\", and this one has " +
            std::to_string(fields.size()) + (fields.size() == 1 ? " field." : " fields."));
    }
    std::int64_t time = 0;
    if (!parseInt64(fields[0], time) || time < 0) {
        return workFailed(shown(fields[0]) + " is no sample time. Give a whole number of frames, 0 or more.");
    }
    const Result<const ParameterRow*> row = findParameter(fields[1]);
    if (!row) {
        return row.error();
    }
    const Result<float> value = parseValue(*row.value(), fields[2]);
    if (!value) {
        return value.error();
    }
    return AutomationEvent{time, row.value()->address, value.value()};
}

} // namespace

Result<std::vector<AutomationEvent>> parseAutomation(std::istream& lines, const std::string& name) {
    std::vector<AutomationEvent> events;
    std::string line;
    for (std::size_t number = 1; std::getline(lines, line); ++number) {
        const std::vector<std::string_view> fields = fieldsOf(line);
        if (fields.empty()) {
            continue;
        }
        const Result<AutomationEvent> event = parseEvent(fields);
        if (!event) {
            return workFailed(name + ":" + std::to_string(number) + ": " +
                              event.error().localizedDescription());
        }
        events.push_back(event.value());
    }
    if (lines.bad()) {
        return workFailed("cannot read " + quotedName(name) + " to its end. Copy the file again.");
    }
    std::stable_sort(events.begin(), events.end(),
                     [](const AutomationEvent& a, const AutomationEvent& b) { return a.time < b.time; });
    return events;
}

Result<std::vector<AutomationEvent>> readAutomation(const std::string& file) {
    if (Result<void> readable = requireReadableFile(file); !readable) {
        return readable.error();
    }
    std::ifstream lines(file, std::ios::binary);
    return parseAutomation(lines, file);
}

AutomationCursor::AutomationCursor(std::vector<AutomationEvent> events) : events_(std::move(events)) {}

std::span<const AutomationEvent> AutomationCursor::take(AUEventSampleTime start, std::uint32_t frames) {
    const AUEventSampleTime end = start + static_cast<AUEventSampleTime>(frames);
    const std::size_t first = next_;
    while (next_ < events_.size() && events_[next_].time < end) {
        ++next_;
    }
    return std::span(events_).subspan(first, next_ - first);
}

} // namespace qor::cli
