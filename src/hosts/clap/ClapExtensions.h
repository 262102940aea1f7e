// The extensions that the plug-in offers.
#pragma once

namespace qor::clap {

/// The extension's table of calls, or null for one that is not offered. Any thread.
const void* extensionNamed(const char* id) noexcept;

} // namespace qor::clap
