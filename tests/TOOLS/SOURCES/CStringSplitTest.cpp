#include "Bytes.h"

#include "TOOLS/SOURCES/CStringList.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using RVK::CString;
using RVK::CStringList;
using test::kAbsent;
using test::Mutable;

namespace {

std::vector<std::string> pieces(const CStringList& list) {
    std::vector<std::string> texts;
    for (int i = 0; i < list.size(); ++i) {
        texts.emplace_back(list.at(i));
    }
    return texts;
}

using Texts = std::vector<std::string>;

} // namespace

TEST(CStringSplit, SkipsEmptyPieces) {
    CString string("a,,b");
    CStringList list;
    EXPECT_EQ(string.Split(",", &list, 0, 0), 2);
    EXPECT_EQ(pieces(list), (Texts{"a", "b"}));
    CString separatorsOnly(",,,");
    EXPECT_EQ(separatorsOnly.Split(",", &list, 0, 0), 0);
}

TEST(CStringSplit, StopsAtTheLimit) {
    CString string("a,,b");
    CStringList list;
    EXPECT_EQ(string.Split(",", &list, 1, 0), 1);
    EXPECT_EQ(pieces(list), (Texts{"a"}));
    CString longer("a,b,c");
    EXPECT_EQ(longer.Split(",", &list, 2, 0), 2);
    EXPECT_EQ(longer.Split(",", &list, 3, 0), 3);
    EXPECT_EQ(longer.Split(",", &list, 4, 0), 3);
    EXPECT_EQ(longer.Split(",", &list, -1, 0), 3);
}

TEST(CStringSplit, TakesLongSeparatorsAndHighBytes) {
    CString string("x--\xE4--y-");
    CStringList list;
    EXPECT_EQ(string.Split(Mutable("--"), &list, 0, 0), 3);
    EXPECT_EQ(pieces(list), (Texts{"x", "\xE4", "y-"}));
    EXPECT_EQ(string.Split("", &list, 0, 0), 1); // never found: one piece
    EXPECT_EQ(pieces(list), (Texts{"x--\xE4--y-"}));
}

TEST(CStringSplit, FromAPositionGoesOnWithTheList) {
    CString string("a,b,c");
    CStringList list;
    EXPECT_EQ(string.Split(",", &list, 0, 0), 3);
    EXPECT_EQ(string.Split(",", &list, 0, 2), 5);
    EXPECT_EQ(pieces(list), (Texts{"a", "b", "c", "b", "c"}));
    EXPECT_EQ(string.Split(",", &list, 0, 99), 5);
    EXPECT_EQ(string.Split(",", &list, 0, -4), 3); // counts as 0
}

TEST(CStringSplit, IsMinusOneWhenSomethingIsAbsent) {
    CString string("a");
    CStringList list;
    list.append(static_cast<char*>(RVK::CData::CAlloc(4, 1)));
    EXPECT_EQ(string.Split(kAbsent, &list, 0, 0), -1);
    EXPECT_EQ(string.Split(",", nullptr, 0, 0), -1);
    EXPECT_EQ(CString().Split(",", &list, 0, 0), -1);
    EXPECT_EQ(list.size(), 1); // not cleared
}

TEST(CStringSplit, TheListOwnsThePieces) {
    CStringList list;
    {
        CString string("one two");
        string.Split(" ", &list, 0, 0);
        string = "overwritten";
    }
    EXPECT_EQ(pieces(list), (Texts{"one", "two"}));
    list.clear();
    EXPECT_EQ(list.size(), 0);
    EXPECT_EQ(list.at(0), nullptr);
    EXPECT_EQ(list.at(-1), nullptr);
}

TEST(CStringSplit, MayTakeItsOwnTextAsSeparator) {
    CString string("abcab");
    CStringList list;
    EXPECT_EQ(string.Split(string.data + 3, &list, 0, 0), 1); // "ab"
    EXPECT_EQ(pieces(list), (Texts{"c"}));
}

TEST(CStringSplit, AHundredThousandPiecesFitTheStack) {
    std::string many;
    for (int i = 0; i < 100000; ++i) {
        many += "x,";
    }
    CString string(many.c_str());
    CStringList list;
    EXPECT_EQ(string.Split(",", &list, 0, 0), 100000);
}
