#include "kernel/ParameterTable.h"
#include "kernel/QOR_Limiter_Extension_Parameters.h"
#include "support/CapturedLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <set>

namespace {

using namespace qor;
using ::testing::ElementsAre;

class Parameters : public ::testing::Test {
protected:
    test::CapturedLog log;
    Ref<QOR_Limiter_ExtensionDSPKernelAdapter> adapter = makeRef<QOR_Limiter_ExtensionDSPKernelAdapter>();
    QOR_Limiter_Extension_Parameters parameters{adapter};

    Ref<AUParameter> at(AUParameterAddress address) {
        return parameters.parameterTree()->parameterWithAddress(address);
    }
};

TEST_F(Parameters, TreeHasOneGroupWithTheTwelveParametersInAddressOrder) {
    const auto& children = parameters.parameterTree()->children();
    ASSERT_EQ(children.size(), 1U);
    const auto group = std::dynamic_pointer_cast<AUParameterGroup>(children[0]);
    ASSERT_NE(group, nullptr);
    EXPECT_EQ(group->identifier(), "kGlobalParameters");
    EXPECT_EQ(group->displayName(), "QOR Limiter Global");
    EXPECT_EQ(group->children().size(), 12U);
    const auto all = parameters.parameterTree()->allParameters();
    ASSERT_EQ(all.size(), 12U);
    for (AUParameterAddress address = 0; address < 12; ++address) {
        EXPECT_EQ(all[address]->address(), address);
    }
}

TEST_F(Parameters, EveryParameterIsAsTheTableOfTheTreeSays) {
    struct Expected {
        const char* identifier;
        const char* name;
        float max;
        std::uint32_t defaultBits;
        std::uint32_t unit;
    };
    const Expected expected[] = {
        {"kLimiterAttack", "Limiter Attack", 1.0F, 0x3DCCCCCD, 0},
        {"kLimiterRelease", "Limiter Release", 1.0F, 0x3F000000, 0},
        {"kLimiterThreshold", "Limiter Threshold", 1.0F, 0x3F4CCCCD, 0},
        {"kLimiterKnee", "Limiter Knee", 1.0F, 0x3F000000, 0},
        {"kLimiterTrim", "Limiter Trim", 1.0F, 0x3F000000, 0},
        {"kLimiterMix", "Limiter Mix", 1.0F, 0x3F800000, 0},
        {"kLimiterMode", "Limiter Mode", 3.0F, 0, 1},
        {"kLimiterBypass", "Limiter Bypass", 1.0F, 0, 2},
        {"kLimiterAudition", "Limiter Audition", 1.0F, 0, 2},
        {"kLimiterInputFilterHP", "Limiter Reserved", 1.0F, 0, 0},
        {"kLimiterInputFilterLP", "Limiter Reserved", 1.0F, 0x3F800000, 0},
        {"kLimiterFinalLimiter", "Final Limiter", 1.0F, 0x3F800000, 2},
    };
    for (AUParameterAddress address = 0; address < 12; ++address) {
        const Expected& row = expected[address];
        AUParameter& parameter = *at(address);
        SCOPED_TRACE(row.identifier);
        EXPECT_EQ(parameter.identifier(), row.identifier);
        EXPECT_EQ(parameter.displayName(), row.name);
        EXPECT_EQ(parameter.minValue(), 0.0F);
        EXPECT_EQ(parameter.maxValue(), row.max);
        EXPECT_EQ(std::bit_cast<std::uint32_t>(parameter.value()), row.defaultBits);
        EXPECT_EQ(static_cast<std::uint32_t>(parameter.unit()), row.unit);
        EXPECT_EQ(parameter.flags(), 0xC0000000U);
        EXPECT_FALSE(parameter.unitName().has_value());
        EXPECT_FALSE(parameter.valueStrings().has_value());
        EXPECT_FALSE(parameter.dependentParameters().has_value());
    }
}

TEST_F(Parameters, DefaultsReachTheKernelInAddressOrderBeforeTheCallbacksStand) {
    const std::vector<std::string> lines = log.lines();
    ASSERT_EQ(lines.size(), 12U);
    EXPECT_EQ(lines[0], "unit received parameter : address:0, value:0.100000");
    EXPECT_EQ(lines[2], "unit received parameter : address:2, value:0.800000");
    EXPECT_EQ(lines[11], "unit received parameter : address:11, value:1.000000");
    for (std::int32_t address = 0; address < 12; ++address) {
        EXPECT_EQ(adapter->getParameterEx(address),
                  kParameterTable[static_cast<std::size_t>(address)].defaultValue);
    }
}

TEST_F(Parameters, TwoParametersShareOneDisplayName) {
    EXPECT_EQ(at(9)->displayName(), "Limiter Reserved");
    EXPECT_EQ(at(10)->displayName(), "Limiter Reserved");
}

TEST_F(Parameters, AWriteToTheTreeReachesTheKernelOnce) {
    log.clear();
    at(2)->setValue(0.25F);
    EXPECT_THAT(log.lines(), ElementsAre("unit received parameter : address:2, value:0.250000"));
    EXPECT_EQ(adapter->getParameterEx(2), 0.25F);
}

TEST_F(Parameters, AReaderOfTheTreeSeesTheKernelsValueNotTheOneWrittenLast) {
    at(2)->setValue(0.25F);
    adapter->setParameterEx(2, 0.75F);
    EXPECT_EQ(at(2)->value(), 0.75F);
}

TEST_F(Parameters, ModeIsNotRounded) {
    at(6)->setValue(1.9F);
    EXPECT_EQ(at(6)->value(), 1.9F);
    at(6)->setValue(3.0F);
    EXPECT_EQ(at(6)->value(), 3.0F);
}

TEST_F(Parameters, DisplayStringsCarryNoNumber) {
    const float value = 0.5F;
    for (AUParameterAddress address = 0; address < 12; ++address) {
        EXPECT_EQ(at(address)->stringFromValue(&value), "%");
        EXPECT_EQ(at(address)->stringFromValue(nullptr), "%");
    }
}

TEST_F(Parameters, BackReferenceIsAbsent) {
    EXPECT_EQ(parameters.unit(), nullptr);
}

TEST_F(Parameters, TreeKeepsTheAdapter) {
    const Ref<AUParameterTree> tree = parameters.parameterTree();
    const Weak<QOR_Limiter_ExtensionDSPKernelAdapter> weak = adapter;
    adapter = nullptr;
    ASSERT_FALSE(weak.expired());
    tree->parameterWithAddress(1)->setValue(0.125F);
    EXPECT_EQ(tree->parameterWithAddress(1)->value(), 0.125F);
}

TEST(ParameterTable, NamesForHostsAreUnique) {
    std::set<std::string> names;
    for (const ParameterRow& row : kParameterTable) {
        names.insert(row.shortName);
        names.insert(row.identifier);
        names.insert(std::string("host ") + row.hostName);
        names.insert(std::string("symbol ") + row.symbol);
    }
    EXPECT_EQ(names.size(), 48U);
}

TEST(ParameterTable, RowsAreFoundByIdentifierShortNameAndAddress) {
    EXPECT_EQ(parameterRowNamed("kLimiterThreshold")->address, 2U);
    EXPECT_EQ(parameterRowNamed("threshold")->address, 2U);
    EXPECT_EQ(parameterRowNamed("FinalLimiter")->address, 11U);
    EXPECT_EQ(parameterRowNamed("11")->address, 11U);
    EXPECT_EQ(parameterRowNamed("12"), nullptr);
    EXPECT_EQ(parameterRowNamed("-1"), nullptr);
    EXPECT_EQ(parameterRowNamed("thresh"), nullptr);
    EXPECT_EQ(parameterRowNamed(""), nullptr);
    EXPECT_EQ(parameterRow(12), nullptr);
}

TEST(ParameterTable, ValuesAreHeldInsideTheRange) {
    EXPECT_EQ(kParameterTable[2].clamped(-1.0F), 0.0F);
    EXPECT_EQ(kParameterTable[2].clamped(2.0F), 1.0F);
    EXPECT_EQ(kParameterTable[2].clamped(0.25F), 0.25F);
    EXPECT_EQ(kParameterTable[2].clamped(std::numeric_limits<float>::quiet_NaN()), 0.8F);
    EXPECT_EQ(kParameterTable[6].clamped(1.9F), 1.9F);
    EXPECT_EQ(kParameterTable[6].clamped(std::numeric_limits<float>::infinity()), 3.0F);
}

TEST(ParameterTable, ValueTextsReadBack) {
    EXPECT_EQ(parameterValueText(kParameterTable[0], 0.1F), "0.100");
    EXPECT_EQ(parameterValueText(kParameterTable[6], 3.0F), "Mid/Side Linked");
    EXPECT_EQ(parameterValueText(kParameterTable[6], 1.9F), "Linked");
    EXPECT_EQ(parameterValueText(kParameterTable[7], 0.0F), "Off");
    EXPECT_EQ(parameterValueFromText(kParameterTable[6], "mid/side"), 2.0F);
    EXPECT_EQ(parameterValueFromText(kParameterTable[6], "2"), 2.0F);
    EXPECT_EQ(parameterValueFromText(kParameterTable[0], "0.25"), 0.25F);
    EXPECT_EQ(parameterValueFromText(kParameterTable[0], "loud"), std::nullopt);
    EXPECT_EQ(parameterValueFromText(kParameterTable[0], "nan"), std::nullopt);
    EXPECT_EQ(parameterValueFromText(kParameterTable[0], "1e99"), std::nullopt);
}

} // namespace
