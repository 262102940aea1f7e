#include "hosts/cli/Progress.h"

#include "TemporaryFolder.h"

#include <gtest/gtest.h>

using qor::cli::Progress;

TEST(Progress, TheBarFillsWithTheShareOfTheWork) {
    EXPECT_EQ(Progress::line(0), "[" + std::string(40, '.') + "]   0 %");
    EXPECT_EQ(Progress::line(50), "[" + std::string(20, '#') + std::string(20, '.') + "]  50 %");
    EXPECT_EQ(Progress::line(100), "[" + std::string(40, '#') + "] 100 %");
}

TEST(Progress, NothingIsDrawnWhereThereIsNoTerminal) {
    const test::TemporaryFolder folder;
    std::FILE* file = std::fopen(folder.path("out").c_str(), "w");
    ASSERT_NE(file, nullptr);
    {
        Progress progress(file, 10);
        progress.update(5);
        progress.update(10);
    }
    std::fclose(file);
    EXPECT_EQ(test::contentOf(folder.path("out")), "");
}
