#include "hosts/cli/MeterTable.h"

#include "TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace qor::cli;

TEST(MeterTable, RowsHoldTheShortestNumbersThatReadBack) {
    const test::TemporaryFolder folder;
    auto table = MeterTable::create(folder.path("m.csv"));
    ASSERT_TRUE(table);
    ASSERT_TRUE(table.value()->add(0, {1.0F, 0.1F, 0.0F, 0.33333334F}));
    ASSERT_TRUE(table.value()->add(512, {0.99999994F, 1e-9F, 1.0F, 0.5F}));
    EXPECT_FALSE(std::filesystem::exists(folder.path("m.csv")));
    ASSERT_TRUE(table.value()->commit());
    EXPECT_EQ(test::contentOf(folder.path("m.csv")), "sampletime,dynamics1,dynamics2,peak1,peak2\n"
                                                     "0,1.0,0.1,0.0,0.33333334\n"
                                                     "512,0.99999994,1e-09,1.0,0.5\n");
}

TEST(MeterTable, ManyRowsAllArrive) {
    const test::TemporaryFolder folder;
    auto table = MeterTable::create(folder.path("m.csv"));
    ASSERT_TRUE(table);
    for (int i = 0; i < 20000; ++i) {
        ASSERT_TRUE(table.value()->add(i, {}));
    }
    ASSERT_TRUE(table.value()->commit());
    const std::string content = test::contentOf(folder.path("m.csv"));
    EXPECT_EQ(std::count(content.begin(), content.end(), '\n'), 20001);
    EXPECT_NE(content.find("\n19999,1.0,1.0,0.0,0.0\n"), std::string::npos);
}
