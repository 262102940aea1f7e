#include "hosts/clap/ClapEditQueue.h"

namespace qor::clap {

namespace {

template <class Event>
Event eventAt(std::uint32_t frame, std::uint16_t type) noexcept {
    Event event{};
    event.header.size = sizeof event;
    event.header.time = frame;
    event.header.space_id = CLAP_CORE_EVENT_SPACE_ID;
    event.header.type = type;
    event.header.flags = CLAP_EVENT_IS_LIVE;
    return event;
}

bool send(const Edit& edit, const clap_output_events_t* events, std::uint32_t frame) noexcept {
    if (edit.phase == host::EditPhase::value) {
        auto event = eventAt<clap_event_param_value_t>(frame, CLAP_EVENT_PARAM_VALUE);
        event.param_id = edit.id;
        event.note_id = event.port_index = event.channel = event.key = -1;
        event.value = edit.value;
        return events->try_push(events, &event.header);
    }
    auto event = eventAt<clap_event_param_gesture_t>(frame, edit.phase == host::EditPhase::begin
                                                                ? CLAP_EVENT_PARAM_GESTURE_BEGIN
                                                                : CLAP_EVENT_PARAM_GESTURE_END);
    event.param_id = edit.id;
    return events->try_push(events, &event.header);
}

} // namespace

void sendEdits(ClapEditQueue& edits, const clap_output_events_t* events, std::uint32_t frame) noexcept {
    if (events == nullptr || events->try_push == nullptr) {
        return;
    }
    QOR_UNSEEN_BEGIN // the host's callback
    edits.drain([&](const Edit& edit) { return send(edit, events, frame); });
    QOR_UNSEEN_END
}

} // namespace qor::clap
