// Plays the built LV2 and CLAP objects with automation, in a build under -fsanitize=realtime: whatever the
// render path does that may block ends the program with a report. Run by scripts/realtime-check.sh.
//   realtime-player LV2-OBJECT CLAP-OBJECT [lv2|clap|control]
// "control" blocks on purpose within a render call, in the host's own callback, and so must not come back.
#include "hosts/clap/ClapHeaders.h"
#include "hosts/lv2/Lv2Ports.h"

#include <lv2/core/lv2.h>

#include <array>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace {

using qor::kParameterCount;
using qor::kParameterTable;

constexpr double kRate = 48000.0;
constexpr std::uint32_t kLargestBlock = 5000; // beyond what one pass of the unit takes
constexpr int kBlocks = 4000;
constexpr std::size_t kMostEvents = 64;

[[noreturn]] void fail(const std::string& what) {
    std::fprintf(stderr, "realtime-player: %s\n", what.c_str());
    std::exit(2); // NOLINT(concurrency-mt-unsafe): one thread so far
}

template <class Symbol>
Symbol symbolOf(const char* object, const char* name) {
    void* const library = dlopen(object, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        fail(dlerror()); // NOLINT(concurrency-mt-unsafe): one thread so far
    }
    void* const address = dlsym(library, name);
    if (address == nullptr) {
        fail(dlerror()); // NOLINT(concurrency-mt-unsafe): one thread so far
    }
    return reinterpret_cast<Symbol>(address);
}

/// Loud noise with a fault in it now and then, and blocks of random length.
struct Signal {
    std::minstd_rand random{1};
    std::array<std::vector<float>, 2> in{std::vector<float>(kLargestBlock),
                                         std::vector<float>(kLargestBlock)};
    std::array<std::vector<float>, 2> out = in;

    std::uint32_t next() {
        constexpr std::array<std::uint32_t, 6> kLengths{0, 1, 32, 64, 512, kLargestBlock};
        const std::uint32_t frames = kLengths[random() % kLengths.size()];
        for (auto& side : in) {
            for (std::uint32_t i = 0; i < frames; ++i) {
                side[i] = 4.0F * value() - 2.0F;
            }
        }
        if (frames != 0 && random() % 50 == 0) {
            in[0][random() % frames] = random() % 2 == 0 ? NAN : INFINITY;
        }
        return frames;
    }
    float value() { return static_cast<float>(random() % 1001) / 1000.0F; }
    float valueFor(std::size_t parameter) {
        const auto& row = kParameterTable[parameter];
        const float value = row.minimum + (row.maximum - row.minimum) * this->value();
        return row.isStepped() ? std::round(value) : value;
    }
};

void playLv2(const char* object) {
    const auto entry = symbolOf<LV2_Descriptor_Function>(object, "lv2_descriptor");
    const LV2_Descriptor* const plugin = entry(0);
    LV2_Handle instance = plugin->instantiate(plugin, kRate, "", nullptr);
    if (instance == nullptr) {
        fail("the LV2 plug-in was not made");
    }
    Signal signal;
    std::array<float, qor::lv2::kPortCount> ports{};
    for (std::uint32_t port = 0; port < ports.size(); ++port) {
        plugin->connect_port(instance, port, &ports[port]);
    }
    for (std::uint32_t c = 0; c < 2; ++c) {
        plugin->connect_port(instance, qor::lv2::kInputLeft + c, signal.in[c].data());
        plugin->connect_port(instance, qor::lv2::kOutputLeft + c, signal.out[c].data());
    }
    for (std::size_t i = 0; i < kParameterCount; ++i) {
        ports[qor::lv2::kFirstParameter + i] = kParameterTable[i].defaultValue;
    }
    for (int activation = 0; activation < 2; ++activation) {
        plugin->activate(instance);
        std::thread([&] {
            for (int block = 0; block < kBlocks / 2; ++block) {
                const std::uint32_t frames = signal.next();
                const std::size_t moved = signal.random() % kParameterCount;
                ports[qor::lv2::kFirstParameter + moved] = signal.valueFor(moved);
                ports[qor::lv2::kEnabled] = signal.random() % 20 == 0 ? 0.0F : 1.0F;
                plugin->run(instance, frames);
            }
        }).join();
        plugin->deactivate(instance);
    }
    plugin->cleanup(instance);
}

/// One block's events, made before the block.
struct Events {
    std::array<clap_event_param_value_t, kMostEvents> events{};
    std::uint32_t count = 0;
    bool blocksOnPurpose = false;
    clap_input_events_t table{this, [](const clap_input_events_t* list) { return self(list).count; },
                              [](const clap_input_events_t* list, std::uint32_t index) {
                                  if (self(list).blocksOnPurpose) {
                                      void* volatile memory =
                                          std::malloc(64 + index); // which nobody may leave out
                                      std::free(memory);
                                  }
                                  return &self(list).events[index].header;
                              }};

    static const Events& self(const clap_input_events_t* list) { return *static_cast<Events*>(list->ctx); }

    void make(Signal& signal, std::uint32_t frames) {
        count = static_cast<std::uint32_t>(signal.random() % kMostEvents);
        for (std::uint32_t i = 0; i < count; ++i) {
            const std::size_t parameter = signal.random() % kParameterCount;
            events[i] = {};
            events[i].header = {sizeof events[i], frames == 0 ? 0 : i * frames / count,
                                CLAP_CORE_EVENT_SPACE_ID, CLAP_EVENT_PARAM_VALUE, 0};
            events[i].param_id = static_cast<clap_id>(parameter);
            events[i].note_id = events[i].port_index = events[i].channel = events[i].key = -1;
            events[i].value = static_cast<double>(signal.valueFor(parameter));
        }
    }
};

void playClap(const char* object, bool blocksOnPurpose) {
    const auto* const entry = symbolOf<const clap_plugin_entry_t*>(object, "clap_entry");
    if (!entry->init(object)) {
        fail("the CLAP object does not start");
    }
    const auto* const factory =
        static_cast<const clap_plugin_factory_t*>(entry->get_factory(CLAP_PLUGIN_FACTORY_ID));
    std::atomic<bool> called{false};
    const clap_host_t host{
        CLAP_VERSION,
        &called,
        "realtime-player",
        "",
        "",
        "1",
        [](const clap_host_t*, const char*) -> const void* { return nullptr; },
        [](const clap_host_t*) {},
        [](const clap_host_t*) {},
        [](const clap_host_t* self) { static_cast<std::atomic<bool>*>(self->host_data)->store(true); }};
    const clap_plugin_t* const plugin =
        factory->create_plugin(factory, &host, factory->get_plugin_descriptor(factory, 0)->id);
    if (plugin == nullptr || !plugin->init(plugin) || !plugin->activate(plugin, kRate, 1, kLargestBlock)) {
        fail("the CLAP plug-in was not made");
    }
    std::atomic<bool> done{false};
    std::thread audio([&] {
        Signal signal;
        Events events;
        events.blocksOnPurpose = blocksOnPurpose;
        clap_output_events_t out{
            nullptr, [](const clap_output_events_t*, const clap_event_header_t*) { return true; }};
        float* in32[2] = {signal.in[0].data(), signal.in[1].data()};
        float* out32[2] = {signal.out[0].data(), signal.out[1].data()};
        clap_audio_buffer_t input{in32, nullptr, 2, 0, 0};
        clap_audio_buffer_t output{out32, nullptr, 2, 0, 0};
        plugin->start_processing(plugin);
        for (int block = 0; block < kBlocks; ++block) {
            const std::uint32_t frames = signal.next();
            events.make(signal, frames);
            const clap_process_t process{-1, frames, nullptr, &input, &output, 1, 1, &events.table, &out};
            plugin->process(plugin, &process);
            if (block % 100 == 0) {
                plugin->reset(plugin);
            }
        }
        plugin->stop_processing(plugin);
        done = true;
    });
    while (!done) { // the host's main thread
        if (called.exchange(false)) {
            plugin->on_main_thread(plugin);
        }
        std::this_thread::yield();
    }
    audio.join();
    plugin->deactivate(plugin);
    plugin->destroy(plugin);
    entry->deinit();
}

} // namespace

int main(int count, char** arguments) {
    if (count < 3) {
        fail("usage: realtime-player LV2-OBJECT CLAP-OBJECT [lv2|clap|control]");
    }
    const std::string only = count > 3 ? arguments[3] : "";
    if (only.empty() || only == "lv2") {
        playLv2(arguments[1]);
    }
    if (only.empty() || only == "clap" || only == "control") {
        playClap(arguments[2], only == "control");
    }
    std::fprintf(stderr, "realtime-player: played\n");
    return 0;
}
