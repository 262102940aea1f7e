#include "TOOLS/SOURCES/Data.h"

#include <gtest/gtest.h>

namespace test {
const void* otherPrinTable();
const void* otherInvalid();
const void* otherEmpty();
} // namespace test

TEST(ToolsGlobals, InvalidHoldsNull) {
    EXPECT_STREQ(RVK::invalid.c_str(), "null");
    EXPECT_EQ(RVK::invalid.Length(), 4);
}

TEST(ToolsGlobals, EmptyHoldsOneBlank) {
    EXPECT_EQ(RVK::empty.Length(), 1);
    EXPECT_TRUE(RVK::empty == " ");
    EXPECT_FALSE(RVK::empty.Empty());
}

TEST(ToolsGlobals, PrinTableIsFilled) {
    EXPECT_STREQ(*RVK::PrinTable.entries[27], "<ESC>");
}

TEST(ToolsGlobals, EachUnitHasItsOwn) {
    EXPECT_NE(test::otherPrinTable(), &RVK::PrinTable);
    EXPECT_NE(test::otherInvalid(), &RVK::invalid);
    EXPECT_NE(test::otherEmpty(), &RVK::empty);
}

TEST(ToolsGlobals, AreCountedWithTheLibrarysOwn) {
    // This unit's, the other unit's and the library's two each, and the shared result string: seven.
    EXPECT_EQ(RVK::CString::count, 6);
    EXPECT_EQ(RVK::CData::count, 6);
}
