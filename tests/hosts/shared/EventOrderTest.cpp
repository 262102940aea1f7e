#include "hosts/shared/EventOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <vector>

using namespace qor::host;

namespace {

std::vector<HostEvent> eventsAt(const std::vector<std::uint32_t>& frames) {
    std::vector<HostEvent> events(frames.size());
    for (std::size_t i = 0; i < frames.size(); ++i) {
        events[i].frame = frames[i];
        events[i].kind = HostEventKind::Parameter;
    }
    return events;
}

std::vector<std::uint32_t> orderOf(const std::vector<HostEvent>& events) {
    const SpanEvents source(events);
    EventOrder order;
    order.prepare(source);
    std::vector<std::uint32_t> indices(events.size());
    for (std::uint32_t i = 0; i < events.size(); ++i) {
        indices[i] = order[i];
    }
    return indices;
}

} // namespace

TEST(EventOrder, LeavesSortedEventsInTheirPlaces) {
    EXPECT_EQ(orderOf(eventsAt({0, 0, 3, 3, 9})), (std::vector<std::uint32_t>{0, 1, 2, 3, 4}));
    EXPECT_TRUE(orderOf({}).empty());
}

TEST(EventOrder, SortsByFrameAndKeepsTheOrderWithinOne) {
    EXPECT_EQ(orderOf(eventsAt({5, 1, 5, 0, 1})), (std::vector<std::uint32_t>{3, 1, 4, 0, 2}));
}

TEST(EventOrder, AgreesWithAStableSortAtAnyLength) {
    std::mt19937 random(7);
    for (const std::size_t length : {2U, 3U, 17U, 1000U, 4095U, 4096U}) {
        std::vector<std::uint32_t> frames(length);
        std::generate(frames.begin(), frames.end(), [&random] { return random() % 64U; });
        frames.front() = 63;
        frames.back() = 0;
        std::vector<std::uint32_t> expected(length);
        std::iota(expected.begin(), expected.end(), 0U);
        std::stable_sort(expected.begin(), expected.end(),
                         [&frames](std::uint32_t a, std::uint32_t b) { return frames[a] < frames[b]; });
        EXPECT_EQ(orderOf(eventsAt(frames)), expected) << length;
    }
}

TEST(EventOrder, LeavesWhatIsBeyondItsRoomBehindTheSortedOnes) {
    std::vector<std::uint32_t> frames(EventOrder::kCapacity + 2, 1);
    frames.front() = 2;
    const std::vector<std::uint32_t> order = orderOf(eventsAt(frames));
    EXPECT_EQ(order[EventOrder::kCapacity - 1], 0U);
    EXPECT_EQ(order[EventOrder::kCapacity], EventOrder::kCapacity);
    EXPECT_EQ(order[EventOrder::kCapacity + 1], EventOrder::kCapacity + 1);
}
