#include "hosts/cli/ParameterSettings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace qor;
using namespace qor::cli;
using testing::EndsWith;
using testing::HasSubstr;

namespace {

std::string refusal(const Result<ParameterSetting>& setting) {
    EXPECT_FALSE(setting);
    if (setting) {
        return "";
    }
    EXPECT_EQ(setting.error().code, kExitWrongUsage);
    return setting.error().localizedDescription();
}

} // namespace

TEST(ParameterSettings, EveryParameterGoesByIdentifierShortNameAndAddress) {
    for (const ParameterRow& row : kParameterTable) {
        for (const std::string& name :
             {std::string(row.identifier), std::string(row.shortName), text(row.address)}) {
            const Result<ParameterSetting> setting = parseSetting(name + "=0.25");
            ASSERT_TRUE(setting) << name;
            EXPECT_EQ(setting.value().address, row.address);
            EXPECT_EQ(setting.value().value, 0.25F);
            EXPECT_FALSE(setting.value().raw);
        }
    }
    EXPECT_EQ(parseSetting("THRESHOLD=1").value().address, kLimiterThreshold);
}

TEST(ParameterSettings, ModesAndSwitchesGoByTheNamesOfTheirValues) {
    EXPECT_EQ(parseSetting("mode=mid/side linked").value().value, 3.0F);
    EXPECT_EQ(parseSetting("finallimiter=off").value().value, 0.0F);
    EXPECT_THAT(refusal(parseSetting("threshold=off")), HasSubstr("is no number"));
}

TEST(ParameterSettings, AnUnknownNameIsRefusedWithTheClosestOne) {
    EXPECT_EQ(refusal(parseSetting("treshhold=1")),
              "there is no parameter 'treshhold'. Did you mean 'threshold'? "
              "'qor-limiter params' lists them.");
    EXPECT_THAT(refusal(parseSetting("kLimiterTrimm=1")), HasSubstr("Did you mean 'trim'?"));
    EXPECT_THAT(refusal(parseSetting("tresh=1")), HasSubstr("Did you mean 'threshold'?"));
    EXPECT_EQ(refusal(parseSetting("zzzzzzzz=1")),
              "there is no parameter 'zzzzzzzz'. 'qor-limiter params' lists them.");
    EXPECT_EQ(refusal(parseSetting("12=1")),
              "there is no parameter with the address '12': addresses are 0 to 11.");
    EXPECT_EQ(refusal(parseSetting("-1=1")),
              "there is no parameter with the address '-1': addresses are 0 to 11.");
}

TEST(ParameterSettings, AValueMustBeAFiniteNumberThatFitsAFloat) {
    EXPECT_EQ(refusal(parseSetting("threshold=loud")),
              "'loud' is no number. Give threshold a value from 0.0 to 1.0.");
    EXPECT_EQ(refusal(parseSetting("threshold=")),
              "'' is no number. Give threshold a value from 0.0 to 1.0.");
    EXPECT_EQ(refusal(parseSetting("threshold=0,5")),
              "'0,5' is no number. Give threshold a value from 0.0 to 1.0.");
    for (const char* value : {"nan", "inf", "-inf"}) {
        EXPECT_EQ(refusal(parseSetting(std::string("threshold=") + value)),
                  "'" + std::string(value) + "' is not finite. Give threshold a value from 0.0 to 1.0.");
    }
    EXPECT_EQ(refusal(parseRawSetting("3=1e39")),
              "'1e39' does not fit a 32-bit float. Give a finite number.");
    EXPECT_EQ(refusal(parseRawSetting("3=nan")), "'nan' is not finite. Give a finite number.");
    EXPECT_EQ(refusal(parseRawSetting("3=x")), "'x' is no number. Give a finite number.");
}

TEST(ParameterSettings, AValueOutsideTheRangeIsRefusedWithTheRange) {
    EXPECT_EQ(refusal(parseSetting("threshold=1.0001")),
              "'1.0001' is outside the range. Give threshold a value from 0.0 to 1.0.");
    EXPECT_EQ(refusal(parseSetting("mode=-0.5")),
              "'-0.5' is outside the range. Give mode a value from 0.0 to 3.0.");
    EXPECT_EQ(parseSetting("mode=3").value().value, 3.0F);
    EXPECT_EQ(parseSetting("threshold=0").value().value, 0.0F);
}

TEST(ParameterSettings, RawValuesTakeAddressesFrom0To15AndAnyRange) {
    const Result<ParameterSetting> setting = parseRawSetting("15=-1e30");
    ASSERT_TRUE(setting);
    EXPECT_EQ(setting.value().address, 15U);
    EXPECT_EQ(setting.value().value, -1e30F);
    EXPECT_TRUE(setting.value().raw);
    EXPECT_TRUE(parseRawSetting("0=1.5"));
    for (const char* name : {"16", "-1", "threshold", "1.5", "99999999999999999999"}) {
        EXPECT_EQ(refusal(parseRawSetting(std::string(name) + "=1")),
                  "'" + std::string(name) + "' is no raw address. Give a whole number from 0 to 15.");
    }
}

TEST(ParameterSettings, ASettingHasAnEqualsSign) {
    EXPECT_EQ(refusal(parseSetting("threshold")),
              "'threshold' is not of the form NAME=VALUE, as in threshold=0.5.");
    EXPECT_EQ(refusal(parseSetting("=1")), "'=1' is not of the form NAME=VALUE, as in threshold=0.5.");
    EXPECT_EQ(refusal(parseRawSetting("6")), "'6' is not of the form ADDRESS=VALUE, as in 6=1.9.");
}

TEST(ParameterSettings, LongAndUnprintableInputIsShownSafely) {
    EXPECT_THAT(refusal(parseSetting(std::string(500, 'x') + "=1")), testing::SizeIs(testing::Lt(200U)));
    EXPECT_THAT(refusal(parseSetting("a\x1b[31m\n=1")), testing::Not(HasSubstr("\x1b")));
}

TEST(ParameterNames, TheEditDistanceCountsOneLetterChanges) {
    EXPECT_EQ(editDistance("", ""), 0U);
    EXPECT_EQ(editDistance("trim", "trim"), 0U);
    EXPECT_EQ(editDistance("trim", "tri"), 1U);
    EXPECT_EQ(editDistance("trim", "mtrim"), 1U);
    EXPECT_EQ(editDistance("mix", "max"), 1U);
    EXPECT_EQ(editDistance("knee", ""), 4U);
    EXPECT_EQ(editDistance("attack", "tack"), 2U);
}
