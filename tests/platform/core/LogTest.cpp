#include "platform/core/Log.h"
#include "platform/core/LogRing.h"
#include "support/CapturedLog.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

TEST(Log, GoesToTheSinkThatStands) {
    const test::CapturedLog log;
    platform::print("one");
    platform::print("two\nlines");
    EXPECT_EQ(log.lines(), (std::vector<std::string>{"one", "two\nlines"}));
}

TEST(LogRing, PassesLinesOnInOrderAndDrainsAtItsEnd) {
    test::CapturingSink sink;
    {
        platform::LogRing ring(sink);
        for (int i = 0; i < 500; ++i) {
            ring.writeLine(std::to_string(i));
        }
    }
    ASSERT_EQ(sink.lines().size(), 500U);
    for (int i = 0; i < 500; ++i) {
        EXPECT_EQ(sink.lines()[static_cast<std::size_t>(i)], std::to_string(i));
    }
}

TEST(LogRing, CountsEveryLineThatItCannotTake) {
    constexpr int kLines = 20000;
    test::CapturingSink sink;
    std::uint64_t dropped = 0;
    {
        platform::LogRing ring(sink);
        std::thread other([&ring] {
            for (int i = 0; i < kLines; ++i) {
                ring.writeLine("other");
            }
        });
        for (int i = 0; i < kLines; ++i) {
            ring.writeLine("own");
        }
        other.join();
        dropped = ring.droppedLines();
    }
    EXPECT_EQ(sink.lines().size() + dropped, 2U * kLines);
}

TEST(LogRing, CutsALineThatIsTooLong) {
    test::CapturingSink sink;
    {
        platform::LogRing ring(sink);
        ring.writeLine(std::string(1000, 'x'));
    }
    EXPECT_EQ(sink.lines(), std::vector<std::string>{std::string(platform::LogRing::kLineLength, 'x')});
}
