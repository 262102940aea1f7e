#include "hosts/shared/FlushToZero.h"
#include "HostRendering.h"
#include "kernel/ParameterAddresses.h"
#include "support/CapturedLog.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace {

using namespace qor;
using namespace qor::host;

/// Half of the smallest normal number, computed here and now.
float halfOfTheSmallest() {
    volatile float smallest = std::numeric_limits<float>::min();
    return smallest * 0.5F;
}

TEST(FlushToZero, TakesDenormalsForZeroWithinItsScopeOnly) {
    ASSERT_GT(halfOfTheSmallest(), 0.0F);
    {
        const FlushToZero scope(true);
        EXPECT_EQ(halfOfTheSmallest(), 0.0F);
    }
    EXPECT_GT(halfOfTheSmallest(), 0.0F);
}

TEST(FlushToZero, LeavesTheModeAloneWhenNotWanted) {
    const FlushToZero scope(false);
    EXPECT_GT(halfOfTheSmallest(), 0.0F);
}

TEST(FlushToZero, GivesBackASettingThatTheCallerHadMade) {
    const FlushToZero callers(true);
    { const FlushToZero ours(true); }
    EXPECT_EQ(halfOfTheSmallest(), 0.0F);
}

/// The half of a denormal-sized dry signal that the mix lets through.
float renderedDenormal(bool flush) {
    test::CapturedLog log;
    UnitHostOptions options;
    options.serviced = false;
    options.flushToZero = flush;
    const auto host = UnitHost::create(options).value();
    EXPECT_TRUE(host->activate(48000.0));
    EXPECT_TRUE(host->setParameter(kLimiterFinalLimiter, 0.0F));
    EXPECT_TRUE(host->setParameter(kLimiterMix, 0.5F));
    std::array<float, 16> both{};
    both.fill(1e-40F);
    float* const places[2] = {both.data(), both.data()};
    host->render(places, places, 16, SpanEvents({}));
    EXPECT_GT(halfOfTheSmallest(), 0.0F); // the caller's setting is back
    return both[8];
}

TEST(FlushToZero, HoldsForARenderCallIfTheHostWantsIt) {
    EXPECT_EQ(renderedDenormal(true), 0.0F);
    EXPECT_GT(renderedDenormal(false), 0.0F);
}

} // namespace
