#include "unit/FakeHost.h"

namespace {

using namespace qor;
using namespace test;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

class UnitAllocation : public FakeHost {
protected:
    void SetUp() override { make(); }

    /// Every line and call of an allocation without host callbacks, at the given rates before and after.
    static std::vector<std::string> successfulAllocation(const std::string& inputBefore,
                                                         const std::string& rate) {
        return {
            "AUExtension::allocateRenderResources()",
            "AUExtension::outputBusses: 1", // the count
            "AUExtension::outputBusses: 1", // the one bus
            "AUExtension: WARNING: The property 'musicalContextBlock' is NOT defined.",
            "AUExtension: WARNING: The property 'transportStateBlock' is NOT defined.",
            "AUExtension: WARNING: The property 'scheduleMIDIEventBlock' is NOT defined.",
            "AUExtension::midiOutputEventBlock (get) ",
            "AUExtension: WARNING: The property 'midiOutputEventBlock' is NOT defined.",
            "AUExtension: Native wrapped unit input samplerate (prior): " + inputBefore + ".",
            "AUExtension: Native wrapped unit output samplerate (prior): " + rate + ".",
            "AUExtension::outputBusses: 1",
            "wrapped: input format " + rate + ", enabled",
            "AUExtension::outputBusses: 1",
            "wrapped: output format " + rate + ", enabled",
            "AUExtension: New wrapped unit input samplerate: " + rate + ".",
            "AUExtension: New wrapped unit output samplerate: " + rate + ".",
            "wrapped: allocate",
            "wrapped: parameter 0 = 0.03",
            "wrapped: parameter 1 = 0.06",
            "wrapped: parameter 2 = -0.01",
        };
    }
};

TEST_F(UnitAllocation, RunsItsStepsInOrderAt44100) {
    ASSERT_TRUE(unit->allocateRenderResources().ok());
    EXPECT_THAT(lines(), ElementsAreArray(successfulAllocation("44100.0", "44100.0")));
    EXPECT_EQ(unit->kernelAdapter->getSamplerate(), 44100.0F);
    EXPECT_EQ(unit->getSamplerate(), 44100.0);
    EXPECT_TRUE(wrappedOutput().shouldAllocateBuffer());
    EXPECT_FALSE(wrappedInput().shouldAllocateBuffer());
    EXPECT_EQ(unit->effect->attackTime(), 0.03);
    EXPECT_EQ(unit->effect->decayTime(), 0.06);
    EXPECT_EQ(unit->effect->preGain(), -0.01);
}

TEST_F(UnitAllocation, AtANewRateInputAndKernelFollowTheWrappedOutput) {
    ASSERT_TRUE((*unit->outputBusses())[0].setFormat(AVAudioFormat(96000.0, 2)).ok());
    forget();
    ASSERT_TRUE(unit->allocateRenderResources().ok());
    EXPECT_THAT(lines(), ElementsAreArray(successfulAllocation("44100.0", "96000.0")));
    EXPECT_EQ(wrappedInput().format(), AVAudioFormat(96000.0, 2));
    EXPECT_EQ(unit->kernelAdapter->getSamplerate(), 96000.0F);
    EXPECT_EQ(unit->kernelAdapter->inputBus()->format(), AVAudioFormat(96000.0, 2));
}

TEST_F(UnitAllocation, KernelGetsTheRateAsA32BitFloat) {
    ASSERT_TRUE((*unit->outputBusses())[0].setFormat(AVAudioFormat(44100.001, 2)).ok());
    ASSERT_TRUE(unit->allocateRenderResources().ok());
    EXPECT_EQ(unit->kernelAdapter->getSamplerate(), static_cast<float>(44100.001));
    EXPECT_EQ(unit->getSamplerate(), 44100.001);
}

TEST_F(UnitAllocation, CallbacksThatTheHostProvidesReachTheAdapterAndAreToldOf) {
    const AUHostMusicalContextBlock musical = [](double*, double*, long*, double*, long*, double*) {
        return true;
    };
    const AUHostTransportStateBlock transport = [](std::uint32_t*, double*, double*, double*) {
        return true;
    };
    const AUScheduleMIDIEventBlock schedule = [](AUEventSampleTime, std::uint8_t, long, const std::uint8_t*) {
    };
    const AUMIDIOutputEventBlock midi = [](AUEventSampleTime, std::uint8_t, long, const std::uint8_t*) {
        return noErr;
    };
    unit->setMusicalContextBlock(musical);
    unit->setTransportStateBlock(transport);
    unit->setScheduleMIDIEventBlock(schedule);
    unit->setMIDIOutputEventBlock(midi);
    forget();
    ASSERT_TRUE(unit->allocateRenderResources().ok());
    const std::vector<std::string> told = lines();
    EXPECT_THAT(std::vector(told.begin() + 3, told.begin() + 8),
                ElementsAre("AUExtension: The property 'musicalContextBlock' is defined.",
                            "AUExtension: The property 'transportStateBlock' is defined.",
                            "AUExtension: The property 'scheduleMIDIEventBlock' is defined.",
                            "AUExtension::midiOutputEventBlock (get) ",
                            "AUExtension: The property 'midiOutputEventBlock' is defined."));
    for (const std::size_t uses :
         {musical.useCount(), transport.useCount(), schedule.useCount(), midi.useCount()}) {
        EXPECT_EQ(uses, 3U); // ours, the unit's, the adapter's
    }
    unit->setMusicalContextBlock(nullptr);
    ASSERT_TRUE(unit->allocateRenderResources().ok());
    EXPECT_EQ(musical.useCount(), 1U); // an absent one is handed over too
}

TEST_F(UnitAllocation, AFailedInputFormatChangeIsLoggedSkipsTheOutputAndStillSucceeds) {
    wrapped.inputFormatFails = true;
    ASSERT_TRUE(unit->allocateRenderResources().ok());
    const std::vector<std::string> told = lines();
    EXPECT_THAT(
        std::vector(told.begin() + 10, told.end()),
        ElementsAre("AUExtension::outputBusses: 1", "wrapped: input format 44100.0, enabled",
                    "AUExtension: WARNING: The format could not be set to the wrapped unit: not this format.",
                    "AUExtension: New wrapped unit input samplerate: 44100.0.",
                    "AUExtension: New wrapped unit output samplerate: 44100.0.", "wrapped: allocate",
                    "wrapped: parameter 0 = 0.03", "wrapped: parameter 1 = 0.06",
                    "wrapped: parameter 2 = -0.01"));
}

TEST_F(UnitAllocation, AFailedOutputFormatChangeIsLoggedAndStillSucceeds) {
    wrapped.outputFormatFails = true;
    ASSERT_TRUE(unit->allocateRenderResources().ok());
    const std::vector<std::string> told = lines();
    EXPECT_THAT(
        std::vector(told.begin() + 10, told.begin() + 15),
        ElementsAre(
            "AUExtension::outputBusses: 1", "wrapped: input format 44100.0, enabled",
            "AUExtension::outputBusses: 1", "wrapped: output format 44100.0, enabled",
            "AUExtension: WARNING: The format could not be set to the wrapped unit: not this format."));
}

TEST_F(UnitAllocation, AFailedWrappedAllocationReachesTheHostAndTheAdapterStaysAllocated) {
    wrapped.allocationFails = true;
    const Result<void> result = unit->allocateRenderResources();
    ASSERT_FALSE(result.ok());
    EXPECT_EQ(result.error().domain, "wrapped");
    EXPECT_EQ(result.error().code, 77);
    EXPECT_EQ(lines().back(), "wrapped: allocate"); // no time constants are sent
    EXPECT_EQ(unit->effect->attackTime(), 0.012);
    float left[8] = {};
    float right[8] = {};
    AudioBufferListStorage<2> out;
    out.list.mBuffers[0] = {1, sizeof left, left};
    out.list.mBuffers[1] = {1, sizeof right, right};
    AudioTimeStamp timestamp;
    AudioUnitRenderActionFlags flags = 0;
    EXPECT_EQ(unit->kernelAdapter->render(&flags, &timestamp, 8, 0, &out.list, nullptr, nullptr), noErr);
}

TEST_F(UnitAllocation, EachAllocationRepeatsTheTimeConstants) {
    ASSERT_TRUE(unit->allocateRenderResources().ok());
    unit->effect->setAttackTime(0.01);
    unit->effect->setPreGain(3.0);
    ASSERT_TRUE(unit->allocateRenderResources().ok());
    EXPECT_EQ(unit->effect->attackTime(), 0.03);
    EXPECT_EQ(unit->effect->preGain(), -0.01);
}

TEST_F(UnitAllocation, DeallocationReleasesBothHalves) {
    ASSERT_TRUE(unit->allocateRenderResources().ok());
    forget();
    unit->deallocateRenderResources();
    EXPECT_THAT(lines(), ElementsAre("AUExtension::deallocateRenderResources()", "wrapped: deallocate"));
}

TEST_F(UnitAllocation, ResetReachesBothHalves) {
    ASSERT_TRUE(unit->allocateRenderResources().ok());
    forget();
    unit->reset();
    EXPECT_THAT(lines(), ElementsAre("AUExtension::reset()", "wrapped: reset"));
}

TEST_F(UnitAllocation, BaseClassIsNotTold) {
    ASSERT_TRUE(unit->allocateRenderResources().ok());
    EXPECT_FALSE(unit->renderResourcesAllocated());
}

} // namespace
