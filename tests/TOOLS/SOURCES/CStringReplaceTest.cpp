#include "Bytes.h"

#include <gtest/gtest.h>

#include <vector>

using RVK::CString;
using test::bytesOf;
using test::fill;
using test::kAbsent;
using test::Mutable;

TEST(CStringReplace, PutsTheReplacementInPlaceOfTheFirstMatch) {
    CString string("one two one");
    EXPECT_TRUE(string.Replace("one", "three", 0, false));
    EXPECT_STREQ(string.c_str(), "three two one");
    EXPECT_TRUE(string.Replace("three", "1", 0, false));
    EXPECT_STREQ(string.c_str(), "1 two one");
    EXPECT_EQ(string.Length(), 9);
}

TEST(CStringReplace, TakesAllFromThePositionOn) {
    CString string("aXaXa");
    EXPECT_TRUE(string.Replace("a", "bb", 1, true));
    EXPECT_STREQ(string.c_str(), "aXbbXbb");
}

TEST(CStringReplace, DoesNotSearchWithinReplacements) {
    CString string("aa");
    EXPECT_TRUE(string.Replace("a", "aa", 0, true));
    EXPECT_STREQ(string.c_str(), "aaaa");
}

TEST(CStringReplace, AnAbsentOrEmptyReplacementRemoves) {
    CString string("a-b-c");
    EXPECT_TRUE(string.Replace("-", kAbsent, 0, true));
    EXPECT_STREQ(string.c_str(), "abc");
    EXPECT_TRUE(string.Replace("b", "", 0, true));
    EXPECT_STREQ(string.c_str(), "ac");
}

TEST(CStringReplace, RefusesWhatItCannotDo) {
    CString string("abc");
    EXPECT_FALSE(CString().Replace("a", "b", 0, true));
    EXPECT_FALSE(string.Replace(kAbsent, kAbsent, 0, true));
    EXPECT_FALSE(string.Replace("a", "a", 0, true));
    EXPECT_FALSE(string.Replace("", "x", 0, true));
    EXPECT_FALSE(string.Replace("x", "y", 0, true));
    EXPECT_FALSE(string.Replace("a", "y", 1, true));
    EXPECT_FALSE(string.Replace("abc", kAbsent, 0, false)); // no buffer of no bytes
    EXPECT_STREQ(string.c_str(), "abc");
}

TEST(CStringReplace, TakesPartsOfItsOwnTextAsArguments) {
    CString string("ab-ab-cd");
    EXPECT_TRUE(string.Replace(string.data + 6, string.data, 0, true)); // "cd" by the whole text
    EXPECT_STREQ(string.c_str(), "ab-ab-ab-ab-cd");
    EXPECT_TRUE(string.Replace(Mutable("ab"), string.data + 12, 0, true));
    EXPECT_STREQ(string.c_str(), "cd-cd-cd-cd-cd");
}

TEST(CStringReplace, KeepsZeroAndHighBytesAround) {
    CString string;
    fill(string, std::string_view("\0x\xFFx\0", 5));
    EXPECT_TRUE(string.Replace("x", "\xE4\xF6", 0, true));
    EXPECT_EQ(bytesOf(string), std::string("\0\xE4\xF6\xFF\xE4\xF6\0", 7));
}

TEST(CStringReplace, CallsItselfThroughTheVirtualTableForEachFurtherMatch) {
    class Watched : public CString {
    public:
        using CString::CString;
        using CString::operator=;
        using CString::Replace;
        bool Replace(char* search, char* replacement, int from, bool all) override {
            starts.push_back(from);
            return CString::Replace(search, replacement, from, all);
        }
        std::vector<int> starts;
    };
    Watched string("a.a.a");
    EXPECT_TRUE(string.Replace(Mutable("."), Mutable("::"), 0, true));
    EXPECT_STREQ(string.c_str(), "a::a::a");
    EXPECT_EQ(string.starts, (std::vector<int>{0, 3, 6}));
}

TEST(CStringReplace, ThousandsOfMatchesFitTheStack) {
    const std::string many(5000, 'a');
    CString string(many.c_str());
    EXPECT_TRUE(string.Replace("a", "b", 0, true));
    EXPECT_EQ(bytesOf(string), std::string(5000, 'b'));
}
