#include "Bytes.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

using RVK::CString;
using test::fill;
using test::kAbsent;
using test::Mutable;

TEST(CStringAt, GivesSignedBytesAndZeroOutOfRange) {
    CString string("a\xFFz");
    EXPECT_EQ(string.At(0), 'a');
    EXPECT_EQ(string.At(1), -1);
    EXPECT_EQ(string.First(), 'a');
    EXPECT_EQ(string.Last(), 'z');
    EXPECT_EQ(string.At(-1), 0);
    EXPECT_EQ(string.At(3), 0);
    const CString fresh;
    EXPECT_EQ(fresh.At(0), 0);
    EXPECT_EQ(fresh.First(), 0);
    EXPECT_EQ(fresh.Last(), 0);
}

TEST(CStringFind, GivesTheFirstMatchAtOrBehindThePosition) {
    const CString string("abcabc");
    EXPECT_EQ(string.Find("abc", 0), 0);
    EXPECT_EQ(string.Find("abc", 1), 3);
    EXPECT_EQ(string.Find("abc", 3), 3);
    EXPECT_EQ(string.Find("abc", 4), -1);
    EXPECT_EQ(string.Find("abc", -9), 0);
    EXPECT_EQ(string.Find(Mutable("c"), 0), 2);
    EXPECT_EQ(string.Find("abcabcd", 0), -1);
    EXPECT_EQ(string.Find("a", 6), -1);
    EXPECT_EQ(string.Find("a", std::numeric_limits<int>::max()), -1);
    EXPECT_EQ(string.Find(string.data + 2, 0), 2);
}

TEST(CStringFind, OfAnEmptyOrAbsentTextOrInNoTextIsMinusOne) {
    const CString string("abc");
    EXPECT_EQ(string.Find("", 0), -1);
    EXPECT_EQ(string.Find(kAbsent, 0), -1);
    EXPECT_EQ(CString().Find("a", 0), -1);
    EXPECT_EQ(CString().Find("null", 0), -1); // the literal is no text
}

TEST(CStringFind, SeesPastZeroBytesAndFindsHighOnes) {
    CString string;
    fill(string, std::string_view("a\0\xE4"
                                  "b",
                                  4));
    EXPECT_EQ(string.Find("b", 0), 3);
    EXPECT_EQ(string.Find("\xE4", 0), 2);
}

TEST(CStringSubStr, IsCutAtTheEndAndLiesInTheSharedText) {
    const CString string("abcdef");
    EXPECT_STREQ(string.SubStr(0, 3), "abc");
    EXPECT_EQ(string.SubStr(2, 2), RVK::CData::temp);
    EXPECT_STREQ(RVK::CData::temp, "cd");
    EXPECT_STREQ(string.SubStr(4, 100), "ef");
    EXPECT_STREQ(string.SubStr(5, std::numeric_limits<int>::max()), "f");
}

TEST(CStringSubStr, IsAbsentOutOfRangeAndForNoBytes) {
    const CString string("abc");
    EXPECT_EQ(string.SubStr(-1, 2), nullptr);
    EXPECT_EQ(string.SubStr(3, 1), nullptr);
    EXPECT_EQ(string.SubStr(0, 0), nullptr);
    EXPECT_EQ(string.SubStr(1, -1), nullptr);
    EXPECT_EQ(CString().SubStr(0, 1), nullptr);
}

TEST(CStringNumbers, AreReadFromTheStart) {
    EXPECT_EQ(CString(" -42x").Integer(), -42);
    EXPECT_EQ(CString("x").Integer(), 0);
    EXPECT_EQ(CString("1F").HexToInt(), 31);
    EXPECT_EQ(CString("0xff").HexToInt(), 255);
    EXPECT_EQ(CString("2.5e2z").Double(), 250.0);
    EXPECT_EQ(CString("-0.5").Float(), -0.5F);
    EXPECT_EQ(CString("2,5").Double(), 2.0);
}

TEST(CStringNumbers, AreZeroForNoText) {
    const CString fresh;
    EXPECT_EQ(fresh.Integer(), 0);
    EXPECT_EQ(fresh.HexToInt(), 0);
    EXPECT_EQ(fresh.Float(), 0.0F);
    EXPECT_EQ(fresh.Double(), 0.0);
}

TEST(CStringToBool, IsTrueForAnyTextTheTextZeroIncluded) {
    EXPECT_TRUE(CString("0").ToBool());
    EXPECT_TRUE(CString("false").ToBool());
    EXPECT_FALSE(CString("").ToBool());
    EXPECT_FALSE(CString().ToBool());
}

TEST(CStringUnicode, WidensEachByte) {
    CString string;
    fill(string, std::string_view("a\0\xE4", 3));
    const char32_t* const wide = string.Unicode();
    EXPECT_EQ(wide, RVK::CData::wtemp);
    EXPECT_EQ(std::u32string(wide, 4), std::u32string(U"a\0\u00E4\0", 4));
    EXPECT_EQ(CString().Unicode(), nullptr);
    EXPECT_EQ(CString("b").Unicode()[0], U'b');
}

TEST(CStringIsASCII, LooksAtTheTopBitsUpToTheFirstZero) {
    EXPECT_TRUE(CString("plain\t\x7F").IsASCII());
    EXPECT_FALSE(CString("h\xC3\xA4").IsASCII());
    EXPECT_TRUE(CString().IsASCII());
    CString string;
    fill(string, std::string_view("a\0\xFF", 3));
    EXPECT_TRUE(string.IsASCII());
}

TEST(CStringIsKeyword, TakesLettersAndDigitsWithALetterFirst) {
    EXPECT_TRUE(CString("a9").IsKeyword());
    EXPECT_TRUE(CString("Z").IsKeyword());
    EXPECT_FALSE(CString("9a").IsKeyword());
    EXPECT_FALSE(CString("a_b").IsKeyword());
    EXPECT_FALSE(CString("a b").IsKeyword());
    EXPECT_FALSE(CString("\xE4").IsKeyword());
    EXPECT_TRUE(CString("").IsKeyword());
    CString string;
    fill(string, std::string_view("a\0b", 3));
    EXPECT_FALSE(string.IsKeyword());
}

TEST(CStringCase, WorksPerByteAndLeavesOthersAlone) {
    CString string("aB1\xE4-z");
    EXPECT_STREQ(string.Uppercase().c_str(), "AB1\xE4-Z");
    EXPECT_STREQ(string.Lowercase().c_str(), "ab1\xE4-z");
    CString mixed("aBc");
    EXPECT_STREQ(mixed.Revertcase().c_str(), "AbC");
    CString zero;
    fill(zero, std::string_view("a\0b", 3));
    zero.Uppercase();
    EXPECT_EQ(test::bytesOf(zero), std::string("A\0B", 3));
    CString fresh;
    fresh.Uppercase();
    fresh.Lowercase();
    fresh.Revertcase();
    EXPECT_STREQ(fresh.c_str(), "(null*)");
}

TEST(CStringHex, FormsOfItsRootShowTheTextsBytes) {
    const CString string("\x1A\x2B");
    EXPECT_STREQ(string.Hex5(), "0x1A 0x2B");
    EXPECT_STREQ(string.String(), "\x1A\x2B");
    EXPECT_EQ(RVK::CData::StrLen(string.Hex2()), 4);
}
