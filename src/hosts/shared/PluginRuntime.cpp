#include "hosts/shared/PluginRuntime.h"

#include <mutex>

namespace qor::host {

std::shared_ptr<PluginRuntime> PluginRuntime::acquire() {
    static std::mutex mutex;
    static std::weak_ptr<PluginRuntime> running;
    const std::lock_guard lock(mutex);
    std::shared_ptr<PluginRuntime> runtime = running.lock();
    if (runtime == nullptr) {
        runtime.reset(new PluginRuntime);
        running = runtime;
    }
    return runtime;
}

} // namespace qor::host
