#include "hosts/standalone/StopSignal.h"

#include <gtest/gtest.h>

#include <csignal>
#include <poll.h>

namespace qor::app {
namespace {

bool readable(const StopSignal& stop) {
    pollfd waiting{.fd = stop.descriptor(), .events = POLLIN, .revents = 0};
    return ::poll(&waiting, 1, 0) == 1;
}

TEST(StopSignal, WakesTheProgramForEachOfItsSignals) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        const StopSignal stop;
        EXPECT_FALSE(stop.came());
        EXPECT_FALSE(readable(stop));
        std::raise(signal);
        EXPECT_TRUE(stop.came());
        EXPECT_TRUE(readable(stop));
    }
}

TEST(StopSignalDeathTest, LetsASecondSignalEndTheProcess) {
    EXPECT_EXIT(
        {
            const StopSignal stop;
            std::raise(SIGTERM);
            std::raise(SIGTERM);
        },
        ::testing::KilledBySignal(SIGTERM), "");
}

} // namespace
} // namespace qor::app
