#include "hosts/clap/ClapEditQueue.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

using namespace qor::clap;
using qor::host::EditPhase;

namespace {

std::vector<Edit> takeAll(ClapEditQueue& queue) {
    std::vector<Edit> taken;
    queue.drain([&taken](const Edit& edit) {
        taken.push_back(edit);
        return true;
    });
    return taken;
}

} // namespace

TEST(ClapEditQueue, GivesEditsInTheOrderOfTheirArrival) {
    const auto queue = std::make_unique<ClapEditQueue>();
    EXPECT_TRUE(queue->push({3, EditPhase::begin, 0.0}));
    EXPECT_TRUE(queue->push({3, EditPhase::value, 0.25}));
    EXPECT_TRUE(queue->push({3, EditPhase::end, 0.0}));
    const std::vector<Edit> taken = takeAll(*queue);
    ASSERT_EQ(taken.size(), 3U);
    EXPECT_EQ(taken[0].phase, EditPhase::begin);
    EXPECT_EQ(taken[1].value, 0.25);
    EXPECT_EQ(taken[2].phase, EditPhase::end);
    EXPECT_TRUE(takeAll(*queue).empty());
}

TEST(ClapEditQueue, KeepsWhatTheHostRefusesForTheNextTime) {
    const auto queue = std::make_unique<ClapEditQueue>();
    queue->push({1, EditPhase::value, 0.5});
    queue->drain([](const Edit&) { return false; });
    EXPECT_EQ(takeAll(*queue).size(), 1U);
}

TEST(ClapEditQueue, ValuesGiveWayBeforeGestures) {
    const auto queue = std::make_unique<ClapEditQueue>();
    std::uint32_t values = 0;
    while (queue->push({1, EditPhase::value, 0.5})) {
        ++values;
    }
    EXPECT_EQ(values, ClapEditQueue::kCapacity - ClapEditQueue::kKeptForGestures);
    EXPECT_TRUE(queue->push({1, EditPhase::end, 0.0}));
    EXPECT_FALSE(queue->push({1, EditPhase::value, 0.75}));
    EXPECT_EQ(takeAll(*queue).back().phase, EditPhase::end);
}
