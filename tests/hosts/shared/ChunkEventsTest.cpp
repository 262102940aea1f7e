#include "hosts/shared/ChunkEvents.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

using namespace qor::host;
using platform::AURenderEvent;

namespace {

HostEvent parameterEvent(std::uint32_t address, float value) {
    HostEvent event;
    event.kind = HostEventKind::Parameter;
    event.address = address;
    event.value = value;
    return event;
}

} // namespace

TEST(ChunkEvents, LinksEventsInTheOrderOfTheirArrival) {
    const auto events = std::make_unique<ChunkEvents>();
    events->clear();
    EXPECT_EQ(events->head(), nullptr);
    events->add(parameterEvent(3, 0.5F), 100);
    HostEvent midi;
    midi.kind = HostEventKind::Midi;
    midi.length = 2;
    midi.bytes[0] = 0xC0;
    midi.bytes[1] = 5;
    events->add(midi, 101);

    const AURenderEvent* first = events->head();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->head.eventType, platform::AURenderEventParameter);
    EXPECT_EQ(first->parameter.eventSampleTime, 100);
    EXPECT_EQ(first->parameter.parameterAddress, 3U);
    EXPECT_EQ(first->parameter.value, 0.5F);
    const AURenderEvent* second = first->head.next;
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(second->head.eventType, platform::AURenderEventMIDI);
    EXPECT_EQ(second->MIDI.length, 2);
    EXPECT_EQ(second->MIDI.data[1], 5);
    EXPECT_EQ(second->head.next, nullptr);
}

TEST(ChunkEvents, SystemExclusiveBytesStandInOnePieceBehindTheirEvent) {
    const auto events = std::make_unique<ChunkEvents>();
    events->clear();
    std::vector<std::uint8_t> message(300);
    for (std::size_t i = 0; i < message.size(); ++i) {
        message[i] = static_cast<std::uint8_t>(i);
    }
    HostEvent sysEx;
    sysEx.kind = HostEventKind::SysEx;
    sysEx.sysEx = message;
    events->add(sysEx, 7);
    ASSERT_NE(events->head(), nullptr);
    EXPECT_EQ(events->head()->head.eventType, platform::AURenderEventMIDISysEx);
    EXPECT_EQ(events->head()->MIDI.length, 300);
    const auto* bytes =
        reinterpret_cast<const std::uint8_t*>(events->head()) + offsetof(platform::AUMIDIEvent, data);
    EXPECT_TRUE(std::equal(message.begin(), message.end(), bytes));
}

TEST(ChunkEvents, DropsASystemExclusiveMessageThatFindsNoRoomAndKeepsTheRest) {
    const auto events = std::make_unique<ChunkEvents>();
    events->clear();
    const std::vector<std::uint8_t> message(ChunkEvents::kSysExBytes + 1);
    HostEvent sysEx;
    sysEx.kind = HostEventKind::SysEx;
    sysEx.sysEx = message;
    events->add(sysEx, 1);
    events->add(parameterEvent(1, 1.0F), 2);
    ASSERT_NE(events->head(), nullptr);
    EXPECT_EQ(events->head()->head.eventType, platform::AURenderEventParameter);
    EXPECT_EQ(events->head()->head.next, nullptr);
}
