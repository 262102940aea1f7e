#include "platform/core/Text.h"

#include <gtest/gtest.h>

#include <limits>

using platform::text;

TEST(Text, FloatsAreTheShortestThatReadBackWithAFraction) {
    EXPECT_EQ(text(44100.0), "44100.0");
    EXPECT_EQ(text(0.1), "0.1");
    EXPECT_EQ(text(0.1F), "0.1");
    EXPECT_EQ(text(100000.0), "100000.0");
    EXPECT_EQ(text(0.0001), "0.0001");
    EXPECT_EQ(text(0.00001), "1e-05");
    EXPECT_EQ(text(-0.0), "-0.0");
    EXPECT_EQ(text(1e30), "1e+30");
    EXPECT_EQ(text(std::numeric_limits<double>::infinity()), "inf");
}

TEST(Text, IntegersAndBooleansAreDecimalAndWords) {
    EXPECT_EQ(text(-10876), "-10876");
    EXPECT_EQ(text(std::uint64_t{18446744073709551615U}), "18446744073709551615");
    EXPECT_EQ(text(true), "true");
    EXPECT_EQ(text(false), "false");
}

TEST(Text, FixedTextHasTheDigitsAskedFor) {
    EXPECT_EQ(platform::fixedText(0.5, 6), "0.500000");
    EXPECT_EQ(platform::fixedText(1.0 / 3.0, 2), "0.33");
    EXPECT_EQ(platform::fixedText(std::numeric_limits<double>::max(), 6).size(), 316U);
}

TEST(Text, ParsingTakesWholeNumbersOnly) {
    double value = 0.0;
    EXPECT_TRUE(platform::parseDouble("-1.5e3", value));
    EXPECT_EQ(value, -1500.0);
    EXPECT_TRUE(platform::parseDouble("+2", value));
    EXPECT_FALSE(platform::parseDouble("1,5", value));
    EXPECT_FALSE(platform::parseDouble("1.5x", value));
    EXPECT_FALSE(platform::parseDouble("", value));
    EXPECT_FALSE(platform::parseDouble("+-1", value));
    std::int64_t whole = 0;
    EXPECT_TRUE(platform::parseInt64("-12", whole));
    EXPECT_EQ(whole, -12);
    EXPECT_FALSE(platform::parseInt64("12.0", whole));
}

TEST(Text, MacRomanDecodesEveryByte) {
    EXPECT_EQ(platform::decodeMacRoman("aufx"), "aufx");
    EXPECT_EQ(platform::decodeMacRoman(std::string_view("\0\0", 2)), std::string("\0\0", 2));
    EXPECT_EQ(platform::decodeMacRoman("\x8A\xDB"), "\xC3\xA4\xE2\x82\xAC"); // a with diaeresis, euro sign
}
