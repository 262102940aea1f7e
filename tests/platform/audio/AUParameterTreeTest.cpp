#include "platform/audio/Audio.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace platform;
using ::testing::ElementsAre;

Ref<AUParameter> makeParameter(const std::string& identifier, AUParameterAddress address) {
    return AUParameterTree::createParameter(
        identifier, "Name of " + identifier, address, 0.0F, 1.0F, AudioUnitParameterUnit::Generic,
        std::nullopt, kAudioUnitParameterFlag_IsReadable | kAudioUnitParameterFlag_IsWritable, std::nullopt,
        std::nullopt);
}

struct SmallTree {
    Ref<AUParameter> first = makeParameter("first", 0);
    Ref<AUParameter> second = makeParameter("second", 7);
    Ref<AUParameterGroup> group = AUParameterTree::createGroup("group", "Group", {first, second});
    Ref<AUParameterTree> tree = AUParameterTree::createTree({group});
};

TEST(AUParameterTree, PlainConstructorMakesAnEmptyTree) {
    const AUParameterTree tree;
    EXPECT_TRUE(tree.children().empty());
    EXPECT_TRUE(tree.allParameters().empty());
    EXPECT_EQ(tree.parameterWithAddress(0), nullptr);
}

TEST(AUParameterTree, ParametersAreListedInOrderAndFoundByAddress) {
    const SmallTree t;
    EXPECT_THAT(t.tree->allParameters(), ElementsAre(t.first, t.second));
    EXPECT_EQ(t.tree->parameterWithAddress(7), t.second);
    EXPECT_EQ(t.tree->parameterWithAddress(1), nullptr);
    EXPECT_EQ(t.second->keyPath(), "group.second");
}

TEST(AUParameterTree, ChildrenThatOutliveTheirGroupBecomeRoots) {
    Ref<AUParameter> kept;
    {
        const SmallTree t;
        kept = t.first;
    }
    EXPECT_EQ(kept->parent(), nullptr);
    kept->setValue(0.5F);
    EXPECT_EQ(kept->value(), 0.5F);
}

TEST(AUParameterTree, ASetValueReachesTheImplementorAndTheProviderIsWhatReadersSee) {
    const SmallTree t;
    float stored = -1.0F;
    t.tree->implementorValueObserver = [&stored](AUParameter&, AUValue value) { stored = value; };
    t.tree->implementorValueProvider = [](AUParameter& parameter) {
        return static_cast<float>(parameter.address()) + 0.25F;
    };
    t.second->setValue(0.5F);
    EXPECT_EQ(stored, 0.5F);
    EXPECT_EQ(t.second->value(), 7.25F);
}

TEST(AUParameterTree, ANearerCallbackGoesBeforeOneFurtherUp) {
    const SmallTree t;
    t.tree->implementorValueProvider = [](AUParameter&) { return 1.0F; };
    t.group->implementorValueProvider = [](AUParameter&) { return 2.0F; };
    t.first->implementorValueProvider = [](AUParameter&) { return 3.0F; };
    EXPECT_EQ(t.first->value(), 3.0F);
    EXPECT_EQ(t.second->value(), 2.0F);
}

TEST(AUParameterTree, StringCallbackGetsThePointerThatTheCallerGave) {
    const SmallTree t;
    t.tree->implementorStringFromValueCallback = [](AUParameter&, const AUValue* value) {
        return value == nullptr ? std::string("absent") : text(*value);
    };
    const AUValue given = 0.5F;
    EXPECT_EQ(t.first->stringFromValue(&given), "0.5");
    EXPECT_EQ(t.first->stringFromValue(nullptr), "absent");
}

TEST(AUParameterTree, ObserversHearEveryParameterBelowTheirNode) {
    const SmallTree t;
    std::vector<std::pair<AUParameterAddress, float>> atTree;
    std::vector<std::pair<AUParameterAddress, float>> atFirst;
    t.tree->tokenByAddingParameterObserver(
        [&](auto address, auto value) { atTree.emplace_back(address, value); });
    t.first->tokenByAddingParameterObserver(
        [&](auto address, auto value) { atFirst.emplace_back(address, value); });
    t.first->setValue(0.1F);
    t.second->setValue(0.2F);
    EXPECT_THAT(atTree, ElementsAre(std::pair(0U, 0.1F), std::pair(7U, 0.2F)));
    EXPECT_THAT(atFirst, ElementsAre(std::pair(0U, 0.1F)));
}

TEST(AUParameterTree, TheOriginatorIsLeftOutAndARemovedObserverIsSilent) {
    const SmallTree t;
    int heardA = 0;
    int heardB = 0;
    const auto a = t.tree->tokenByAddingParameterObserver([&](auto, auto) { ++heardA; });
    const auto b = t.tree->tokenByAddingParameterObserver([&](auto, auto) { ++heardB; });
    EXPECT_NE(a, b);
    t.first->setValue(0.5F, a);
    EXPECT_EQ(heardA, 0);
    EXPECT_EQ(heardB, 1);
    t.tree->removeParameterObserver(b);
    t.tree->removeParameterObserver(b);
    t.first->setValue(0.6F);
    EXPECT_EQ(heardA, 1);
    EXPECT_EQ(heardB, 1);
}

TEST(AUParameterTree, AnObserverMayRemoveItself) {
    const SmallTree t;
    int heard = 0;
    AUParameterObserverToken token = 0;
    token = t.tree->tokenByAddingParameterObserver([&](auto, auto) {
        ++heard;
        t.tree->removeParameterObserver(token);
    });
    t.first->setValue(0.5F);
    t.first->setValue(0.6F);
    EXPECT_EQ(heard, 1);
    EXPECT_EQ(t.tree->parameterObserverCount(), 0U);
}

TEST(AUParameterTree, AnObserverRunsWithinTheRegistrantsLoop) {
    const SmallTree t;
    RunLoop registrants;
    int ran = 0;
    AUParameterObserverToken token = 0;
    {
        const RunLoop::Scope scope(registrants);
        token =
            t.tree->tokenByAddingParameterObserver([&](auto, auto) { dispatchAsyncMain([&] { ++ran; }); });
    }
    RunLoop other;
    {
        const RunLoop::Scope scope(other);
        t.first->setValue(0.5F);
    }
    other.pump();
    EXPECT_EQ(ran, 0);
    registrants.pump();
    EXPECT_EQ(ran, 1);
    t.tree->removeParameterObserver(token);
}

TEST(AUParameterTree, AValueThatCameByAnotherWayIsToldToObserversOnly) {
    const SmallTree t;
    int implementor = 0;
    float heard = 0.0F;
    t.tree->implementorValueObserver = [&](AUParameter&, AUValue) { ++implementor; };
    t.tree->tokenByAddingParameterObserver([&](auto, auto value) { heard = value; });
    t.first->valueDidChange(0.75F);
    EXPECT_EQ(implementor, 0);
    EXPECT_EQ(heard, 0.75F);
}

} // namespace
