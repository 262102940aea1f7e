#include "unit/FakeHost.h"

namespace {

using namespace qor;
using namespace test;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

class UnitConstruction : public FakeHost {};

TEST_F(UnitConstruction, RunsInItsOrderAndTellsSoToTheLetter) {
    unit = QOR_Limiter_Extension_AudioUnit::init(kQORLimiterComponent, {}).value();
    // What the kernel and the wrapper print goes out at once: the defaults come before the limiter.
    std::vector<std::string> expected;
    for (const char* parameter :
         {"0, value:0.100000", "1, value:0.500000", "2, value:0.800000", "3, value:0.500000",
          "4, value:0.500000", "5, value:1.000000", "6, value:0.000000", "7, value:0.000000",
          "8, value:0.000000", "9, value:0.000000", "10, value:1.000000", "11, value:1.000000"}) {
        expected.push_back(std::string("unit received parameter : address:") + parameter);
    }
    expected.emplace_back("System Peak Limiter AudioUnit created and initialized.");
    EXPECT_THAT(log.lines(), ElementsAreArray(expected));
    // The rest is queued, in its own order.
    log.clear();
    EXPECT_THAT(lines(), ElementsAre("AUExtension::init()", "QRVK : qlm1", "wrapped: parameter 0 = 0.012",
                                     "wrapped: parameter 1 = 0.024", "wrapped: parameter 2 = 0.0"));
}

TEST_F(UnitConstruction, DropsTheOptionsThatTheHostPasses) {
    const auto made =
        QOR_Limiter_Extension_AudioUnit::init(kQORLimiterComponent, AudioComponentInstantiationOptions{5});
    ASSERT_TRUE(made.ok());
    EXPECT_EQ(made.value()->instantiationOptions(), AudioComponentInstantiationOptions{});
    EXPECT_EQ(made.value()->componentDescription(), kQORLimiterComponent);
}

TEST_F(UnitConstruction, AnErrorOfTheBaseReachesTheCaller) {
    const auto made = QOR_Limiter_Extension_AudioUnit::init(AudioComponentDescription{}, {});
    ASSERT_FALSE(made.ok());
    EXPECT_EQ(made.error().code, kAudioUnitErr_FailedInitialization);
    EXPECT_EQ(lines().front(), "unit received parameter : address:0, value:0.100000"); // it came that far
}

TEST_F(UnitConstruction, ComponentIsAnEffectWithTheUnitsCodes) {
    EXPECT_EQ(stringValue(kQORLimiterComponent.componentType), "aufx");
    EXPECT_EQ(stringValue(kQORLimiterComponent.componentSubType), "qlm1");
    EXPECT_EQ(stringValue(kQORLimiterComponent.componentManufacturer), "QRVK");
}

TEST_F(UnitConstruction, YieldsAWorkingKernelAtItsDefaults) {
    make();
    EXPECT_EQ(unit->kernelAdapter->getSamplerate(), 48000.0F);
    EXPECT_EQ(unit->parameterTree()->allParameters().size(), 12U);
    EXPECT_EQ(unit->getParameter(2), 0.8F);
    EXPECT_EQ(unit->parameters->unit(), nullptr);
    EXPECT_EQ(unit->currentOuputData, nullptr);
    EXPECT_TRUE(unit->presets.empty());
}

TEST_F(UnitConstruction, DestructionReleasesTheUnitAndItsParts) {
    make();
    const Weak<QOR_Limiter_Extension_AudioUnit> weakUnit = unit;
    const Weak<QOR_Limiter_ExtensionDSPKernelAdapter> weakAdapter = unit->kernelAdapter;
    AUInternalRenderBlock block = unit->internalRenderBlock();
    unit = nullptr;
    EXPECT_FALSE(weakUnit.expired()); // the closure keeps it
    block = nullptr;
    EXPECT_TRUE(weakUnit.expired());
    EXPECT_TRUE(weakAdapter.expired());
}

using UnitConstructionDeathTest = UnitConstruction;

TEST_F(UnitConstructionDeathTest, AnAbsentWrapperStopsTheProcess) {
    make();
    unit->effect = nullptr;
    EXPECT_DEATH(unit->inputBusses(), "Unexpectedly found nil while implicitly unwrapping an Optional value");
}

TEST_F(UnitConstructionDeathTest, AWrapperWithoutAUnitStopsTheProcess) {
    wrapped.exists = false;
    make();
    EXPECT_DEATH(unit->inputBusses(), "Unexpectedly found nil while unwrapping an Optional value");
}

} // namespace
