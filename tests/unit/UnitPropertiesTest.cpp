#include "unit/FakeHost.h"

namespace qor {

/// Reaches the operations that only the unit itself may call.
class AudioUnitInspector {
public:
    static void dumpParameters(QOR_Limiter_Extension_AudioUnit& unit, const AUParameterGroup* tree,
                               int level) {
        unit.dumpParameters("name", tree, level);
    }
    static AURenderPullInputBlock renderPullInputBlock(QOR_Limiter_Extension_AudioUnit& unit) {
        return unit.renderPullInputBlock();
    }
};

} // namespace qor

namespace {

using namespace qor;
using namespace test;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class UnitProperties : public FakeHost {
protected:
    void SetUp() override { make(); }
};

TEST_F(UnitProperties, BusesAreTheWrappedUnitsOwnArrays) {
    EXPECT_EQ(unit->inputBusses(), wrapped.unit->inputBusses());
    EXPECT_EQ(unit->outputBusses(), wrapped.unit->outputBusses());
}

TEST_F(UnitProperties, BusGettersLogTheirCountOnEachUse) {
    unit->inputBusses();
    unit->outputBusses();
    unit->outputBusses();
    EXPECT_THAT(lines(), ElementsAre("AUExtension::inputBusses: 1", "AUExtension::outputBusses: 1",
                                     "AUExtension::outputBusses: 1"));
}

TEST_F(UnitProperties, MaximumFramesReachTheKernelButNotTheWrappedUnit) {
    EXPECT_EQ(unit->maximumFramesToRender(), 4096U);
    unit->setMaximumFramesToRender(512);
    EXPECT_EQ(unit->maximumFramesToRender(), 512U);
    EXPECT_EQ(unit->kernelAdapter->maximumFramesToRender(), 512U);
    EXPECT_EQ(wrapped.unit->maximumFramesToRender(), 4096U);
    EXPECT_THAT(lines(), ElementsAre("AUExtension::maximumFramesToRender (set): 512"));
}

TEST_F(UnitProperties, BypassReachesTheKernelThenTheWrappedUnit) {
    unit->setShouldBypassEffect(true);
    EXPECT_TRUE(unit->shouldBypassEffect());
    EXPECT_TRUE(unit->kernelAdapter->shouldBypassEffect());
    EXPECT_TRUE(wrapped.unit->shouldBypassEffect());
    EXPECT_THAT(lines(), ElementsAre("AUExtension::shouldBypassEffect (did set)", "wrapped: bypass true"));
    unit->setShouldBypassEffect(false);
    EXPECT_FALSE(unit->kernelAdapter->shouldBypassEffect());
    EXPECT_FALSE(wrapped.unit->shouldBypassEffect());
}

TEST_F(UnitProperties, ANewParameterTreeIsDropped) {
    const Ref<AUParameterTree> before = unit->parameterTree();
    EXPECT_THAT(lines(), IsEmpty());
    unit->setParameterTree(makeRef<AUParameterTree>());
    EXPECT_EQ(unit->parameterTree(), before);
    EXPECT_THAT(lines(), ElementsAre("AUExtension::parameterTree (set) !!!"));
}

TEST_F(UnitProperties, OverviewParametersAreNone) {
    EXPECT_THAT(unit->parametersForOverviewWithCount(4), IsEmpty());
    EXPECT_THAT(lines(), ElementsAre("AUExtension::parametersForOverview()"));
}

TEST_F(UnitProperties, ViewConfigurationsAreNoneWhateverTheHostOffers) {
    EXPECT_THAT(unit->supportedViewConfigurations({{512.0, 340.0, false}, {1024.0, 680.0, true}}), IsEmpty());
    EXPECT_THAT(lines(), ElementsAre("AUExtension::supportedViewConfigurations()"));
}

TEST_F(UnitProperties, FixedAnswersAreToldToTheLetter) {
    EXPECT_TRUE(unit->isMusicDeviceOrEffect());
    EXPECT_EQ(unit->virtualMIDICableCount(), 1);
    EXPECT_THAT(unit->MIDIOutputNames(), ElementsAre("QOR Limiter MIDI Out"));
    EXPECT_TRUE(unit->canPerformInput());
    EXPECT_TRUE(unit->canPerformOutput());
    EXPECT_TRUE(unit->canProcessInPlace());
    EXPECT_THAT(*unit->channelCapabilities(), ElementsAre(2, 2));
    EXPECT_THAT(
        lines(),
        ElementsAre("AUExtension::isMusicDeviceOrEffect: true", "AUExtension::virtualMIDICableCount: 1",
                    "AUExtension::midiOutputNames: [\"QOR Limiter MIDI Out\"]",
                    "AUExtension::canPerformInput: true", "AUExtension::canPerformOutput: true",
                    "AUExtension::canProcessInPlace() true", "AUExtension::channelCapabilities() 2:2"));
}

TEST_F(UnitProperties, UserPresetsAreRefusedThoughTheLineSaysTrue) {
    EXPECT_FALSE(unit->supportsUserPresets());
    EXPECT_THAT(lines(), ElementsAre("AUExtension::supportsUserPresets: true"));
}

TEST_F(UnitProperties, ChannelMapReadsAbsentAfterAnyWrite) {
    unit->setChannelMap(std::vector<std::int64_t>{1, 0});
    EXPECT_FALSE(unit->channelMap().has_value());
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(UnitProperties, LatencyAndTailAreThePlatformsDefaults) {
    EXPECT_EQ(unit->latency(), 0.0);
    EXPECT_EQ(unit->tailTime(), 0.0);
}

TEST_F(UnitProperties, APresentMIDIOutputIsAlsoHandedToTheAdapterAnAbsentOneIsNot) {
    const AUMIDIOutputEventBlock block = [](AUEventSampleTime, std::uint8_t, long, const std::uint8_t*) {
        return noErr;
    };
    unit->setMIDIOutputEventBlock(block);
    EXPECT_EQ(block.useCount(), 3U); // ours, the unit's, the adapter's
    EXPECT_EQ(unit->MIDIOutputEventBlock(), block);
    unit->setMIDIOutputEventBlock(nullptr);
    EXPECT_EQ(block.useCount(), 2U); // the adapter still has it
    EXPECT_FALSE(unit->MIDIOutputEventBlock());
    EXPECT_THAT(lines(), ElementsAre("AUExtension::midiOutputEventBlock (set) ",
                                     "AUExtension::midiOutputEventBlock (get) ",
                                     "AUExtension::midiOutputEventBlock (set) ",
                                     "AUExtension::midiOutputEventBlock (get) "));
}

TEST_F(UnitProperties, OwnBusArraysHoldTheAdaptersBusesAndAreNotWhatTheHostSees) {
    const Ref<AUAudioUnitBusArray> inputs = unit->inputBusArray();
    const Ref<AUAudioUnitBusArray> outputs = unit->outputBusArray();
    ASSERT_EQ(inputs->count(), 1U);
    ASSERT_EQ(outputs->count(), 1U);
    EXPECT_EQ(&(*inputs)[0], unit->kernelAdapter->inputBus().get());
    EXPECT_EQ(&(*outputs)[0], unit->kernelAdapter->outputBus().get());
    EXPECT_EQ(inputs->busType(), AUAudioUnitBusType::Input);
    EXPECT_EQ(outputs->busType(), AUAudioUnitBusType::Output);
    EXPECT_EQ(unit->inputBusArray(), inputs);
    EXPECT_EQ(unit->outputBusArray(), outputs);
    EXPECT_NE(unit->inputBusses(), inputs);
}

TEST_F(UnitProperties, DumpedParametersAreIndentedByLevel) {
    AudioUnitInspector::dumpParameters(*unit, unit->parameterTree().get(), 2);
    const std::vector<std::string> dumped = lines();
    ASSERT_EQ(dumped.size(), 13U);
    EXPECT_EQ(dumped[0], "  QOR Limiter Global");
    EXPECT_EQ(dumped[1], "   Limiter Attack");
    EXPECT_EQ(dumped[12], "   Final Limiter");
    forget();
    AudioUnitInspector::dumpParameters(*unit, nullptr, 0);
    const Ref<AUParameterTree> empty = makeRef<AUParameterTree>();
    AudioUnitInspector::dumpParameters(*unit, empty.get(), 0);
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(UnitProperties, PreparedPullBlockDeliversTheFirstBufferOfTheCurrentOutput) {
    const AURenderPullInputBlock block = AudioUnitInspector::renderPullInputBlock(*unit);
    float samples[4] = {};
    AudioBufferListStorage<2> given;
    given.list.mBuffers[0] = {7, 8, nullptr};
    EXPECT_EQ(block(nullptr, nullptr, 4, 0, &given.list), noErr);
    EXPECT_EQ(given.list.mBuffers[0].mNumberChannels, 7U); // no output yet: untouched
    AudioBufferListStorage<1> output;
    output.list.mBuffers[0] = {1, 16, samples};
    unit->currentOuputData = &output.list;
    EXPECT_EQ(block(nullptr, nullptr, 4, 0, &given.list), noErr);
    EXPECT_EQ(given.list.mNumberBuffers, 2U);
    EXPECT_EQ(given.list.mBuffers[0].mNumberChannels, 1U);
    EXPECT_EQ(given.list.mBuffers[0].mDataByteSize, 16U);
    EXPECT_EQ(given.list.mBuffers[0].mData, samples);
    EXPECT_EQ(given.list.mBuffers[1].mData, nullptr);
}

} // namespace
