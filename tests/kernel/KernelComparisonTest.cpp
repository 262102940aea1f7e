#include "kernel/comparison/Comparison.h"
#include "support/CapturedLog.h"

#include <gtest/gtest.h>

TEST(KernelComparison, RandomWorkAgreesWithTheModelBitForBit) {
    platform::LogSink& before = platform::setLogSink(platform::discardingSink());
    for (std::uint32_t seed = 1; seed <= 200; ++seed) {
        const std::string difference = comparison::compareLife(seed);
        EXPECT_EQ(difference, "");
        if (!difference.empty()) {
            break;
        }
    }
    platform::setLogSink(before);
}
