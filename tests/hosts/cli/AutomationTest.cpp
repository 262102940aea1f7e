#include "hosts/cli/Automation.h"

#include "TemporaryFolder.h"
#include "kernel/ParameterTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

using namespace qor;
using namespace qor::cli;
using testing::HasSubstr;

namespace {

Result<std::vector<AutomationEvent>> parse(const std::string& content) {
    std::istringstream lines(content);
    return parseAutomation(lines, "moves.txt");
}

std::string refusal(const std::string& content) {
    const auto events = parse(content);
    EXPECT_FALSE(events);
    if (events) {
        return "";
    }
    EXPECT_EQ(events.error().code, kExitWorkFailed);
    return events.error().localizedDescription();
}

std::vector<AUEventSampleTime> timesOf(std::span<const AutomationEvent> events) {
    std::vector<AUEventSampleTime> times;
    for (const AutomationEvent& event : events) {
        times.push_back(event.time);
    }
    return times;
}

} // namespace

TEST(Automation, LinesHoldTimeNameAndValueWithCommentsBlanksAndEitherLineEnd) {
    const auto events = parse("# a fade\n"
                              "\n"
                              "0 threshold 0.5\r\n"
                              "\t48000\tkLimiterTrim   1  # up\n"
                              "96000 6 linked");
    ASSERT_TRUE(events) << events.error().localizedDescription();
    ASSERT_EQ(events.value().size(), 3U);
    EXPECT_EQ(events.value()[0].time, 0);
    EXPECT_EQ(events.value()[0].address, kLimiterThreshold);
    EXPECT_EQ(events.value()[0].value, 0.5F);
    EXPECT_EQ(events.value()[1].time, 48000);
    EXPECT_EQ(events.value()[1].address, kLimiterTrim);
    EXPECT_EQ(events.value()[2].value, 1.0F);
}

TEST(Automation, EventsAreSortedByTimeAndKeepTheirOrderAtOneSample) {
    const auto events = parse("5 trim 0.1\n3 mix 0.2\n5 trim 0.3\n3 trim 0.4\n5 trim 0.5\n");
    ASSERT_TRUE(events);
    std::vector<std::pair<AUEventSampleTime, float>> order;
    for (const AutomationEvent& event : events.value()) {
        order.emplace_back(event.time, event.value);
    }
    EXPECT_THAT(order,
                testing::ElementsAre(testing::Pair(3, 0.2F), testing::Pair(3, 0.4F), testing::Pair(5, 0.1F),
                                     testing::Pair(5, 0.3F), testing::Pair(5, 0.5F)));
}

TEST(Automation, AnEmptyFileHasNoEvents) {
    EXPECT_TRUE(parse("").value().empty());
    EXPECT_TRUE(parse("# nothing\n\n").value().empty());
}

TEST(Automation, ALineThatDoesNotParseIsNamedByFileAndNumber) {
    EXPECT_EQ(
        refusal("# c\n\n10 threshold\n"),
        "moves.txt:3: a line holds SAMPLETIME NAME VALUE, as in \"48000 threshold 0.5\", and this one has 2 "
        "fields.");
    EXPECT_THAT(refusal("10 threshold 0.5 1\n"), HasSubstr("moves.txt:1: a line holds"));
    EXPECT_EQ(refusal("0 trim 1\n1.5 threshold 0.5\n"),
              "moves.txt:2: '1.5' is no sample time. Give a whole number of frames, 0 or more.");
    EXPECT_THAT(refusal("-1 threshold 0.5\n"), HasSubstr("moves.txt:1: '-1' is no sample time."));
    EXPECT_THAT(refusal("99999999999999999999 threshold 0.5\n"), HasSubstr("is no sample time."));
    EXPECT_THAT(refusal("1 thresold 0.5\n"),
                HasSubstr("moves.txt:1: there is no parameter 'thresold'. Did you"));
    EXPECT_EQ(refusal("1 threshold 2\n"),
              "moves.txt:1: '2' is outside the range. Give threshold a value from 0.0 to 1.0.");
    EXPECT_THAT(refusal("1 threshold nan\n"), HasSubstr("moves.txt:1: 'nan' is not finite."));
    EXPECT_THAT(refusal("1 threshold x\n"), HasSubstr("moves.txt:1: 'x' is no number."));
}

TEST(Automation, AMissingFileIsRefused) {
    const test::TemporaryFolder folder;
    EXPECT_EQ(readAutomation(folder.path("none")).error().localizedDescription(),
              "cannot read '" + folder.path("none") + "': there is no such file. Check the path.");
}

TEST(Automation, TheCursorHandsOutEachEventOnceInTheCallThatHoldsIt) {
    AutomationCursor cursor({{0, 1, 0.1F}, {0, 2, 0.2F}, {63, 1, 0.3F}, {64, 1, 0.4F}, {200, 1, 0.5F}});
    const std::span<const AutomationEvent> first = cursor.take(0, 64);
    EXPECT_THAT(timesOf(first), testing::ElementsAre(0, 0, 63));
    EXPECT_EQ(first[0].address, 1U);
    EXPECT_EQ(first[1].address, 2U);
    EXPECT_EQ(first[1].value, 0.2F);
    EXPECT_THAT(timesOf(cursor.take(64, 64)), testing::ElementsAre(64));
    EXPECT_TRUE(cursor.take(128, 64).empty());
    EXPECT_EQ(cursor.left(), 1U);
    EXPECT_EQ(cursor.nextEvent().time, 200);
}
