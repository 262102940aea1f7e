// The editor in a real window, as a CLAP host shows it. Needs a display.
#pragma once

#include "ClapTestHost.h"
#include "support/CapturedLog.h"

#include <clap/ext/gui.h>
#include <clap/ext/timer-support.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

// Behind the others, as they define common words.
#include <X11/Xlib.h>

namespace test {

constexpr clap_id kTrim = 4;

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

/// A plug-in in a host of its own, with an editor.
class ClapEditorUnderTest {
public:
    explicit ClapEditorUnderTest(Offer offer);

    /// Creates the editor at scale 1 and shows it in a window of the host's.
    bool openIn(Window parent);
    void close() { gui->destroy(plugin->get()); }
    /// One turn of the host's loop: its timers, the descriptors that are readable, the calls asked for.
    void turn();
    /// Edits that wait for the host.
    std::vector<OutputEvents::Told> flushed();

    ClapTestHost host;
    std::unique_ptr<ClapPluginUnderTest> plugin;
    const clap_plugin_gui_t* gui = nullptr;
    bool firesTimers = true;
};

class ClapGuiTest : public ::testing::Test {
protected:
    ClapGuiTest();
    ~ClapGuiTest() override;

    Window makeParent(int x = 0, int y = 0);
    std::vector<Window> children(Window parent);
    /// Turns the hosts' loops until something holds; false if it never does.
    bool turnUntil(const std::function<bool()>& holds);
    void turn(int times);
    // From the devices; places are the screen's.
    void motion(int x, int y);
    void button(bool down);
    /// Drags the knob "gain" of an editor at the screen's upper left corner by so many pixels upwards.
    void dragTrim(int pixels, int x = 0);
    /// The picture of the knob "gain" as the window shows it.
    std::string knobPicture(Window editor);

    CapturedLog log;
    Display* display;
    std::vector<ClapEditorUnderTest*> turned; // whose loops turn
};

} // namespace test
