#include "ClapGuiFixture.h"

#include "hosts/clap/ClapMoreExtensions.h"

#include <chrono>
#include <poll.h>
#include <thread>

#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>

namespace test {

OutputEvents::OutputEvents() {
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

std::string nameOf(Offer offer) {
    switch (offer) {
    case Offer::timers:
        return "Timers";
    case Offer::timersAndDescriptors:
        return "TimersAndDescriptors";
    case Offer::descriptors:
        return "Descriptors";
    case Offer::nothing:
        break;
    }
    return "Nothing";
}

ClapEditorUnderTest::ClapEditorUnderTest(Offer offer) {
    host.offersTimers = offer == Offer::timers || offer == Offer::timersAndDescriptors;
    host.offersDescriptors = offer == Offer::descriptors || offer == Offer::timersAndDescriptors;
    plugin = std::make_unique<ClapPluginUnderTest>(host);
    gui = static_cast<const clap_plugin_gui_t*>((*plugin)->get_extension(plugin->get(), CLAP_EXT_GUI));
}

bool ClapEditorUnderTest::openIn(Window parent) {
    clap_window_t window{};
    window.api = CLAP_WINDOW_API_X11;
    window.x11 = parent;
    return gui->create(plugin->get(), CLAP_WINDOW_API_X11, false) && gui->set_scale(plugin->get(), 1.0) &&
           gui->set_parent(plugin->get(), &window) && gui->show(plugin->get());
}

void ClapEditorUnderTest::turn() {
    if (firesTimers) {
        const auto& timers = plugin->extension<clap_plugin_timer_support_t>(CLAP_EXT_TIMER_SUPPORT);
        for (const auto& [id, period] : std::map(host.timers)) {
            timers.on_timer(plugin->get(), id);
        }
    }
    std::vector<pollfd> waiting;
    for (const auto& [descriptor, flags] : host.descriptors) {
        EXPECT_EQ(flags, qor::clap::kDescriptorReadable);
        waiting.push_back({.fd = descriptor, .events = POLLIN, .revents = 0});
    }
    if (!waiting.empty() && ::poll(waiting.data(), waiting.size(), 0) > 0) {
        const auto& descriptors = plugin->extension<qor::clap::PluginDescriptors>(qor::clap::kExtDescriptors);
        for (const pollfd& one : waiting) {
            EXPECT_EQ(one.revents & POLLNVAL, 0) << "a closed descriptor is still registered";
            if (one.revents != 0 && host.descriptors.contains(one.fd)) {
                descriptors.onDescriptor(plugin->get(), one.fd, qor::clap::kDescriptorReadable);
            }
        }
    }
    if (host.callbacksAsked.exchange(0) != 0) {
        (*plugin)->on_main_thread(plugin->get());
    }
}

std::vector<OutputEvents::Told> ClapEditorUnderTest::flushed() {
    OutputEvents out;
    const ClapEventList none;
    plugin->params().flush(plugin->get(), none.table(), &out.table);
    return out.told;
}

ClapGuiTest::ClapGuiTest() : display(XOpenDisplay(nullptr)) {
    EXPECT_NE(display, nullptr) << "these tests need a display; tests/support/with-xvfb.sh gives one";
}

ClapGuiTest::~ClapGuiTest() {
    XCloseDisplay(display);
}

Window ClapGuiTest::makeParent(int x, int y) {
    const Window parent = XCreateSimpleWindow(display, DefaultRootWindow(display), x, y, 512, 392, 0, 0, 0);
    XSetWindowAttributes attributes{};
    attributes.override_redirect = True; // no window manager is asked: it lies where it was put
    XChangeWindowAttributes(display, parent, CWOverrideRedirect, &attributes);
    XMapRaised(display, parent);
    XSync(display, False);
    return parent;
}

std::vector<Window> ClapGuiTest::children(Window parent) {
    Window root = 0;
    Window above = 0;
    Window* list = nullptr;
    unsigned count = 0;
    XQueryTree(display, parent, &root, &above, &list, &count);
    std::vector<Window> found(list, list + count);
    if (list != nullptr) {
        XFree(list);
    }
    return found;
}

bool ClapGuiTest::turnUntil(const std::function<bool()>& holds) {
    for (int i = 0; i < 1000; ++i) {
        for (ClapEditorUnderTest* one : turned) {
            one->turn();
        }
        if (holds()) {
            return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5)); // the display's side of things
    }
    return false;
}

void ClapGuiTest::turn(int times) {
    int left = times;
    turnUntil([&left] { return --left <= 0; });
}

void ClapGuiTest::motion(int x, int y) {
    XTestFakeMotionEvent(display, -1, x, y, 0);
    XSync(display, False);
    turn(5);
}

void ClapGuiTest::button(bool down) {
    XTestFakeButtonEvent(display, 1, down ? True : False, 0);
    XSync(display, False);
    turn(5);
}

void ClapGuiTest::dragTrim(int pixels, int x) {
    motion(x + 83, 200);
    button(true);
    motion(x + 83, 200 - pixels / 2);
    motion(x + 83, 200 - pixels);
    button(false);
}

std::string ClapGuiTest::knobPicture(Window editor) {
    constexpr int kSide = 70;
    XImage* image = XGetImage(display, editor, 48, 165, kSide, kSide, AllPlanes, ZPixmap);
    if (image == nullptr) {
        ADD_FAILURE() << "no picture of the window";
        return {};
    }
    const std::string bytes(image->data, static_cast<std::size_t>(image->bytes_per_line) * kSide);
    XDestroyImage(image);
    return bytes;
}

} // namespace test
