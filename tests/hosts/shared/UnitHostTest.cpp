#include "HostRendering.h"
#include "kernel/ParameterTable.h"
#include "support/CapturedLog.h"

#include <gtest/gtest.h>

#include <limits>

using namespace qor;
using namespace qor::host;

namespace {

class UnitHostTest : public ::testing::Test {
protected:
    test::CapturedLog log;
    std::unique_ptr<UnitHost> host = test::makeHost();
};

} // namespace

TEST_F(UnitHostTest, StartsWithTheTablesDefaults) {
    for (const ParameterRow& row : kParameterTable) {
        EXPECT_EQ(host->parameter(row.address), row.defaultValue) << row.identifier;
    }
    EXPECT_FALSE(host->isActive());
}

TEST_F(UnitHostTest, TakesItsRateFromTheActivation) {
    for (const double rate : {8000.0, 44100.0, 48000.0, 96000.0, 384000.0}) {
        ASSERT_TRUE(host->activate(rate));
        EXPECT_EQ(host->unit().kernelAdapter->getSamplerate(), static_cast<float>(rate));
        EXPECT_EQ(host->unit().getSamplerate(), rate);
    }
}

TEST_F(UnitHostTest, RefusesARateThatNoBusTakesAndRecovers) {
    EXPECT_FALSE(host->activate(0.0));
    EXPECT_FALSE(host->activate(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_FALSE(host->isActive());
    EXPECT_TRUE(host->activate(48000.0));
}

TEST_F(UnitHostTest, HoldsValuesToTheirRangeAndRefusesWhatIsNotFinite) {
    EXPECT_TRUE(host->setParameter(kLimiterThreshold, 7.0F));
    EXPECT_EQ(host->parameter(kLimiterThreshold), 1.0F);
    EXPECT_TRUE(host->setParameter(kLimiterMode, -3.0F));
    EXPECT_EQ(host->parameter(kLimiterMode), 0.0F);
    EXPECT_FALSE(host->setParameter(kLimiterThreshold, std::numeric_limits<float>::infinity()));
    EXPECT_EQ(host->parameter(kLimiterThreshold), 1.0F);
    const Result<void> unknown = host->setParameter(12, 0.5F);
    ASSERT_FALSE(unknown);
    EXPECT_EQ(unknown.error().localizedDescription(), "There is no parameter 12.");
}

TEST_F(UnitHostTest, BringsTheFilterEdgesBackAfterActivationAndReset) {
    ASSERT_TRUE(host->setParameter(kLimiterInputFilterHP, 0.7F));
    ASSERT_TRUE(host->setParameter(kLimiterInputFilterLP, 0.8F));
    ASSERT_TRUE(host->activate(48000.0));
    const test::Stereo input = test::noise(4096, 0.5F);
    const test::Stereo first = test::render(*host, input, 512);

    // The same settings made while rendering: what recall must sound like.
    const auto live = test::makeHost();
    ASSERT_TRUE(live->activate(48000.0));
    ASSERT_TRUE(live->setParameter(kLimiterInputFilterLP, 0.8F));
    ASSERT_TRUE(live->setParameter(kLimiterInputFilterHP, 0.7F));
    EXPECT_TRUE(test::sameBits(first, test::render(*live, input, 512)));
    EXPECT_FALSE(test::sameBits(first, input));
}

TEST_F(UnitHostTest, AResetOpensNoEdge) {
    const auto reset = test::makeHost();
    for (UnitHost* each : {host.get(), reset.get()}) {
        ASSERT_TRUE(each->setParameter(kLimiterInputFilterHP, 0.6F));
        ASSERT_TRUE(each->setParameter(kLimiterInputFilterLP, 0.9F));
        ASSERT_TRUE(each->activate(48000.0));
    }
    reset->reset();
    reset->resetInRender();
    const test::Stereo input = test::noise(2048, 0.5F);
    EXPECT_TRUE(test::sameBits(test::render(*host, input, 256), test::render(*reset, input, 256)));
}

TEST_F(UnitHostTest, ObserversHearOfAutomationWhenItIsPumpedAndNotBefore) {
    ASSERT_TRUE(host->activate(48000.0));
    std::vector<std::pair<AUParameterAddress, float>> heard;
    const RunLoop::Scope scope(host->runLoop());
    host->unit().parameterTree()->tokenByAddingParameterObserver(
        [&heard](AUParameterAddress address, AUValue value) { heard.emplace_back(address, value); });
    test::render(*host, test::silence(64), 64,
                 {test::parameterAt(3, kLimiterMix, 0.25F), test::parameterAt(9, kLimiterTrim, 0.1F),
                  test::parameterAt(10, kLimiterTrim, 0.75F)});
    EXPECT_TRUE(heard.empty());
    host->pump();
    EXPECT_EQ(heard, (std::vector<std::pair<AUParameterAddress, float>>{{kLimiterTrim, 0.75F},
                                                                        {kLimiterMix, 0.25F}}));
    host->pump();
    EXPECT_EQ(heard.size(), 2U);
}

TEST_F(UnitHostTest, ManyInstancesComeAndGoWhileAServiceThreadRuns) {
    for (int round = 0; round < 5; ++round) {
        std::vector<std::unique_ptr<UnitHost>> hosts;
        for (int i = 0; i < 8; ++i) {
            auto made = UnitHost::create();
            ASSERT_TRUE(made);
            hosts.push_back(std::move(made).value());
            ASSERT_TRUE(hosts.back()->activate(44100.0));
            hosts.back()->pump();
        }
    }
}
