#include "hosts/clap/ClapExtensions.h"

#include "hosts/clap/ClapGuard.h"
#include "hosts/clap/ClapGui.h"
#include "hosts/clap/ClapParameters.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

namespace qor::clap {

namespace {

// Audio ports: one stereo pair, which may be worked on in place.

std::uint32_t portCount(const clap_plugin_t* /*plugin*/, bool /*isInput*/) noexcept {
    return 1;
}

bool port(const clap_plugin_t* /*plugin*/, std::uint32_t index, bool isInput,
          clap_audio_port_info_t* info) noexcept {
    if (index != 0 || info == nullptr) {
        return false;
    }
    *info = {};
    info->id = 0;
    std::snprintf(info->name, sizeof info->name, "%s", isInput ? "Input" : "Output");
    info->flags = CLAP_AUDIO_PORT_IS_MAIN;
    info->channel_count = 2;
    info->port_type = CLAP_PORT_STEREO;
    info->in_place_pair = 0; // the other direction's port of that id
    return true;
}

constexpr clap_plugin_audio_ports_t kAudioPorts{portCount, port};

// Parameters.

std::uint32_t paramCount(const clap_plugin_t* /*plugin*/) noexcept {
    return parameterCount();
}

bool paramInfo(const clap_plugin_t* /*plugin*/, std::uint32_t index, clap_param_info_t* info) noexcept {
    return info != nullptr && parameterInfo(index, *info);
}

bool paramValue(const clap_plugin_t* plugin, clap_id id, double* value) noexcept {
    checkThread(plugin, Promised::mainThread, "params.get_value");
    return guarded(
        false, [&] { return value != nullptr && isReady(plugin) && instanceOf(plugin).value(id, *value); });
}

bool paramText(const clap_plugin_t* /*plugin*/, clap_id id, double value, char* display,
               std::uint32_t size) noexcept {
    return guarded(false, [&] {
        const auto text = valueText(id, value);
        if (!text || display == nullptr || size == 0) {
            return false;
        }
        const std::size_t length = std::min<std::size_t>(text->size(), size - 1);
        std::memcpy(display, text->data(), length);
        display[length] = '\0';
        return true;
    });
}

bool paramFromText(const clap_plugin_t* /*plugin*/, clap_id id, const char* display, double* value) noexcept {
    return guarded(false, [&] {
        const auto read = display == nullptr || value == nullptr ? std::nullopt : textValue(id, display);
        if (read) {
            *value = *read;
        }
        return read.has_value();
    });
}

void paramFlush(const clap_plugin_t* plugin, const clap_input_events_t* in,
                const clap_output_events_t* out) noexcept {
    if (!isReady(plugin)) {
        return;
    }
    ClapInstance& instance = instanceOf(plugin);
    checkThread(plugin, instance.isActive() ? Promised::audioThread : Promised::mainThread, "params.flush");
    guarded([&] { instance.flush(in, out); });
}

constexpr clap_plugin_params_t kParams{paramCount, paramInfo,     paramValue,
                                       paramText,  paramFromText, paramFlush};

// State.

bool save(const clap_plugin_t* plugin, const clap_ostream_t* stream) noexcept {
    checkThread(plugin, Promised::mainThread, "state.save");
    return guarded(false, [&] { return isReady(plugin) && instanceOf(plugin).save(stream); });
}

bool load(const clap_plugin_t* plugin, const clap_istream_t* stream) noexcept {
    checkThread(plugin, Promised::mainThread, "state.load");
    return guarded(false, [&] { return isReady(plugin) && instanceOf(plugin).load(stream); });
}

constexpr clap_plugin_state_t kState{save, load};

// Small ones.

std::uint32_t latency(const clap_plugin_t* /*plugin*/) noexcept {
    return 0;
}
constexpr clap_plugin_latency_t kLatency{latency};

std::uint32_t tail(const clap_plugin_t* plugin) noexcept {
    return isReady(plugin) ? instanceOf(plugin).tail() : 0;
}
constexpr PluginTail kTail{tail};

bool needsRealtime(const clap_plugin_t* /*plugin*/) noexcept {
    return false;
}
bool setRenderMode(const clap_plugin_t* /*plugin*/, std::int32_t mode) noexcept {
    return mode == kRenderRealtime || mode == kRenderOffline; // the sound is the same
}
constexpr PluginRender kRender{needsRealtime, setRenderMode};

void onTimer(const clap_plugin_t* plugin, clap_id /*timer*/) noexcept {
    checkThread(plugin, Promised::mainThread, "timer-support.on_timer");
    guarded([&] {
        if (isReady(plugin)) {
            instanceOf(plugin).onMainThread();
        }
    });
}
constexpr clap_plugin_timer_support_t kTimers{onTimer};

void onDescriptor(const clap_plugin_t* plugin, int /*descriptor*/, std::uint32_t /*flags*/) noexcept {
    checkThread(plugin, Promised::mainThread, "posix-fd-support.on_fd");
    guarded([&] {
        if (isReady(plugin)) {
            instanceOf(plugin).onMainThread();
        }
    });
}
constexpr PluginDescriptors kDescriptors{onDescriptor};

struct Named {
    std::string_view id;
    const void* table;
};
const Named kOffered[] = {
    {CLAP_EXT_AUDIO_PORTS, &kAudioPorts},
    {CLAP_EXT_PARAMS, &kParams},
    {CLAP_EXT_STATE, &kState},
    {CLAP_EXT_LATENCY, &kLatency},
    {kExtTail, &kTail},
    {kExtRender, &kRender},
    {CLAP_EXT_TIMER_SUPPORT, &kTimers},
    {kExtDescriptors, &kDescriptors},
    {CLAP_EXT_GUI, guiTable()},
};

} // namespace

const void* extensionNamed(const char* id) noexcept {
    const auto* const found = std::find_if(std::begin(kOffered), std::end(kOffered),
                                           [id](const Named& named) { return named.id == id; });
    return found == std::end(kOffered) ? nullptr : found->table;
}

} // namespace qor::clap
