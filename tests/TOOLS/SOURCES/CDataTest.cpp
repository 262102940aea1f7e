#include "TOOLS/SOURCES/CData.h"

#include "TOOLS/SOURCES/HexTable.h"
#include "TOOLS/SOURCES/KeptBuffers.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

using RVK::CData;

namespace {

/// Data that holds the given bytes.
class Filled : public CData {
public:
    explicit Filled(std::string_view bytes) {
        data = static_cast<char*>(CAlloc(bytes.size(), 1));
        std::memcpy(data, bytes.data(), bytes.size());
        length = static_cast<std::int32_t>(bytes.size());
    }
};

} // namespace

TEST(CData, FreshDataIsTheNullLiteralWithLengthZero) {
    const CData fresh;
    EXPECT_STREQ(fresh.data, "(null*)");
    EXPECT_EQ(fresh.length, 0);
    EXPECT_EQ(fresh.Length(), 0);
    EXPECT_TRUE(fresh.Empty());
    EXPECT_EQ(fresh.DataSize(), 0);
    EXPECT_STREQ(fresh.ClassName(), "CData");
    EXPECT_EQ(fresh.ObjectSize(), static_cast<int>(sizeof(CData)));
}

TEST(CData, ClassCountIsOneLessThanTheInstances) {
    // The library's own global strings are alive too, so the count is taken from where it stands.
    const int before = CData::count;
    {
        const CData first;
        EXPECT_EQ(first.ClassCount(), before + 1);
        const CData second;
        EXPECT_EQ(first.ClassCount(), before + 2);
    }
    EXPECT_EQ(CData::count, before);
}

TEST(CData, ClassCountIsZeroWithOneInstanceAlive) {
    const int others = CData::count;
    CData::count = -1;
    {
        const CData alone;
        EXPECT_EQ(alone.ClassCount(), 0);
    }
    EXPECT_EQ(CData::count, -1);
    CData::count = others;
}

TEST(CData, TheSharedTextsGoWhenTheCountFallsToZero) {
    const int others = CData::count;
    CData::count = -1;
    {
        const CData first;
        {
            const Filled second("\x1A");
            EXPECT_EQ(CData::temp, second.Hex2());
        }
        EXPECT_EQ(CData::temp, nullptr); // the count is 0 although one is still alive
        EXPECT_EQ(CData::wtemp, nullptr);
        EXPECT_EQ(CData::err, nullptr);
    }
    CData::count = others;
}

TEST(CData, PaddingIsTheNextMultipleOfFourAboveTheBytes) {
    EXPECT_EQ(CData::Padding(-1), 0);
    EXPECT_EQ(CData::Padding(0), 0);
    EXPECT_EQ(CData::Padding(1), 4);
    EXPECT_EQ(CData::Padding(3), 4);
    EXPECT_EQ(CData::Padding(4), 8);
    EXPECT_EQ(CData::Padding(7), 8);
    EXPECT_EQ(CData::Padding(8), 12);
}

TEST(CData, PaddingIsZeroWhereAnIntHasNoRoomForIt) {
    EXPECT_EQ(CData::Padding(std::numeric_limits<int>::max()), 0);
    EXPECT_EQ(CData::Padding(std::numeric_limits<int>::max() - 4), std::numeric_limits<int>::max() - 3);
}

TEST(CData, CAllocGivesZerosAndNothingForZeroCountOrSize) {
    EXPECT_EQ(CData::CAlloc(0, 4), nullptr);
    EXPECT_EQ(CData::CAlloc(4, 0), nullptr);
    const std::unique_ptr<char, decltype(&std::free)> room(static_cast<char*>(CData::CAlloc(4, 2)),
                                                           &std::free);
    ASSERT_NE(room, nullptr);
    EXPECT_EQ(std::string(room.get(), 8), std::string(8, '\0'));
}

TEST(CData, StrLenOfAnAbsentTextIsZero) {
    EXPECT_EQ(CData::StrLen(nullptr), 0);
    EXPECT_EQ(CData::StrLen(""), 0);
    EXPECT_EQ(CData::StrLen("four"), 4);
}

TEST(CData, TextFormsOfNoBytesAreFixed) {
    const CData none;
    EXPECT_STREQ(none.Hex2(), "00");
    EXPECT_STREQ(none.ColorRGB(), "#000000");
    EXPECT_STREQ(none.Hex3(), "00");
    EXPECT_STREQ(none.Hex4(), "#00");
    EXPECT_STREQ(none.Hex5(), "0x00");
    EXPECT_STREQ(none.String(), "0x00");
}

TEST(CData, TextFormsOfTwoBytes) {
    const Filled two("\x1A\x2B");
    EXPECT_STREQ(two.Hex2(), "1A2B");
    EXPECT_STREQ(two.ColorRGB(), "#1A2B");
    EXPECT_STREQ(two.Hex3(), "1A 2B");
    EXPECT_STREQ(two.Hex4(), "#1A #2B");
    EXPECT_STREQ(two.Hex5(), "0x1A 0x2B");
    EXPECT_STREQ(two.String(), "0x1A 0x2B");
}

TEST(CData, TextFormsOfTheSingleByteFF) {
    const Filled one("\xFF");
    EXPECT_STREQ(one.Hex3(), "FF");
    EXPECT_STREQ(one.Hex5(), "0xFF");
    EXPECT_STREQ(one.Hex4(), "#FF");
    EXPECT_STREQ(one.Hex2(), "FF");
}

TEST(CData, TextFormsShowZeroAndHighBytes) {
    const Filled bytes(std::string_view("\x00\x80\xFF\x00", 4));
    EXPECT_STREQ(bytes.Hex3(), "00 80 FF 00");
    EXPECT_STREQ(bytes.Hex2(), "0080FF00");
}

TEST(CData, ColorRGBOfThreeBytesIsAColourAndOfManyBytesStaysWhole) {
    const Filled colour("\x0C\x80\xFE");
    EXPECT_STREQ(colour.ColorRGB(), "#0C80FE");
    for (std::size_t size = 1; size <= 64; ++size) {
        const Filled many(std::string(size, '\xAB'));
        const std::string text = many.ColorRGB();
        EXPECT_EQ(text.size(), 2 * size + 1);
        EXPECT_EQ(text.substr(text.size() - 2), "AB");
    }
}

TEST(CData, EachTextEndsTheLastOneOfAnyInstance) {
    const Filled first("\x01");
    const Filled second("\x02");
    const char* const text = first.Hex2();
    EXPECT_EQ(text, CData::temp);
    EXPECT_STREQ(second.Hex2(), "02");
    EXPECT_STREQ(CData::temp, "02");
}

TEST(CData, ATextTooLongForAnIntIsOutOfMemory) {
    CData huge;
    huge.length = 1 << 30; // never read: the text's size is refused first
    EXPECT_STREQ(huge.Hex5(), "(out of memory)");
    EXPECT_STREQ(huge.Hex4(), "(out of memory)");
    EXPECT_STREQ(huge.Hex3(), "(out of memory)");
    EXPECT_STREQ(huge.Hex2(), "(out of memory)");
    EXPECT_STREQ(huge.ColorRGB(), "(out of memory)");
    huge.length = 0;
}

TEST(CData, XmlOfNoBytesIsTheUndefinedElement) {
    CData none;
    EXPECT_STREQ(none.XML(0), "<CData>\n\tundefined</CData>");
    none.data = nullptr;
    none.length = 3;
    EXPECT_STREQ(none.XML(2), "<CData>\n\tundefined</CData>");
}

TEST(CData, XmlIsTheClosingTagAloneAndTheNextTextIsSound) {
    const Filled two("\x1A\x2B");
    for (const int indent : {0, 1, 7, -3}) {
        EXPECT_STREQ(two.XML(indent), "</CData>\n");
        EXPECT_EQ(CData::temp, std::strstr(CData::temp, "</CData>"));
    }
    EXPECT_STREQ(two.Hex2(), "1A2B");
    EXPECT_STREQ(two.XML(std::numeric_limits<int>::max()), "<CData>\n\tundefined</CData>"); // no room
}

TEST(CData, ClearChangesNothing) {
    Filled two("\x1A\x2B");
    const char* const before = two.data;
    two.Clear();
    EXPECT_EQ(two.data, before);
    EXPECT_EQ(two.length, 2);
}

TEST(CData, TheBufferOfADestroyedInstanceStaysAllocatedAndListed) {
    const std::size_t before = RVK::keptBuffers();
    const char* data = nullptr;
    {
        const Filled two("\x1A\x2B");
        data = two.data;
    }
    EXPECT_EQ(RVK::keptBuffers(), before + 1);
    EXPECT_EQ(std::string_view(data, 2), "\x1A\x2B");
    { const CData none; }
    EXPECT_EQ(RVK::keptBuffers(), before + 1); // the literal is no buffer
}

TEST(HexTable, HoldsTheDigitsOfEveryByte) {
    ASSERT_EQ(std::strlen(RVK::hextable.data()), 512U);
    for (unsigned value = 0; value < 256; ++value) {
        char digits[3] = {};
        std::snprintf(digits, sizeof digits, "%02X", value);
        EXPECT_EQ(std::string_view(&RVK::hextable[2 * value], 2), digits);
    }
}
