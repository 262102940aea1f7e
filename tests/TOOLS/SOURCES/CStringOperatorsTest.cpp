#include "Bytes.h"

#include "TOOLS/SOURCES/KeptBuffers.h"

#include <gtest/gtest.h>

#include <limits>

using RVK::CString;
using test::bytesOf;
using test::fill;
using test::kAbsent;
using test::Mutable;

namespace {

CString none() {
    return {};
}

} // namespace

TEST(CStringIndex, RefersToTheByte) {
    CString string("abc");
    string[1] = 'X';
    EXPECT_STREQ(string.c_str(), "aXc");
}

TEST(CStringIndex, OutOfRangeRefersToAZeroThatBelongsToNoString) {
    CString string("abc");
    for (const int out : {-1, 3, 4, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        char& nowhere = string[out];
        EXPECT_EQ(nowhere, '\0');
        EXPECT_EQ(&nowhere, &CString::nirvana);
        nowhere = 'X';
        EXPECT_EQ(std::string(string.data, 4), std::string("abc\0", 4));
        EXPECT_EQ(string[-1], '\0'); // zero again on the next use
    }
    CString fresh;
    fresh[0] = 'X';
    EXPECT_STREQ(fresh.c_str(), "(null*)");
}

TEST(CStringComparison, OrdersByBytesTakenAsUnsigned) {
    CString a("a");
    CString b("b");
    CString high("\xE4");
    CString sameAsA("a");
    EXPECT_TRUE(a == sameAsA && !(a != sameAsA) && a == a);
    EXPECT_TRUE(a != b && !(a == b));
    EXPECT_TRUE(a < b && b > a && a <= b && b >= a && a <= sameAsA && a >= sameAsA);
    EXPECT_FALSE(b < a || a > b || b <= a || a >= b || a < sameAsA || a > sameAsA);
    EXPECT_TRUE(high > b);
}

TEST(CStringComparison, WithTextsAndAbsentOnes) {
    CString a("a");
    EXPECT_TRUE(a == "a" && !(a != "a") && a != "b" && a == Mutable("a") && a != Mutable("ab"));
    EXPECT_TRUE(a == a.data);
    EXPECT_FALSE(a == kAbsent);
    EXPECT_TRUE(a != kAbsent);
}

TEST(CStringComparison, AStringWithoutTextIsTheNullLiteral) {
    CString fresh;
    CString other;
    EXPECT_TRUE(fresh == other);
    EXPECT_TRUE(fresh == "(null*)");
    EXPECT_FALSE(fresh == "");
    CString letter("a");
    EXPECT_TRUE(fresh < letter); // '(' comes ahead of 'a'
}

TEST(CStringComparison, EndsAtTheFirstZeroByte) {
    CString first;
    CString second;
    fill(first, std::string_view("a\0b", 3));
    fill(second, std::string_view("a\0c", 3));
    EXPECT_TRUE(first == second && first == "a");
}

TEST(CStringAppend, TakesEveryKindOfValue) {
    CString string;
    string += "a";
    string += Mutable("b");
    CString other("c");
    string += other;
    string += 'd';
    string += -7;
    string += 0.5;
    EXPECT_STREQ(string.c_str(), "abcd-70.500000");
    EXPECT_EQ(string.Length(), 14);
}

TEST(CStringAppend, OfNothingOrAnAbsentTextChangesNothing) {
    CString string("a");
    CString fresh;
    string += fresh;
    string += "";
    string += kAbsent;
    EXPECT_STREQ(string.c_str(), "a");
    fresh += fresh;
    EXPECT_EQ(fresh.data, RVK::nullText);
}

TEST(CStringAppend, OfItselfDoublesIt) {
    CString string("abc");
    string += string;
    EXPECT_STREQ(string.c_str(), "abcabc");
    string += string.data + 4;
    EXPECT_STREQ(string.c_str(), "abcabcbc");
}

TEST(CStringAppend, KeepsZeroAndHighBytes) {
    CString string("a");
    CString bytes;
    fill(bytes, std::string_view("\0\xFF", 2));
    string += bytes;
    string += '\0';
    string += '\xE4';
    EXPECT_EQ(bytesOf(string), std::string("a\0\xFF\0\xE4", 5));
    EXPECT_EQ(string.data[5], '\0');
}

TEST(CStringAppend, FreesTheOldBuffer) {
    CString string("a");
    const std::size_t before = RVK::keptBuffers();
    for (int i = 0; i < 100; ++i) {
        string += 'b';
    }
    EXPECT_EQ(string.Length(), 101);
    EXPECT_EQ(RVK::keptBuffers(), before);
}

TEST(CStringRemove, TakesAllOccurrencesOut) {
    CString string("one two one");
    string -= "one";
    EXPECT_STREQ(string.c_str(), " two ");
    string -= Mutable(" ");
    EXPECT_STREQ(string.c_str(), "two");
    string -= "x";
    string -= "";
    string -= kAbsent;
    EXPECT_STREQ(string.c_str(), "two");
    CString fresh;
    fresh -= "a";
    EXPECT_EQ(fresh.length, 0);
}

TEST(CStringRemove, OfAPartOfItselfIsSound) {
    CString string("abcabc");
    string -= string.data + 4; // "bc"
    EXPECT_STREQ(string.c_str(), "aa");
}

TEST(CStringRemove, OfTheWholeTextLeavesItAsThereIsNoBufferOfNoBytes) {
    CString string("abc");
    string -= string.data;
    EXPECT_STREQ(string.c_str(), "abc");
}

TEST(CStringRemove, DropsBytesAtTheEnd) {
    CString string("abcdef");
    string -= 0;
    string -= -3;
    EXPECT_STREQ(string.c_str(), "abcdef");
    string -= 2;
    EXPECT_STREQ(string.c_str(), "abcd");
    EXPECT_EQ(string.Length(), 4);
    EXPECT_EQ(std::string(string.data, 8), std::string("abcd\0\0\0\0", 8));
}

TEST(CStringRemove, OfItsOwnLengthOrMoreLeavesItAsItIs) {
    CString string("abc");
    string -= string.Length();
    EXPECT_STREQ(string.c_str(), "abc");
    string -= 4;
    string -= std::numeric_limits<int>::max();
    EXPECT_STREQ(string.c_str(), "abc");
    CString fresh;
    fresh -= 1;
    EXPECT_EQ(fresh.data, RVK::nullText);
}

TEST(CStringSum, IsBuiltInTheSharedStringAndLeavesTheOperands) {
    CString a("a");
    CString b("b");
    CString& result = a + b;
    EXPECT_EQ(&result, &CString::tempstr);
    EXPECT_STREQ(result.c_str(), "ab");
    EXPECT_STREQ(a.c_str(), "a");
    EXPECT_STREQ((a + "xyz").c_str(), "axyz");
    EXPECT_STREQ((a + Mutable("q")).c_str(), "aq");
    EXPECT_STREQ((a + 12).c_str(), "a12");
    EXPECT_STREQ((a + 0.25).c_str(), "a0.250000");
}

TEST(CStringSum, WithAnEmptyRightSideIsTheStringItself) {
    CString a("a");
    CString fresh;
    EXPECT_EQ(&(a + fresh), &a);
    EXPECT_EQ(&(a + ""), &a);
    EXPECT_EQ(&(a + kAbsent), &a);
}

TEST(CStringSum, OfAStringWithoutTextIsTheRightSide) {
    CString fresh;
    EXPECT_STREQ((fresh + "x").c_str(), "x");
    EXPECT_STREQ((fresh + 1).c_str(), "1");
}

TEST(CStringSum, ChainsAndTakesTheSharedStringOnBothSides) {
    CString a("a");
    CString b("b");
    CString c("c");
    EXPECT_STREQ((a + b + c).c_str(), "abc");
    EXPECT_STREQ((a + (b + c)).c_str(), "abc");
    EXPECT_STREQ((a + a).c_str(), "aa");
    CString& shared = a + b;
    EXPECT_STREQ((shared + shared).c_str(), "abab");
    EXPECT_STREQ((c + CString::tempstr.data).c_str(), "cabab");
    CString kept;
    kept = a + b;
    EXPECT_STREQ(kept.c_str(), "ab");
}

TEST(CStringSum, KeepsZeroAndHighBytes) {
    CString a;
    CString b;
    fill(a, std::string_view("\0\x80", 2));
    fill(b, std::string_view("\xFF\0", 2));
    EXPECT_EQ(bytesOf(a + b), std::string("\0\x80\xFF\0", 4));
    EXPECT_EQ(bytesOf(a * 2), std::string("\0\x80\0\x80", 4));
    EXPECT_EQ(bytesOf(b - 1), "\xFF");
}

TEST(CStringProduct, RepeatsTheText) {
    CString string("ab");
    CString& result = string * 3;
    EXPECT_EQ(&result, &CString::tempstr);
    EXPECT_STREQ(result.c_str(), "ababab");
    EXPECT_STREQ((CString::tempstr * 2).c_str(), "abababababab");
    EXPECT_EQ(&(string * 1), &string);
    EXPECT_EQ(&(string * 0), &string);
    EXPECT_EQ(&(string * -5), &string);
    CString fresh;
    EXPECT_EQ((fresh * 4).length, 0);
}

TEST(CStringProduct, WithoutRoomIsTheTextOnce) {
    CString string("abcd");
    EXPECT_STREQ((string * std::numeric_limits<int>::max()).c_str(), "abcd");
}

TEST(CStringDifference, LeavesTheLastBytesOut) {
    CString string("abcd");
    CString& result = string - 1;
    EXPECT_EQ(&result, &CString::tempstr);
    EXPECT_STREQ(result.c_str(), "abc");
    EXPECT_STREQ((CString::tempstr - 2).c_str(), "a");
    EXPECT_STREQ(string.c_str(), "abcd");
    EXPECT_EQ(&(string - 0), &string);
    EXPECT_EQ(&(string - -1), &string);
    EXPECT_STREQ((string - 4).c_str(), "abcd"); // as dropping them all does nothing
    CString fresh;
    EXPECT_EQ((fresh - 1).length, 0);
}

TEST(CStringDifference, WithATextWorksOnTheSharedStringAndNotOnThis) {
    CString string("banana");
    CString other("xnayna");
    other + "na"; // leaves "xnaynana" in the shared string
    CString& result = string - "na";
    EXPECT_EQ(&result, &CString::tempstr);
    EXPECT_STREQ(result.c_str(), "xy");
    EXPECT_STREQ(string.c_str(), "banana");
    EXPECT_STREQ((string - "").c_str(), "xy");
    EXPECT_EQ(&(string - kAbsent), &string);
    EXPECT_STREQ((string - (CString::tempstr.data + 1)).c_str(), "x");
}

TEST(CStringOperators, ResultsDoNotPileUpBuffers) {
    CString string("ab");
    string + "c";
    const std::size_t before = RVK::keptBuffers();
    for (int i = 0; i < 50; ++i) {
        string + "c";
        string * 2;
        string - 1;
    }
    EXPECT_EQ(RVK::keptBuffers(), before);
    EXPECT_EQ(none().length, 0);
}
