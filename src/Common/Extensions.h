// Small helpers on top of the platform's types: log lines from any thread, texts of codes, unique names.
#pragma once

#include "Common/Capitals.h"
#include "platform/core/Core.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qor {

/// Queues a task on the current run loop that writes the text to the log as one line, and returns at once.
/// Any thread; allocates the task. Lines come in the order of the calls, later than direct log lines of the
/// same moment.
void debugprint(std::string_view text);
/// The same under the name that the render side uses.
void safeprint(std::string_view text);

/// Turns bytes into UTF-8, or gives nothing if they are no text of its encoding.
using TextDecoder = std::optional<std::string> (*)(std::string_view bytes);

/// The four-character text of a code, its highest byte first, read as Mac Roman and given as UTF-8; zero
/// bytes stay in the text. "FAIL" if the bytes can't be decoded, which Mac Roman never brings about.
std::string stringValue(std::uint32_t value);
std::string stringValue(std::uint32_t value, TextDecoder decode);

/// A name that no other process or call makes: the prefix and "-", if there is a prefix (an empty one
/// counts), then the process's globally unique text. Any thread.
std::string uniqueName(const std::optional<std::string>& withPrefix);

} // namespace qor
