#include "Common/MyMetaEvent.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <numeric>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

TEST(MyMetaEvent, OfNoDataHasSize12AndDataLength0) {
    const qor::MyMetaEvent event(81, Bytes{});
    EXPECT_EQ(event.size, 12);
    event.withMIDIMetaEventPtr([](const platform::MIDIMetaEvent* seen) {
        EXPECT_EQ(seen->metaEventType, 81);
        EXPECT_EQ(seen->dataLength, 0U);
    });
}

TEST(MyMetaEvent, OfThreeZerosHasSize15) {
    const qor::MyMetaEvent event(127, Bytes{0, 0, 0});
    EXPECT_EQ(event.size, 15);
    event.withMIDIMetaEventPtr([](const platform::MIDIMetaEvent* seen) { EXPECT_EQ(seen->dataLength, 3U); });
}

TEST(MyMetaEvent, HoldsItsBytesBehindTheLengthAndZerosElsewhere) {
    Bytes data(300);
    std::iota(data.begin(), data.end(), std::uint8_t{1});
    const qor::MyMetaEvent event(255, data);
    ASSERT_EQ(event.size, 312);
    EXPECT_EQ(event.mem[0], 255);
    EXPECT_EQ((Bytes{event.mem[1], event.mem[2], event.mem[3]}), (Bytes{0, 0, 0}));
    EXPECT_EQ(std::memcmp(event.mem.get() + 8, data.data(), data.size()), 0);
    EXPECT_EQ(Bytes(event.mem.get() + 308, event.mem.get() + 312), Bytes(4));
}

TEST(MyMetaEvent, CallsTheBlockOnceWithItsMemory) {
    const qor::MyMetaEvent event(1, Bytes{9});
    int calls = 0;
    event.withMIDIMetaEventPtr([&](const platform::MIDIMetaEvent* seen) {
        ++calls;
        EXPECT_EQ(static_cast<const void*>(seen), event.mem.get());
        EXPECT_EQ(seen->data[0], 9);
    });
    EXPECT_EQ(calls, 1);
}

TEST(MyMetaEvent, TrialRuns) {
    qor::test_MyMetaEvent();
}
