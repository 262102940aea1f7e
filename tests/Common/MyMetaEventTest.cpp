#include "Common/MyMetaEvent.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <new>
#include <numeric>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

namespace {

/// What the array operators below see while a test watches them.
struct ArrayMemory {
    bool watched = false;
    std::size_t sizes[4] = {};
    void* made[4] = {};
    std::size_t count = 0;
    std::size_t freed = 0;
};
ArrayMemory arrays;

void* arrayOf(std::size_t size) {
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    if (arrays.watched && arrays.count < std::size(arrays.sizes)) {
        arrays.made[arrays.count] = memory;
        arrays.sizes[arrays.count++] = size;
    }
    return memory;
}

void freeArray(void* memory) noexcept {
    for (std::size_t i = 0; arrays.watched && i < arrays.count; ++i) {
        arrays.freed += arrays.made[i] == memory ? 1 : 0;
    }
    std::free(memory);
}

} // namespace

void* operator new[](std::size_t size) {
    return arrayOf(size);
}
void operator delete[](void* memory) noexcept {
    freeArray(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    freeArray(memory);
}

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

TEST(MyMetaEvent, FreesItsMemory) {
    arrays = {};
    arrays.watched = true;
    {
        const qor::MyMetaEvent event(5, Bytes(7));
        EXPECT_EQ(arrays.count, 1U);
        EXPECT_EQ(arrays.made[0], event.mem.get());
        EXPECT_EQ(arrays.freed, 0U);
    }
    arrays.watched = false;
    EXPECT_EQ(arrays.sizes[0], 19U);
    EXPECT_EQ(arrays.freed, 1U);
}

TEST(MyMetaEvent, TheTrialMakesOneOfThreeBytesAndFreesIt) {
    arrays = {};
    arrays.watched = true;
    qor::test_MyMetaEvent();
    arrays.watched = false;
    ASSERT_EQ(arrays.count, 1U);
    EXPECT_EQ(arrays.sizes[0], 15U);
    EXPECT_EQ(arrays.freed, 1U);
}
