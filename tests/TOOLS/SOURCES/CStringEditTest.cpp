#include "Bytes.h"

#include <gtest/gtest.h>

using RVK::CString;
using test::bytesOf;
using test::fill;
using test::kAbsent;
using test::Mutable;

TEST(CStringInsert, PutsTheTextAheadOfAByte) {
    CString string("ad");
    EXPECT_STREQ(string.Insert(1, "bc").c_str(), "abcd");
    EXPECT_STREQ(string.Insert(0, Mutable("_")).c_str(), "_abcd");
}

TEST(CStringInsert, AtTheVeryEndOrOutOfRangeDoesNothing) {
    CString string("abc");
    string.Insert(string.Length(), "x");
    string.Insert(-1, "x");
    string.Insert(99, "x");
    EXPECT_STREQ(string.c_str(), "abc");
    CString fresh;
    fresh.Insert(0, "x");
    EXPECT_EQ(fresh.length, 0);
}

TEST(CStringInsert, OfAnEmptyOrAbsentTextDoesNothing) {
    CString string("abc");
    string.Insert(1, "");
    string.Insert(1, kAbsent);
    EXPECT_STREQ(string.c_str(), "abc");
}

TEST(CStringInsert, OfItsOwnTextIsSoundAndKeepsZeroAndHighBytes) {
    CString string("abc");
    string.Insert(1, string.data);
    EXPECT_STREQ(string.c_str(), "aabcbc");
    CString bytes;
    fill(bytes, std::string_view("\0\xFF", 2));
    bytes.Insert(1, "\xE4");
    EXPECT_EQ(bytesOf(bytes), std::string("\0\xE4\xFF", 3));
}

TEST(CStringTrim, RemovesTheFourBlanksAtItsSide) {
    const char* const padded = " \t\r\na b\n\r\t ";
    EXPECT_STREQ(CString(padded).Trim().c_str(), "a b");
    EXPECT_STREQ(CString(padded).TrimLeft().c_str(), "a b\n\r\t ");
    EXPECT_STREQ(CString(padded).TrimRight().c_str(), " \t\r\na b");
    CString string(padded);
    string.Trim();
    EXPECT_EQ(string.Length(), 3);
}

TEST(CStringTrim, LeavesOtherBytesAndEmptiesBlankTexts) {
    EXPECT_STREQ(CString("\va\f").Trim().c_str(), "\va\f");
    EXPECT_EQ(CString(" \t ").Trim().length, 0);
    EXPECT_EQ(CString(" \t ").TrimRight().length, 0);
    EXPECT_EQ(CString().Trim().length, 0);
    CString bytes;
    fill(bytes, std::string_view(" \0\xA0 ", 4));
    bytes.Trim();
    EXPECT_EQ(bytesOf(bytes), std::string("\0\xA0", 2));
}

TEST(CStringEncode, ReplacesTheTextByItsHexDigits) {
    CString string;
    fill(string, std::string_view("A\0\xFF", 3));
    string.Encode();
    EXPECT_STREQ(string.c_str(), "4100FF");
    EXPECT_EQ(string.Length(), 6);
    CString fresh;
    fresh.Encode();
    EXPECT_EQ(fresh.data, RVK::nullText);
}

TEST(CStringDecode, DoesNothing) {
    CString string("4142");
    string.Decode();
    EXPECT_STREQ(string.c_str(), "4142");
}
