// What a host reads of the plug-in before it makes one.
#pragma once

#include "hosts/clap/ClapHeaders.h"

namespace qor::clap {

inline constexpr const char* kPluginId = "org.qrvk.qor-limiter";

const clap_plugin_descriptor_t& descriptor() noexcept;

} // namespace qor::clap
