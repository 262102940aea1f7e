// The shared object's one symbol.
#include "hosts/clap/ClapDescriptor.h"
#include "hosts/clap/ClapHeaders.h"
#include "hosts/clap/ClapPlugin.h"

#include <cstdint>
#include <string_view>

namespace {

std::uint32_t pluginCount(const clap_plugin_factory_t* /*factory*/) noexcept {
    return 1;
}

const clap_plugin_descriptor_t* pluginDescriptor(const clap_plugin_factory_t* /*factory*/,
                                                 std::uint32_t index) noexcept {
    return index == 0 ? &qor::clap::descriptor() : nullptr;
}

const clap_plugin_t* createPlugin(const clap_plugin_factory_t* /*factory*/, const clap_host_t* host,
                                  const char* id) noexcept {
    return id != nullptr && std::string_view(id) == qor::clap::kPluginId ? qor::clap::makePlugin(host)
                                                                         : nullptr;
}

constexpr clap_plugin_factory_t kFactory{pluginCount, pluginDescriptor, createPlugin};

// Nothing runs before the first instance: scanning costs a host next to nothing.
bool init(const char* /*path*/) noexcept {
    return true;
}

void deinit() noexcept {}

const void* getFactory(const char* id) noexcept {
    return id != nullptr && std::string_view(id) == CLAP_PLUGIN_FACTORY_ID ? &kFactory : nullptr;
}

} // namespace

extern "C" {
const clap_plugin_entry_t clap_entry{CLAP_VERSION, init, deinit, getFactory};
}
