#include "hosts/clap/ClapPlugin.h"

#include "hosts/clap/ClapDescriptor.h"
#include "hosts/clap/ClapExtensions.h"
#include "hosts/clap/ClapGuard.h"

#include <new>

namespace qor::clap {

namespace {

/// What the host holds, and the instance behind it.
struct Plugin {
    explicit Plugin(const clap_host_t* host) noexcept;

    clap_plugin_t table;
    ClapInstance instance;
};

bool init(const clap_plugin_t* plugin) noexcept {
    return guarded(false, [&] {
        ClapInstance& instance = instanceOf(plugin);
        return !instance.isReady() && instance.init();
    });
}

void destroy(const clap_plugin_t* plugin) noexcept {
    checkThread(plugin, Promised::mainThread, "destroy");
    delete static_cast<Plugin*>(plugin->plugin_data);
}

bool activate(const clap_plugin_t* plugin, double sampleRate, std::uint32_t /*least*/,
              std::uint32_t /*most*/) noexcept {
    checkThread(plugin, Promised::mainThread, "activate");
    return guarded(false, [&] { return isReady(plugin) && instanceOf(plugin).activate(sampleRate); });
}

void deactivate(const clap_plugin_t* plugin) noexcept {
    checkThread(plugin, Promised::mainThread, "deactivate");
    guarded([&] {
        if (isReady(plugin)) {
            instanceOf(plugin).deactivate();
        }
    });
}

bool startProcessing(const clap_plugin_t* plugin) noexcept {
    checkThread(plugin, Promised::audioThread, "start_processing");
    return instanceOf(plugin).isActive();
}

void stopProcessing(const clap_plugin_t* plugin) noexcept {
    checkThread(plugin, Promised::audioThread, "stop_processing");
}

void reset(const clap_plugin_t* plugin) noexcept {
    checkThread(plugin, Promised::audioThread, "reset");
    instanceOf(plugin).reset();
}

clap_process_status process(const clap_plugin_t* plugin, const clap_process_t* block) noexcept {
    checkThread(plugin, Promised::audioThread, "process");
    return block == nullptr ? CLAP_PROCESS_ERROR : instanceOf(plugin).process(*block);
}

const void* getExtension(const clap_plugin_t* /*plugin*/, const char* id) noexcept {
    return id == nullptr ? nullptr : extensionNamed(id);
}

void onMainThread(const clap_plugin_t* plugin) noexcept {
    checkThread(plugin, Promised::mainThread, "on_main_thread");
    guarded([&] {
        if (isReady(plugin)) {
            instanceOf(plugin).onMainThread();
        }
    });
}

Plugin::Plugin(const clap_host_t* host) noexcept
    : table{&descriptor(),   this,           init,  destroy, activate,     deactivate,
            startProcessing, stopProcessing, reset, process, getExtension, onMainThread},
      instance(host) {}

} // namespace

ClapInstance& instanceOf(const clap_plugin_t* plugin) noexcept {
    return static_cast<Plugin*>(plugin->plugin_data)->instance;
}

const clap_plugin_t* makePlugin(const clap_host_t* host) noexcept {
    if (host == nullptr || !clap_version_is_compatible(host->clap_version)) {
        return nullptr;
    }
    auto* const plugin = new (std::nothrow) Plugin(host);
    return plugin == nullptr ? nullptr : &plugin->table;
}

} // namespace qor::clap
