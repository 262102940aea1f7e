// What a session keeps of an instance: the unit's state behind one line for the host's bypass.
#pragma once

#include "hosts/shared/UnitHost.h"

#include <cstdint>
#include <span>
#include <vector>

namespace qor::clap {

std::vector<std::uint8_t> saveInstance(const host::UnitHost& host);
/// Restores what `saveInstance` gave, or a unit's state alone, which leaves the bypass off. A damaged state
/// is refused with the reason, and everything stays as it was. Main thread.
Result<void> restoreInstance(host::UnitHost& host, std::span<const std::uint8_t> bytes);

} // namespace qor::clap
