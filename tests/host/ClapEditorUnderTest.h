// A plug-in with an editor in a host of its own, whose loop a test turns.
#pragma once

#include "ClapTestHost.h"

#include <clap/ext/gui.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace test {

/// What the plug-in tells the host.
struct OutputEvents {
    struct Told {
        std::uint16_t type;
        clap_id id;
        double value;
    };
    OutputEvents();
    OutputEvents(const OutputEvents&) = delete;
    OutputEvents& operator=(const OutputEvents&) = delete;

    std::vector<Told> told;
    clap_output_events_t table{};
};

/// What a host has for the plug-in's main thread.
enum class Offer : std::uint8_t { timers, timersAndDescriptors, descriptors, nothing };
std::string nameOf(Offer offer);

class ClapEditorUnderTest {
public:
    explicit ClapEditorUnderTest(Offer offer);

    /// Creates the editor at scale 1 and shows it in a window of the host's, by its number.
    bool openIn(unsigned long parent);
    void close() { gui->destroy(plugin->get()); }
    /// One turn of the host's loop: its timers, the descriptors that are readable, the calls asked for.
    void turn();
    /// Edits that wait for the host.
    std::vector<OutputEvents::Told> flushed();

    ClapTestHost host;
    std::unique_ptr<ClapPluginUnderTest> plugin;
    const clap_plugin_gui_t* gui = nullptr;
    bool firesTimers = true;
    int badDescriptors = 0; // found closed while still registered, or registered for more than input
};

} // namespace test
