#include "platform/audio/Audio.h"
#include "platform/files/PropertyList.h"

#include <gtest/gtest.h>

namespace {

using namespace platform;

class PlainUnit final : public AUAudioUnit {
public:
    static Result<Ref<PlainUnit>> make(const AudioComponentDescription& description) {
        Ref<PlainUnit> unit(new PlainUnit);
        if (auto base = unit->initWithComponentDescription(description, 0); !base) {
            return base.error();
        }
        return unit;
    }
    using AUAudioUnit::guardFormat;
};

constexpr AudioComponentDescription kPlain{fourCharacterCode("aufx"), fourCharacterCode("test"),
                                           fourCharacterCode("QTst"), 0, 0};

Ref<AUAudioUnitBus> stereoBus() {
    return AUAudioUnitBus::initWithFormat(AVAudioFormat(44100.0, 2)).value();
}

TEST(AUAudioUnit, HasThePlatformsDefaults) {
    const auto unit = PlainUnit::make(kPlain).value();
    EXPECT_EQ(unit->componentDescription(), kPlain);
    EXPECT_EQ(unit->maximumFramesToRender(), 4096U);
    EXPECT_EQ(unit->latency(), 0.0);
    EXPECT_EQ(unit->tailTime(), 0.0);
    EXPECT_FALSE(unit->shouldBypassEffect());
    EXPECT_FALSE(unit->renderResourcesAllocated());
    EXPECT_EQ(unit->inputBusses()->count(), 0U);
    EXPECT_EQ(unit->outputBusses()->count(), 0U);
    EXPECT_EQ(unit->parameterTree(), nullptr);
    EXPECT_EQ(unit->currentPreset(), nullptr);
    EXPECT_FALSE(unit->fullState().has_value());
    unit->setFullState(PropertyListDictionary{});
    EXPECT_FALSE(unit->fullState().has_value());
    EXPECT_EQ(unit->presetStateFor(AUAudioUnitPreset()).error().code, kAudioUnitErr_InvalidFilePath);
    EXPECT_FALSE(unit->musicalContextBlock());
    EXPECT_FALSE(unit->transportStateBlock());
    EXPECT_FALSE(unit->scheduleMIDIEventBlock());
    EXPECT_FALSE(unit->MIDIOutputEventBlock());
    EXPECT_FALSE(unit->component().has_value());
    EXPECT_FALSE(unit->audioUnitName().has_value());
    EXPECT_EQ(unit->plainHandle(), nullptr);
}

TEST(AUAudioUnit, KeepsWhatTheHostSets) {
    const auto unit = PlainUnit::make(kPlain).value();
    unit->setMaximumFramesToRender(64);
    EXPECT_EQ(unit->maximumFramesToRender(), 64U);
    const AUHostTransportStateBlock transport = [](auto...) { return true; };
    unit->setTransportStateBlock(transport);
    EXPECT_EQ(unit->transportStateBlock(), transport);
    unit->setContextName("Drums");
    EXPECT_EQ(unit->contextName(), "Drums");
}

TEST(AUAudioUnit, RefusesADescriptionWithoutAType) {
    const auto unit = PlainUnit::make({});
    ASSERT_FALSE(unit.ok());
    EXPECT_EQ(unit.error().domain, NSOSStatusErrorDomain);
    EXPECT_EQ(unit.error().code, kAudioUnitErr_FailedInitialization);
}

TEST(AUAudioUnit, RefusesANewFormatWhileItHoldsRenderResources) {
    const auto unit = PlainUnit::make(kPlain).value();
    const auto bus = stereoBus();
    unit->guardFormat(*bus);
    ASSERT_TRUE(unit->allocateRenderResources().ok());
    const auto refused = bus->setFormat(AVAudioFormat(96000.0, 2));
    ASSERT_FALSE(refused.ok());
    EXPECT_EQ(refused.error().code, kAudioUnitErr_Initialized);
    EXPECT_EQ(bus->format(), AVAudioFormat(44100.0, 2));
    unit->deallocateRenderResources();
    EXPECT_TRUE(bus->setFormat(AVAudioFormat(96000.0, 2)).ok());
}

TEST(AUAudioUnitBusArray, TellsItsBusesTheirPlaceAndType) {
    const auto first = stereoBus();
    const auto second = stereoBus();
    const AUAudioUnitBusArray array(nullptr, AUAudioUnitBusType::Input, {first, second});
    EXPECT_EQ(array.count(), 2U);
    EXPECT_EQ(&array[1], second.get());
    EXPECT_EQ(second->index(), 1);
    EXPECT_EQ(second->busType(), AUAudioUnitBusType::Input);
}

TEST(AUAudioUnitBusArrayDeathTest, AnIndexBeyondTheLastBusStopsTheProcess) {
    const AUAudioUnitBusArray array(nullptr, AUAudioUnitBusType::Input, {stereoBus()});
    EXPECT_DEATH((void)array[1], "index 1 is beyond the last bus of 1");
}

TEST(AUAudioUnitBusArray, ALentArrayOutlivesItsOwner) {
    Ref<AUAudioUnitBusArray> lent;
    {
        const auto limiter = instantiateAudioUnit(kSystemPeakLimiter).value();
        ASSERT_TRUE(limiter->allocateRenderResources().ok());
        lent = limiter->outputBusses();
        EXPECT_EQ(lent->ownerAudioUnit(), limiter.get());
    }
    EXPECT_EQ(lent->ownerAudioUnit(), nullptr);
    EXPECT_EQ((*lent)[0].ownerAudioUnit(), nullptr);
    EXPECT_TRUE((*lent)[0].setFormat(AVAudioFormat(96000.0, 2)).ok());
}

TEST(AudioComponent, TheSystemLimiterIsRegistered) {
    const auto component = audioComponentFind(kSystemPeakLimiter);
    ASSERT_TRUE(component.has_value());
    const auto unit = instantiateAudioUnit(kSystemPeakLimiter);
    ASSERT_TRUE(unit.ok());
    EXPECT_EQ(unit.value()->componentName(), component->name);
    EXPECT_EQ(unit.value()->audioUnitName(), "Peak Limiter");
    EXPECT_NE(unit.value()->plainHandle(), nullptr);
}

TEST(AudioComponent, AnUnknownDescriptionGivesAnErrorThatNamesIt) {
    const auto unit = instantiateAudioUnit(kPlain);
    ASSERT_FALSE(unit.ok());
    EXPECT_EQ(unit.error().code, kAudioComponentErr_NotFound);
    EXPECT_NE(unit.error().localizedDescription().find("\"aufx test QTst\""), std::string::npos);
}

TEST(AudioComponent, TheLatestRegistrationHoldsWhileItLives) {
    const AudioUnitFactory plain = [](const AudioComponentDescription& description, auto) {
        auto made = PlainUnit::make(description);
        return Result<Ref<AUAudioUnit>>(Ref<AUAudioUnit>(std::move(made).value()));
    };
    {
        const AudioComponentRegistration registration({kSystemPeakLimiter, "Test: Plain", "Test", 1}, plain);
        EXPECT_EQ(instantiateAudioUnit(kSystemPeakLimiter).value()->manufacturerName(), "Test");
    }
    EXPECT_EQ(instantiateAudioUnit(kSystemPeakLimiter).value()->manufacturerName(), "System");
}

TEST(AVAudioUnitEffect, AnUnknownDescriptionLeavesTheNodeWithoutAUnit) {
    const AVAudioUnitEffect node(kPlain);
    EXPECT_EQ(node.AUAudioUnit(), nullptr);
    EXPECT_EQ(node.audioUnit(), nullptr);
    EXPECT_EQ(node.numberOfInputs(), 0U);
    EXPECT_EQ(AudioUnitSetParameter(node.audioUnit(), 0, 0, 0, 0.0F, 0), kAudio_ParamError);
}

TEST(AVAudioUnitEffect, ReachesTheUnitBothWays) {
    const AVAudioUnitEffect node(kSystemPeakLimiter);
    ASSERT_NE(node.AUAudioUnit(), nullptr);
    EXPECT_EQ(node.audioUnit(), node.AUAudioUnit()->plainHandle());
    EXPECT_EQ(node.name(), "Peak Limiter");
    EXPECT_EQ(node.numberOfInputs(), 1U);
    EXPECT_EQ(node.numberOfOutputs(), 1U);
    EXPECT_EQ(node.outputFormatForBus(0), AVAudioFormat(44100.0, 2));
}

TEST(AVAudioEngine, HoldsANodeFromAttachingToDetaching) {
    AVAudioEngine engine;
    const auto node = makeRef<AVAudioUnitEffect>(kPlain);
    engine.attachNode(node);
    engine.attachNode(node);
    EXPECT_EQ(engine.attachedNodes().size(), 1U);
    EXPECT_EQ(node->engine(), &engine);
    engine.detachNode(node);
    EXPECT_TRUE(engine.attachedNodes().empty());
    EXPECT_EQ(node->engine(), nullptr);
}

TEST(AVAudioEngine, AttachingElsewhereLeavesTheFirstEngine) {
    AVAudioEngine first;
    const auto node = makeRef<AVAudioUnitEffect>(kPlain);
    first.attachNode(node);
    {
        AVAudioEngine second;
        second.attachNode(node);
        EXPECT_TRUE(first.attachedNodes().empty());
        EXPECT_EQ(node->engine(), &second);
    }
    EXPECT_EQ(node->engine(), nullptr);
}

} // namespace
