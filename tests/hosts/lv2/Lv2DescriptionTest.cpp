#include "hosts/lv2/Lv2Description.h"
#include "hosts/lv2/Lv2Ports.h"
#include "hosts/lv2/TurtleText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace qor;
using namespace qor::lv2;
using ::testing::HasSubstr;
using ::testing::Not;

TEST(Lv2Description, QuotesWhatWouldEndAText) {
    EXPECT_EQ(quoted(R"(a "b" \c)"), R"("a \"b\" \\c")");
    EXPECT_EQ(quoted("x\ny"), "\"x\\ny\"");
}

TEST(Lv2Description, NumbersReadBackAsTheSameFloat) {
    EXPECT_EQ(number(0.1F), "0.1");
    EXPECT_EQ(number(1.0F), "1.0");
}

TEST(Lv2Description, PresetUrisKeepLettersAndDigits) {
    EXPECT_EQ(presetUri("Drum Bus (2)"), "urn:qor:limiter#preset-drum-bus-2");
}

TEST(Lv2Description, EveryRowOfTheTableIsAPortWithItsRange) {
    const std::string turtle = pluginTurtle();
    for (const ParameterRow& row : kParameterTable) {
        EXPECT_THAT(turtle, HasSubstr("lv2:symbol \"" + std::string(row.symbol) + "\""));
        EXPECT_THAT(turtle, HasSubstr("lv2:name \"" + std::string(row.hostName) + "\""));
    }
    for (std::uint32_t index = 0; index < kPortCount; ++index) {
        EXPECT_THAT(turtle, HasSubstr("lv2:index " + std::to_string(index) + " "));
    }
    EXPECT_THAT(turtle, Not(HasSubstr("lv2:index " + std::to_string(kPortCount) + " ")));
    EXPECT_THAT(turtle, HasSubstr("rdfs:label \"Mid/Side Linked\" ; rdf:value 3"));
    EXPECT_THAT(turtle, HasSubstr("lv2:designation lv2:enabled"));
    EXPECT_THAT(turtle, Not(HasSubstr("requiredFeature")));
    EXPECT_THAT(turtle, Not(HasSubstr("reportsLatency")));
}

TEST(Lv2Description, APresetCarriesAllTwelveValues) {
    PresetValues preset{"Wide", {}};
    preset.values[kLimiterMode] = 2.0F;
    preset.values[kLimiterTrim] = 0.6F;
    const std::string turtle = presetsTurtle({preset});
    EXPECT_THAT(turtle, HasSubstr("lv2:symbol \"mode\" ; pset:value 2 "));
    EXPECT_THAT(turtle, HasSubstr("lv2:symbol \"trim\" ; pset:value 0.6 "));
    EXPECT_THAT(manifestTurtle({preset}), HasSubstr("<urn:qor:limiter#preset-wide>"));
}
