#include "hosts/vst3/ControlValues.h"

#include <gtest/gtest.h>

#include <thread>

using Values = qor::vst3::ControlValues<2>;

TEST(ControlValues, TheHostSetsThem) {
    Values values;
    values.set(1, 0.5F);
    EXPECT_EQ(values[0], 0.0F);
    EXPECT_EQ(values[1], 0.5F);
}

TEST(ControlValues, AHeldOneIsThePersonsAndTheNewestOfTheHostCountsAfterwards) {
    Values values;
    values.hold(0);
    values.move(0, 0.3F);
    values.set(0, 0.1F);
    values.move(0, 0.4F);
    values.set(0, 0.2F);
    values.set(1, 0.9F);
    EXPECT_EQ(values[0], 0.4F);
    EXPECT_EQ(values[1], 0.9F);
    values.release(0);
    EXPECT_EQ(values[0], 0.2F);
    values.set(0, 0.7F);
    EXPECT_EQ(values[0], 0.7F);
}

TEST(ControlValues, ThePersonsValueStaysWhereTheHostSaysNothing) {
    Values values;
    values.set(0, 0.1F);
    values.hold(0);
    values.set(0, 0.2F);
    values.release(0);
    values.hold(0);
    values.move(0, 0.3F);
    values.release(0);
    EXPECT_EQ(values[0], 0.3F);
}

TEST(ControlValues, NothingThatTheHostSetsIsLostOrKeptForLaterWhenItIsLetGo) {
    Values values;
    for (int i = 0; i < 2000; ++i) {
        values.hold(0);
        values.move(0, 2.0F);
        std::thread host([&] { values.set(0, 3.0F); });
        values.release(0);
        host.join();
        ASSERT_EQ(values[0], 3.0F) << i;
        values.hold(0); // nothing waits
        values.release(0);
        ASSERT_EQ(values[0], 3.0F) << i;
    }
}
