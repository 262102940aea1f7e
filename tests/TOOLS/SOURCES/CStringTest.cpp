#include "Bytes.h"

#include "TOOLS/SOURCES/KeptBuffers.h"
#include "support/GermanLocale.h"

#include <gtest/gtest.h>

#include <limits>

using RVK::CString;
using test::bytesOf;
using test::kAbsent;
using test::Mutable;

TEST(CString, FreshStringHasNoText) {
    CString fresh;
    EXPECT_EQ(fresh.length, 0);
    EXPECT_EQ(fresh.data, RVK::nullText);
    EXPECT_STREQ(fresh.c_str(), "(null*)");
    EXPECT_STREQ(fresh.String(), "(null*)");
    EXPECT_STREQ(fresh.Data(), "(null*)");
    EXPECT_STREQ(fresh.ClassName(), "CString");
    EXPECT_EQ(fresh.ObjectSize(), static_cast<int>(sizeof(RVK::CData)));
}

TEST(CString, IsMadeOfACopyOfTheText) {
    Mutable text("text");
    const CString string(static_cast<char*>(text));
    static_cast<char*>(text)[0] = 'n';
    EXPECT_STREQ(string.c_str(), "text");
    EXPECT_EQ(string.Length(), 4);
    EXPECT_EQ(string.DataSize(), 8);
}

TEST(CString, OfAnAbsentOrEmptyTextHasNoText) {
    EXPECT_EQ(CString(kAbsent).data, RVK::nullText);
    EXPECT_EQ(CString("").data, RVK::nullText);
    EXPECT_EQ(CString("").Length(), 0);
}

TEST(CString, TheBytesBehindTheTextAreZeroToThePadding) {
    const CString string("abcd");
    EXPECT_EQ(std::string(string.data, 8), std::string("abcd\0\0\0\0", 8));
}

TEST(CString, CountsItsInstancesApartFromThoseOfData) {
    const int strings = CString::count;
    const int all = RVK::CData::count;
    {
        const CString one("a");
        const CString copy(one);
        EXPECT_EQ(one.ClassCount(), strings + 2);
        EXPECT_EQ(RVK::CData::count, all + 2);
        const RVK::CData other;
        EXPECT_EQ(one.ClassCount(), strings + 2);
        EXPECT_EQ(other.ClassCount(), all + 3);
    }
    EXPECT_EQ(CString::count, strings);
    EXPECT_EQ(RVK::CData::count, all);
}

TEST(CString, ACopyIsDeep) {
    CString first;
    test::fill(first, std::string_view("a\0b\xFF", 4));
    CString second(first);
    EXPECT_NE(first.data, second.data);
    EXPECT_EQ(bytesOf(second), bytesOf(first));
    second[0] = 'z';
    EXPECT_EQ(bytesOf(first), std::string("a\0b\xFF", 4));
}

TEST(CString, AssignmentTakesEveryKindOfValue) {
    CString string;
    CString other("other");
    string = other;
    EXPECT_STREQ(string.c_str(), "other");
    string = Mutable("mutable");
    EXPECT_STREQ(string.c_str(), "mutable");
    string = "literal";
    EXPECT_STREQ(string.c_str(), "literal");
    string = std::numeric_limits<int>::min();
    EXPECT_STREQ(string.c_str(), "-2147483648");
    string = 0.1;
    EXPECT_STREQ(string.c_str(), "0.100000");
    string = -std::numeric_limits<double>::max();
    EXPECT_EQ(string.Length(), 1 + 309 + 1 + 6);
    string = CString("temporary");
    EXPECT_STREQ(string.c_str(), "temporary");
}

TEST(CString, AssignmentKeepsZeroAndHighBytesOfAString) {
    CString from;
    test::fill(from, std::string_view("\0\xFF\0", 3));
    CString to("before");
    to = from;
    EXPECT_EQ(bytesOf(to), std::string("\0\xFF\0", 3));
}

TEST(CString, AssignmentOfAnAbsentTextChangesNothingAndOfAnEmptyOneEmpties) {
    CString string("text");
    string = kAbsent;
    EXPECT_STREQ(string.c_str(), "text");
    string = "";
    EXPECT_EQ(string.length, 0);
    string = "text";
    CString none;
    string = none;
    EXPECT_EQ(string.length, 0);
    EXPECT_EQ(string.data, RVK::nullText);
}

TEST(CString, AssignmentToItselfAndFromItsOwnBytesIsSound) {
    CString string("abcdef");
    CString& same = string;
    string = same;
    EXPECT_STREQ(string.c_str(), "abcdef");
    string = string.data + 2;
    EXPECT_STREQ(string.c_str(), "cdef");
}

TEST(CString, AssignmentLeavesTheOldBufferAllocatedAndListed) {
    CString string("first");
    const char* const old = string.data;
    const std::size_t before = RVK::keptBuffers();
    string = "second";
    EXPECT_EQ(RVK::keptBuffers(), before + 1);
    EXPECT_STREQ(old, "first");
}

TEST(CString, DestructionLeavesTheBufferAllocatedAndListed) {
    const std::size_t before = RVK::keptBuffers();
    const char* old = nullptr;
    {
        const CString string("stays");
        old = string.data;
    }
    EXPECT_EQ(RVK::keptBuffers(), before + 1);
    EXPECT_STREQ(old, "stays");
}

TEST(CString, ReassignFreesTheTextAndNeverTheLiteral) {
    const std::size_t before = RVK::keptBuffers();
    CString string;
    string.reassign(0);
    EXPECT_EQ(string.data, RVK::nullText);
    string.reassign(5);
    EXPECT_EQ(string.length, 5);
    EXPECT_EQ(bytesOf(string), std::string(5, '\0'));
    string.reassign(0);
    EXPECT_EQ(string.data, RVK::nullText);
    EXPECT_EQ(string.length, 0);
    string.reassign(-2);
    EXPECT_EQ(string.length, 0);
    string.reassign(std::numeric_limits<int>::max()); // no room
    EXPECT_EQ(string.data, RVK::nullText);
    EXPECT_EQ(string.length, 0);
    EXPECT_EQ(RVK::keptBuffers(), before);
}

TEST(CString, NumbersAreWrittenAndReadWithAPointInEveryLocale) {
    const test::GermanLocale german;
    CString string;
    string = 1.5;
    EXPECT_STREQ(string.c_str(), "1.500000");
    string += 2.25;
    EXPECT_STREQ(string.c_str(), "1.5000002.250000");
    EXPECT_EQ(CString("3.75").Double(), 3.75);
}
