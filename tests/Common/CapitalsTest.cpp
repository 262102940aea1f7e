#include "Common/Capitals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
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

TEST(Capitals, AreTheSameToTheLetter) {
    // FNV-1a over the names with a line end each: one letter or one swap changes it.
    std::uint64_t hash = 14695981039346656037U;
    for (const std::string& name : qor::capitals()) {
        for (const char c : name + "\n") {
            hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
        }
    }
    EXPECT_EQ(hash, 8134552565768990900U);
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
