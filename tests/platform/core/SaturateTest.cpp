#include "platform/core/Saturate.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace {

using platform::saturatingCast;
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr auto kMax = std::numeric_limits<std::int32_t>::max();
constexpr auto kMin = std::numeric_limits<std::int32_t>::min();

TEST(Saturate, TruncatesTowardZero) {
    EXPECT_EQ(saturatingCast<std::int32_t>(1.9F), 1);
    EXPECT_EQ(saturatingCast<std::int32_t>(-1.9F), -1);
    EXPECT_EQ(saturatingCast<std::int32_t>(-0.5F), 0);
    EXPECT_EQ(saturatingCast<std::int64_t>(-3.99), -3);
}

TEST(Saturate, EndsAtTheRangeOfTheInteger) {
    EXPECT_EQ(saturatingCast<std::int32_t>(2147483648.0F), kMax);
    EXPECT_EQ(saturatingCast<std::int32_t>(2147483520.0F), 2147483520);
    EXPECT_EQ(saturatingCast<std::int32_t>(kInfinity), kMax);
    EXPECT_EQ(saturatingCast<std::int32_t>(-2147483648.0F), kMin);
    EXPECT_EQ(saturatingCast<std::int32_t>(-kInfinity), kMin);
    EXPECT_EQ(saturatingCast<std::int64_t>(1e30), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(saturatingCast<std::int64_t>(-1e30), std::numeric_limits<std::int64_t>::min());
}

TEST(Saturate, UnsignedRangesEndAtZero) {
    EXPECT_EQ(saturatingCast<std::uint32_t>(-0.5), 0U);
    EXPECT_EQ(saturatingCast<std::uint32_t>(-1e9), 0U);
    EXPECT_EQ(saturatingCast<std::uint32_t>(4294967295.5), 4294967295U);
    EXPECT_EQ(saturatingCast<std::uint32_t>(4294967296.0), 4294967295U);
}

TEST(Saturate, NaNGivesZero) {
    EXPECT_EQ(saturatingCast<std::int32_t>(std::numeric_limits<float>::quiet_NaN()), 0);
    EXPECT_EQ(saturatingCast<std::int64_t>(std::numeric_limits<double>::quiet_NaN()), 0);
}

} // namespace
