#include "Common/Capitals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

TEST(Capitals, HasEachOf197NamesOnceInTheCountriesOrder) {
    const auto& names = qor::capitals();
    ASSERT_EQ(names.size(), 197U);
    EXPECT_EQ(names.front(), "Kabul");
    EXPECT_EQ(names[1], "Tirana");
    EXPECT_EQ(names[91], "Pristina");
    EXPECT_EQ(names.back(), "Harare");
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), 197U);
    EXPECT_TRUE(std::none_of(names.begin(), names.end(), [](const auto& name) { return name.empty(); }));
}

TEST(Capitals, KeepsTheSpellingsAsTheyAre) {
    const auto& names = qor::capitals();
    const auto has = [&](const char* name) { return std::count(names.begin(), names.end(), name) == 1; };
    EXPECT_TRUE(has("Copenagen"));
    EXPECT_TRUE(has("Yaound\xC3\xA9"));
    EXPECT_TRUE(has("S\xC3\xA3o Tom\xC3\xA9"));
    EXPECT_TRUE(has("N'Djamena"));
    EXPECT_TRUE(has("Washington D.C."));
}

TEST(Capitals, IsOneTableForAllCallers) {
    EXPECT_EQ(&qor::capitals(), &qor::capitals());
}
