// What a plug-in's copy of the program keeps running while instances live.
#pragma once

#include "platform/core/LogRing.h"

#include <memory>

namespace qor::host {

/// Sends the log to standard output by a thread of its own, so that a full pipe never holds up audio. Shared
/// by all instances; it ends with the last one, before a host unloads the code.
class PluginRuntime {
public:
    static std::shared_ptr<PluginRuntime> acquire();
    ~PluginRuntime() { platform::setLogSink(before_); }
    PluginRuntime(const PluginRuntime&) = delete;
    PluginRuntime& operator=(const PluginRuntime&) = delete;

private:
    PluginRuntime() : before_(platform::setLogSink(ring_)) {}

    platform::LogRing ring_{platform::standardOutputSink()};
    platform::LogSink& before_;
};

} // namespace qor::host
