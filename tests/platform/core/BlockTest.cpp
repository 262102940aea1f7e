#include "platform/core/Block.h"

#include <gtest/gtest.h>

#include <memory>

using platform::Block;

TEST(Block, IsAbsentUntilItHoldsACallable) {
    Block<int(int)> block;
    EXPECT_FALSE(block);
    EXPECT_EQ(block.useCount(), 0U);
    block = [](int x) { return x + 1; };
    ASSERT_TRUE(block);
    EXPECT_EQ(block(41), 42);
    block = nullptr;
    EXPECT_FALSE(block);
}

TEST(Block, CopiesShareOneBodyAndTheLastOneFreesIt) {
    auto held = std::make_shared<int>(7);
    Block<int()> first = [held] { return *held; };
    EXPECT_EQ(held.use_count(), 2);
    {
        Block<int()> second =
            first; // NOLINT(performance-unnecessary-copy-initialization): the copy is the point
        EXPECT_EQ(second, first);
        EXPECT_EQ(first.useCount(), 2U);
        EXPECT_EQ(held.use_count(), 2);
        EXPECT_EQ(second(), 7);
    }
    EXPECT_EQ(first.useCount(), 1U);
    first = nullptr;
    EXPECT_EQ(held.use_count(), 1);
}

TEST(Block, TwoBlocksOfTheSameCallableAreNotTheSameBlock) {
    auto callable = [] { return 1; };
    Block<int()> a = callable;
    Block<int()> b = callable;
    EXPECT_FALSE(a == b);
}
