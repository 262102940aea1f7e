// The interface's table for the editor.
#pragma once

namespace qor::clap {

/// A `clap_plugin_gui_t`.
const void* guiTable() noexcept;

} // namespace qor::clap
