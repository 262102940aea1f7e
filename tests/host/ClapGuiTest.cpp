// The editor in a real window, as a CLAP host shows it. Needs a display.
#include "ClapTestHost.h"
#include "support/CapturedLog.h"

#include <clap/ext/gui.h>
#include <clap/ext/timer-support.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <functional>
#include <thread>

// Behind the others, as they define common words.
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>

using namespace test;

namespace {

constexpr clap_id kTrim = 4;

/// What the plug-in tells the host.
struct OutputEvents {
    struct Told {
        std::uint16_t type;
        clap_id id;
        double value;
    };
    OutputEvents() {
        table.ctx = this;
        table.try_push = [](const clap_output_events_t* list, const clap_event_header_t* header) {
            auto& kept = static_cast<OutputEvents*>(list->ctx)->told;
            if (header->type == CLAP_EVENT_PARAM_VALUE) {
                const auto* event = reinterpret_cast<const clap_event_param_value_t*>(header);
                kept.push_back({header->type, event->param_id, event->value});
            } else {
                const auto* event = reinterpret_cast<const clap_event_param_gesture_t*>(header);
                kept.push_back({header->type, event->param_id, 0.0});
            }
            return true;
        };
    }
    std::vector<Told> told;
    clap_output_events_t table{};
};

class ClapGui : public ::testing::Test {
protected:
    ClapGui() {
        host.offersTimers = true;
        plugin = std::make_unique<ClapPluginUnderTest>(host);
        gui = static_cast<const clap_plugin_gui_t*>((*plugin)->get_extension(plugin->get(), CLAP_EXT_GUI));
        display = XOpenDisplay(nullptr);
    }
    ~ClapGui() override {
        plugin.reset();
        XCloseDisplay(display);
    }
    Window makeParent(unsigned width, unsigned height) {
        const Window parent =
            XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, width, height, 0, 0, 0);
        XSetWindowAttributes attributes{};
        attributes.override_redirect = True; // no window manager is asked: it lies at 0, 0
        XChangeWindowAttributes(display, parent, CWOverrideRedirect, &attributes);
        XMapRaised(display, parent);
        XSync(display, False);
        return parent;
    }
    bool openIn(Window parent) {
        clap_window_t window{};
        window.api = CLAP_WINDOW_API_X11;
        window.x11 = parent;
        return gui->create(plugin->get(), CLAP_WINDOW_API_X11, false) && gui->set_scale(plugin->get(), 1.0) &&
               gui->set_parent(plugin->get(), &window) && gui->show(plugin->get());
    }
    /// Calls the plug-in's timer until something holds; false if it never does.
    bool pumpUntil(const std::function<bool()>& holds) {
        const auto& timers = plugin->extension<clap_plugin_timer_support_t>(CLAP_EXT_TIMER_SUPPORT);
        for (int i = 0; i < 400; ++i) {
            timers.on_timer(plugin->get(), host.timers.begin()->first);
            if (holds()) {
                return true;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return false;
    }
    void pump(int times) {
        int left = times;
        pumpUntil([&left] { return --left == 0; });
    }
    void motion(int x, int y) {
        XTestFakeMotionEvent(display, -1, x, y, 0);
        XSync(display, False);
        pump(5);
    }
    void button(bool down) {
        XTestFakeButtonEvent(display, 1, down ? True : False, 0);
        XSync(display, False);
        pump(5);
    }
    std::vector<OutputEvents::Told> flushed() {
        OutputEvents out;
        const ClapEventList none;
        plugin->params().flush(plugin->get(), none.table(), &out.table);
        return out.told;
    }
    unsigned children(Window parent) {
        Window root = 0;
        Window above = 0;
        Window* list = nullptr;
        unsigned count = 0;
        XQueryTree(display, parent, &root, &above, &list, &count);
        if (list != nullptr) {
            XFree(list);
        }
        return count;
    }

    CapturedLog log;
    ClapTestHost host;
    std::unique_ptr<ClapPluginUnderTest> plugin;
    const clap_plugin_gui_t* gui = nullptr;
    Display* display = nullptr;
};

} // namespace

TEST_F(ClapGui, OffersX11EmbeddedAndFloatingAndNothingElse) {
    ASSERT_NE(gui, nullptr);
    EXPECT_TRUE(gui->is_api_supported(plugin->get(), CLAP_WINDOW_API_X11, false));
    EXPECT_TRUE(gui->is_api_supported(plugin->get(), CLAP_WINDOW_API_X11, true));
    EXPECT_FALSE(gui->is_api_supported(plugin->get(), CLAP_WINDOW_API_WAYLAND, true));
    EXPECT_FALSE(gui->is_api_supported(plugin->get(), nullptr, false));
    const char* api = nullptr;
    bool isFloating = true;
    EXPECT_TRUE(gui->get_preferred_api(plugin->get(), &api, &isFloating));
    EXPECT_STREQ(api, CLAP_WINDOW_API_X11);
    EXPECT_FALSE(isFloating);
}

TEST_F(ClapGui, OffersNoEditorToAHostWithoutTimers) {
    ClapTestHost bare;
    const ClapPluginUnderTest other(bare);
    EXPECT_FALSE(gui->is_api_supported(other.get(), CLAP_WINDOW_API_X11, false));
    EXPECT_FALSE(gui->create(other.get(), CLAP_WINDOW_API_X11, false));
}

TEST_F(ClapGui, TellsItsSizeBeforeItHasAParentAndKeepsItsAspect) {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    EXPECT_FALSE(gui->get_size(plugin->get(), &width, &height)); // not created
    ASSERT_TRUE(gui->create(plugin->get(), CLAP_WINDOW_API_X11, false));
    ASSERT_TRUE(gui->get_size(plugin->get(), &width, &height));
    EXPECT_EQ(width, 512U);
    const std::uint32_t single = height;
    ASSERT_TRUE(gui->set_scale(plugin->get(), 2.0));
    ASSERT_TRUE(gui->get_size(plugin->get(), &width, &height));
    EXPECT_EQ(width, 1024U);
    EXPECT_EQ(height, 2 * single);
    width = 2000;
    height = single;
    EXPECT_TRUE(gui->adjust_size(plugin->get(), &width, &height));
    EXPECT_EQ(width, 512U);
    EXPECT_EQ(height, single);
    gui->destroy(plugin->get());
}

TEST_F(ClapGui, ADragReachesTheUnitAndTheHostAsOneGesture) {
    const Window parent = makeParent(512, 392);
    ASSERT_TRUE(openIn(parent));
    ASSERT_TRUE(pumpUntil([&] { return children(parent) == 1; }));
    pump(20);
    const double before = plugin->value(kTrim);
    motion(83, 200);
    button(true);
    motion(83, 185);
    motion(83, 170);
    button(false);
    EXPECT_GT(plugin->value(kTrim), before + 0.1);
    const auto told = flushed();
    ASSERT_GE(told.size(), 3U);
    EXPECT_EQ(told.front().type, CLAP_EVENT_PARAM_GESTURE_BEGIN);
    EXPECT_EQ(told.back().type, CLAP_EVENT_PARAM_GESTURE_END);
    for (std::size_t i = 0; i < told.size(); ++i) {
        EXPECT_EQ(told[i].id, kTrim);
        EXPECT_EQ(told[i].type == CLAP_EVENT_PARAM_VALUE, i != 0 && i + 1 != told.size());
    }
    EXPECT_EQ(told[told.size() - 2].value, plugin->value(kTrim));
    gui->destroy(plugin->get());
    XDestroyWindow(display, parent);
}

TEST_F(ClapGui, OpensAgainAndAgainWithOneConnectionToTheUnit) {
    for (int i = 0; i < 10; ++i) {
        const Window parent = makeParent(512, 392);
        ASSERT_TRUE(openIn(parent)) << i;
        EXPECT_FALSE(gui->create(plugin->get(), CLAP_WINDOW_API_X11, false));
        pump(3);
        gui->destroy(plugin->get());
        EXPECT_EQ(children(parent), 0U);
        XDestroyWindow(display, parent);
    }
}

TEST_F(ClapGui, SurvivesTheEndOfItsParentAndOfTheInstanceWhileOpen) {
    const Window parent = makeParent(512, 392);
    ASSERT_TRUE(openIn(parent));
    pump(3);
    XDestroyWindow(display, parent);
    XSync(display, False);
    pump(10);
    gui->destroy(plugin->get());
    const Window second = makeParent(512, 392);
    ASSERT_TRUE(openIn(second));
    pump(3);
    plugin.reset();
    XDestroyWindow(display, second);
    plugin = std::make_unique<ClapPluginUnderTest>(host);
}

TEST_F(ClapGui, RefusesAParentThatIsNotThere) {
    ASSERT_TRUE(gui->create(plugin->get(), CLAP_WINDOW_API_X11, false));
    clap_window_t window{};
    window.api = CLAP_WINDOW_API_X11;
    window.x11 = 0x7FFFFFF0;
    EXPECT_FALSE(gui->set_parent(plugin->get(), &window));
    EXPECT_FALSE(gui->set_parent(plugin->get(), nullptr));
    gui->destroy(plugin->get());
}
