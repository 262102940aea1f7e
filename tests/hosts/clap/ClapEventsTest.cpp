#include "hosts/clap/ClapEvents.h"

#include <gtest/gtest.h>

#include <vector>

using qor::clap::toHostEvent;
using qor::host::HostEventKind;

namespace {

clap_event_midi_t midi(std::uint8_t a, std::uint8_t b = 1, std::uint8_t c = 2) {
    return {{sizeof(clap_event_midi_t), 42, CLAP_CORE_EVENT_SPACE_ID, CLAP_EVENT_MIDI, 0}, 0, {a, b, c}};
}

} // namespace

TEST(ClapEvents, MidiKeepsItsFrameItsBytesAndItsLength) {
    struct Row {
        std::uint8_t status;
        int length;
    };
    for (const Row row :
         {Row{0x80, 3}, Row{0x9F, 3}, Row{0xA0, 3}, Row{0xB5, 3}, Row{0xC0, 2}, Row{0xD3, 2}, Row{0xE0, 3},
          Row{0xF1, 2}, Row{0xF2, 3}, Row{0xF3, 2}, Row{0xF6, 1}, Row{0xF8, 1}, Row{0xFF, 1}}) {
        const clap_event_midi_t event = midi(row.status);
        const auto made = toHostEvent(&event.header);
        EXPECT_EQ(made.kind, HostEventKind::Midi) << int{row.status};
        EXPECT_EQ(made.length, row.length) << int{row.status};
        EXPECT_EQ(made.frame, 42U);
        EXPECT_EQ(made.bytes[0], row.status);
        EXPECT_EQ(made.bytes[1], row.length > 1 ? 1 : 0);
    }
    for (const std::uint8_t status : {0x00, 0x7F, 0xF0, 0xF4, 0xF5, 0xF7}) {
        const clap_event_midi_t event = midi(status);
        EXPECT_EQ(toHostEvent(&event.header).kind, HostEventKind::None) << int{status};
    }
}

TEST(ClapEvents, SysExRefersToTheHostsBytes) {
    const std::vector<std::uint8_t> bytes{0xF0, 1, 2, 0xF7};
    clap_event_midi_sysex_t event{
        {sizeof(clap_event_midi_sysex_t), 7, CLAP_CORE_EVENT_SPACE_ID, CLAP_EVENT_MIDI_SYSEX, 0},
        0,
        bytes.data(),
        4};
    const auto made = toHostEvent(&event.header);
    EXPECT_EQ(made.kind, HostEventKind::SysEx);
    EXPECT_EQ(made.frame, 7U);
    EXPECT_EQ(made.sysEx.data(), bytes.data());
    EXPECT_EQ(made.sysEx.size(), 4U);
    event.buffer = nullptr;
    EXPECT_EQ(toHostEvent(&event.header).kind, HostEventKind::None);
}

TEST(ClapEvents, AStretchHasItsOwnEventsOnlyAndTheLastOneThoseBehindTheEnd) {
    const std::vector<clap_event_midi_t> all = [] {
        std::vector<clap_event_midi_t> events;
        for (const std::uint32_t time : {0U, 9U, 10U, 19U, 20U, 500U}) {
            events.push_back(midi(0x90));
            events.back().header.time = time;
        }
        return events;
    }();
    clap_input_events_t list{};
    list.ctx = const_cast<std::vector<clap_event_midi_t>*>(&all);
    list.size = [](const clap_input_events_t*) { return 6U; };
    list.get = [](const clap_input_events_t* self, std::uint32_t index) {
        return &(*static_cast<const std::vector<clap_event_midi_t>*>(self->ctx))[index].header;
    };
    const auto framesOf = [&](std::uint32_t start, std::uint32_t end, bool isLast) {
        std::vector<std::uint32_t> frames;
        const qor::clap::StretchEvents stretch(&list, start, end, isLast);
        for (std::uint32_t i = 0; i < stretch.size(); ++i) {
            if (const auto event = stretch.at(i); event.kind != HostEventKind::None) {
                frames.push_back(event.frame);
            }
        }
        return frames;
    };
    EXPECT_EQ(framesOf(0, 10, false), (std::vector<std::uint32_t>{0, 9}));
    EXPECT_EQ(framesOf(10, 20, false), (std::vector<std::uint32_t>{0, 9}));
    EXPECT_EQ(framesOf(20, 30, true), (std::vector<std::uint32_t>{0, 480}));
    EXPECT_EQ(qor::clap::eventCount(nullptr), 0U);
}
