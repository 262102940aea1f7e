#include "ClapEditorUnderTest.h"

#include "hosts/clap/ClapMoreExtensions.h"

#include <clap/ext/timer-support.h>

#include <poll.h>

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

bool ClapEditorUnderTest::openIn(unsigned long parent) {
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
        badDescriptors += flags == qor::clap::kDescriptorReadable ? 0 : 1;
        waiting.push_back({.fd = descriptor, .events = POLLIN, .revents = 0});
    }
    if (!waiting.empty() && ::poll(waiting.data(), waiting.size(), 0) > 0) {
        const auto& descriptors = plugin->extension<qor::clap::PluginDescriptors>(qor::clap::kExtDescriptors);
        for (const pollfd& one : waiting) {
            badDescriptors += (one.revents & POLLNVAL) == 0 ? 0 : 1;
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

} // namespace test
