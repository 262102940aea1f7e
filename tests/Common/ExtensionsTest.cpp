#include "Common/Extensions.h"

#include "support/CapturedLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <thread>

using testing::ElementsAre;
using testing::IsEmpty;

TEST(DebugPrint, WritesOnTheRunLoopInTheOrderOfTheCallsAndLaterThanDirectLines) {
    test::CapturedLog log;
    qor::RunLoop loop;
    const qor::RunLoop::Scope scope(loop);
    qor::debugprint("first");
    qor::safeprint("second");
    qor::debugprint("third");
    qor::print("direct");
    EXPECT_THAT(log.lines(), ElementsAre("direct"));
    loop.pump();
    EXPECT_THAT(log.lines(), ElementsAre("direct", "first", "second", "third"));
}

TEST(DebugPrint, KeepsItsOwnCopyOfTheText) {
    test::CapturedLog log;
    qor::RunLoop loop;
    const qor::RunLoop::Scope scope(loop);
    {
        std::string text = "gone by then";
        qor::safeprint(text);
        text = "overwritten!";
    }
    loop.pump();
    EXPECT_THAT(log.lines(), ElementsAre("gone by then"));
}

TEST(DebugPrint, FromAnotherThreadWritesOnTheMainQueuesThread) {
    test::CapturedLog log;
    std::thread([] { qor::safeprint("from elsewhere"); }).join();
    EXPECT_THAT(log.lines(), IsEmpty());
    qor::RunLoop::main().pump();
    EXPECT_THAT(log.lines(), ElementsAre("from elsewhere"));
}

TEST(StringValue, ReadsAFourCharacterCodeAsItIsWritten) {
    EXPECT_EQ(qor::stringValue(0x61756678U), "aufx");
    EXPECT_EQ(qor::stringValue(0x716C6D31U), "qlm1");
    EXPECT_EQ(qor::stringValue(0x5152564BU), "QRVK");
}

TEST(StringValue, OfZeroIsFourNulCharactersAndNotFail) {
    EXPECT_EQ(qor::stringValue(0), std::string(4, '\0'));
}

TEST(StringValue, KeepsZeroBytesWithinTheText) {
    EXPECT_EQ(qor::stringValue(0x41004200U), std::string("A\0B\0", 4));
}

TEST(StringValue, ReadsHighBytesAsMacRoman) {
    EXPECT_EQ(qor::stringValue(0x8A414DDBU), "\xC3\xA4"
                                             "AM"
                                             "\xE2\x82\xAC"); // a with diaeresis, euro sign
}

TEST(StringValue, IsFailWhenTheBytesCannotBeDecoded) {
    EXPECT_EQ(qor::stringValue(0x61756678U, [](std::string_view) { return std::optional<std::string>(); }),
              "FAIL");
}

TEST(StringValue, GivesTheDecoderItsFourBytesHighestFirst) {
    EXPECT_EQ(qor::stringValue(0x01020304U,
                               [](std::string_view bytes) { return std::optional(std::string(bytes)); }),
              "\x01\x02\x03\x04");
}

TEST(UniqueName, WithoutAPrefixIsTheGloballyUniqueText) {
    const std::string name = qor::uniqueName(std::nullopt);
    EXPECT_THAT(name,
                testing::MatchesRegex("[0-9A-F]+-[0-9A-F]+-4[0-9A-F]+-[89AB][0-9A-F]+-[0-9A-F]+-[0-9A-F]+-"
                                      "[0-9A-F]+"));
}

TEST(UniqueName, WithAPrefixStartsWithItAndADash) {
    const std::string name = qor::uniqueName("take");
    EXPECT_THAT(name, testing::StartsWith("take-"));
    EXPECT_EQ(name.size(), qor::uniqueName(std::nullopt).size() + 5);
}

TEST(UniqueName, WithAnEmptyPrefixStartsWithADash) {
    const std::string name = qor::uniqueName("");
    EXPECT_EQ(name.front(), '-');
    EXPECT_EQ(name.size(), qor::uniqueName(std::nullopt).size() + 1);
}

TEST(UniqueName, NeverRepeats) {
    std::set<std::string> names;
    for (int i = 0; i < 1000; ++i) {
        names.insert(qor::uniqueName(std::nullopt));
    }
    EXPECT_EQ(names.size(), 1000U);
}
