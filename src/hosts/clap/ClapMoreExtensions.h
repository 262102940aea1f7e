// Parts of the plug-in interface that the installed headers leave out. Their layouts and numbers are the
// interface's.
#pragma once

#include "hosts/clap/ClapHeaders.h"

#include <cstdint>

namespace qor::clap {

inline constexpr const char* kExtTail = "clap.tail";
struct PluginTail {
    std::uint32_t (*get)(const clap_plugin_t* plugin); // frames
};

inline constexpr const char* kExtRender = "clap.render";
inline constexpr std::int32_t kRenderRealtime = 0;
inline constexpr std::int32_t kRenderOffline = 1;
struct PluginRender {
    bool (*hasHardRealtimeRequirement)(const clap_plugin_t* plugin);
    bool (*set)(const clap_plugin_t* plugin, std::int32_t mode);
};

inline constexpr const char* kExtLog = "clap.log";
enum class LogSeverity : std::int32_t {
    debug,
    info,
    warning,
    error,
    fatal,
    hostMisbehaving,
    pluginMisbehaving
};
struct HostLog {
    void (*log)(const clap_host_t* host, std::int32_t severity, const char* message); // any thread
};

inline constexpr const char* kExtDescriptors = "clap.posix-fd-support";
inline constexpr std::uint32_t kDescriptorReadable = 1U << 0U;
struct HostDescriptors { // main thread
    bool (*add)(const clap_host_t* host, int descriptor, std::uint32_t flags);
    bool (*change)(const clap_host_t* host, int descriptor, std::uint32_t flags);
    bool (*remove)(const clap_host_t* host, int descriptor);
};
struct PluginDescriptors {
    void (*onDescriptor)(const clap_plugin_t* plugin, int descriptor, std::uint32_t flags); // main thread
};

/// A stepped parameter whose values have names. Hosts of older interface versions ignore it.
inline constexpr clap_param_info_flags kParamIsEnum = 1U << 16U;

} // namespace qor::clap
