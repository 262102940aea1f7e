// The interface's table of calls around an instance.
#pragma once

#include "hosts/clap/ClapHeaders.h"

namespace qor::clap {

/// A new plug-in for a host, to be ended by its own `destroy`; null for a host that is absent or speaks
/// another major version, or without memory.
const clap_plugin_t* makePlugin(const clap_host_t* host) noexcept;

} // namespace qor::clap
