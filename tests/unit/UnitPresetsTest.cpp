#include "unit/FakeHost.h"

#include "kernel/ParameterTable.h"
#include "support/TemporaryDirectory.h"

#include <algorithm>
#include <filesystem>

namespace {

using namespace qor;
using namespace test;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kFolder = "QOR Limiter Folder/Library/Factory Presets/";

/// A preset file's text in the shape that moves a parameter.
std::string presetText(int address, const std::string& value) {
    return "<plist version=\"1.0\"><dict><key>group 0</key><dict><key>param</key><dict>"
           "<key>address</key><integer>" +
           std::to_string(address) + "</integer><key>value</key><real>" + value +
           "</real></dict></dict></dict></plist>";
}

PropertyListDictionary stateWith(std::int64_t address, float value) {
    return {{"group 0", PropertyListDictionary{
                            {"param", PropertyListDictionary{{"address", address}, {"value", value}}}}}};
}

class UnitPresets : public FakeHost {
protected:
    void SetUp() override { make(); }

    void add(const std::string& name, const std::string& content) {
        test::writeFile(resources.file(kFolder + name), content);
    }
    static Ref<AUAudioUnitPreset> preset(std::int64_t number, const std::string& name) {
        return makeRef<AUAudioUnitPreset>(number, name);
    }
    /// What the unit logs, without the kernel's and the wrapped unit's lines.
    std::vector<std::string> unitLines() {
        std::vector<std::string> result = lines();
        std::erase_if(result, [](const std::string& line) { return line.rfind("unit received", 0) == 0; });
        return result;
    }

    TemporaryDirectory resources;
    ScopedVariable variable{Bundle::main().overrideVariable().c_str(), resources.path().string()};
};

} // namespace

TEST_F(UnitPresets, FullStateOfANewUnitHoldsTheTwelveDefaults) {
    const auto state = unit->fullState();
    ASSERT_TRUE(state);
    ASSERT_EQ(state->size(), 8U);
    EXPECT_EQ(*state->find("name"), PropertyList("QOR Limiter Preset"));
    EXPECT_EQ(*state->find("count"), PropertyList(1));
    const PropertyListDictionary& group = *state->find("group 0")->asDictionary();
    EXPECT_EQ(*group.find("identifier"), PropertyList("kGlobalParameters"));
    EXPECT_EQ(*group.find("count"), PropertyList(12));
    EXPECT_EQ(group.size(), 14U);
    for (const ParameterRow& row : kParameterTable) {
        const PropertyList* param = group.find("param " + std::to_string(row.address));
        ASSERT_NE(param, nullptr) << row.identifier;
        EXPECT_EQ(*param,
                  PropertyList(PropertyListDictionary{{"address", static_cast<std::int64_t>(row.address)},
                                                      {"identifier", row.identifier},
                                                      {"value", row.defaultValue}}));
    }
}

TEST_F(UnitPresets, ARestoreOfFullStateMovesNoParameterAndKeepsTheGroups) {
    for (const ParameterRow& row : kParameterTable) {
        unit->setParameter(static_cast<std::int32_t>(row.address), 0.25F);
    }
    const auto state = unit->fullState();
    const std::string path = resources.file("state.plist");
    QORPreset writer;
    writer.makeFrom(state);
    writer.makeFrom(unit->parameterTree().get());
    writer.save(URL::fileURLWithPath(path));
    for (const ParameterRow& row : kParameterTable) {
        unit->setParameter(static_cast<std::int32_t>(row.address), 0.75F);
    }
    unit->setFullState(state);
    QORPreset reader;
    reader.load(URL::fileURLWithPath(path));
    for (const ParameterRow& row : kParameterTable) {
        EXPECT_EQ(unit->getParameter(static_cast<std::int32_t>(row.address)), 0.75F) << row.identifier;
    }
    ASSERT_EQ(reader.patch->groups.size(), 2U);
    EXPECT_EQ(reader.patch->groups[0]->identifier, "kGlobalParameters");
    EXPECT_THAT(reader.patch->groups[0]->params, IsEmpty());
}

TEST_F(UnitPresets, AStateInTheReadersShapeReachesTreeAndKernel) {
    unit->setFullState(stateWith(kLimiterTrim, 0.625F));
    EXPECT_EQ(unit->parameterTree()->parameterWithAddress(kLimiterTrim)->value(), 0.625F);
    EXPECT_EQ(unit->getParameter(kLimiterTrim), 0.625F);
    EXPECT_EQ(lines().front(), "unit received parameter : address:4, value:0.625000");
}

TEST_F(UnitPresets, AHostThatKnowsOnlyTheBaseReachesStateAndPresets) {
    add("Warm.plist", presetText(4, "0.25"));
    AUAudioUnit& base = *unit;
    EXPECT_TRUE(base.fullState().value().find("group 0") != nullptr);
    base.setFullState(stateWith(kLimiterTrim, 0.625F));
    EXPECT_EQ(unit->getParameter(kLimiterTrim), 0.625F);
    EXPECT_TRUE(base.presetStateFor(AUAudioUnitPreset(0, "Warm")).ok());
    EXPECT_FALSE(base.presetStateFor(AUAudioUnitPreset(0, "Cold")).ok());
}

TEST_F(UnitPresets, AnUnknownAddressIsNothing) {
    unit->setFullState(stateWith(12, 0.5F));
    EXPECT_THAT(unitLines(), IsEmpty());
}

TEST_F(UnitPresets, FullStateSetWithNothingReadsNothingAndStillTakesTheDelegate) {
    const auto other = QOR_Limiter_Extension_AudioUnit::init(kQORLimiterComponent, {}).value();
    other->setFullState(PropertyListDictionary{});
    EXPECT_EQ(QORPreset::delegate.lock(), other);
    forget();
    unit->setFullState(std::nullopt);
    EXPECT_EQ(QORPreset::delegate.lock(), unit);
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(UnitPresets, NumbersAreThePlacesAmongAllEntries) {
    // The directory decides on its order: look for names of which it gives the text file first.
    std::vector<std::string> order;
    const FileManager& files = FileManager::defaultManager();
    for (int i = 0; i < 64 && (order.empty() || order[0] == "b.plist"); ++i) {
        std::filesystem::remove_all(resources.file(kFolder));
        add("b.plist", presetText(2, "0.5"));
        add("a" + std::to_string(i) + ".txt", "no preset");
        order = files.contentsOfDirectoryAtPath(resources.file(kFolder)).value();
    }
    ASSERT_NE(order[0], "b.plist") << "no order with the text file in front was found";
    const auto presets = unit->factoryPresets();
    ASSERT_TRUE(presets);
    ASSERT_EQ(presets->size(), 1U);
    EXPECT_EQ(presets->at(0)->name(), "b");
    EXPECT_EQ(presets->at(0)->number(), 1);
    // Number 1 is not below the length of 1 until the list has been read a second time.
    unit->setCurrentPreset(presets->at(0));
    EXPECT_THAT(lines(), ElementsAre("AUExtension::ERROR: The preset number 1 is invalid."));
    EXPECT_EQ(unit->currentPreset(), nullptr);
    (void)unit->factoryPresets();
    unit->setCurrentPreset(presets->at(0));
    EXPECT_EQ(unit->currentPreset(), presets->at(0));
    EXPECT_EQ(unit->getParameter(2), 0.5F);
}

TEST_F(UnitPresets, TheListIsInTheDirectorysOrder) {
    for (const char* name : {"zeta.plist", "Alpha.plist", "mid.plist", "10.plist", "9.plist"}) {
        add(name, presetText(2, "0.5"));
    }
    const auto order =
        FileManager::defaultManager().contentsOfDirectoryAtPath(resources.file(kFolder)).value();
    const auto presets = unit->factoryPresets();
    ASSERT_EQ(presets->size(), order.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        EXPECT_EQ(presets->at(i)->name() + ".plist", order[i]);
        EXPECT_EQ(presets->at(i)->number(), static_cast<std::int64_t>(i));
    }
}

TEST_F(UnitPresets, ReadingTheListTwiceDoublesItWithTheSameNumbers) {
    add("a.plist", presetText(2, "0.5"));
    add("b.plist", presetText(2, "0.5"));
    (void)unit->factoryPresets();
    const auto presets = unit->factoryPresets();
    ASSERT_EQ(presets->size(), 4U);
    EXPECT_EQ(unit->presets.size(), 4U);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(presets->at(i)->number(), presets->at(i + 2)->number());
        EXPECT_EQ(presets->at(i)->name(), presets->at(i + 2)->name());
    }
}

TEST_F(UnitPresets, AnExtensionInCapitalsIsListedButNotFound) {
    add("Warm.PLIST", presetText(2, "0.5"));
    const auto presets = unit->factoryPresets();
    ASSERT_EQ(presets->size(), 1U);
    EXPECT_EQ(presets->at(0)->name(), "Warm");
    unit->setCurrentPreset(presets->at(0));
    EXPECT_THAT(lines(), ElementsAre("AUExtension::ERROR: The preset file 'Warm.plist' does not exist."));
    EXPECT_EQ(unit->currentPreset(), nullptr);
}

TEST_F(UnitPresets, AnEmptyDirectoryGivesAnEmptyList) {
    std::filesystem::create_directories(resources.file(kFolder));
    EXPECT_THAT(unit->factoryPresets().value(), IsEmpty());
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(UnitPresets, AMissingDirectoryIsLoggedAndTheListStays) {
    unit->presets = {preset(0, "kept")};
    const auto presets = unit->factoryPresets();
    ASSERT_EQ(presets->size(), 1U);
    EXPECT_EQ(presets->at(0)->name(), "kept");
    const auto logged = lines();
    ASSERT_EQ(logged.size(), 1U);
    EXPECT_THAT(logged[0],
                ::testing::StartsWith("Creating factory presets failed: The directory can't be read: "));
}

TEST_F(UnitPresets, NumberFiveWithAnEmptyListIsInvalid) {
    unit->setCurrentPreset(preset(5, "any"));
    EXPECT_THAT(lines(), ElementsAre("AUExtension::ERROR: The preset number 5 is invalid."));
    EXPECT_EQ(unit->currentPreset(), nullptr);
}

TEST_F(UnitPresets, AFactoryPresetMovesTheParametersAndBecomesCurrent) {
    add("a.plist", presetText(kLimiterMode, "3"));
    const auto presets = unit->factoryPresets();
    unit->setCurrentPreset(presets->at(0));
    EXPECT_EQ(unit->getParameter(kLimiterMode), 3.0F);
    EXPECT_EQ(unit->currentPreset(), presets->at(0));
    EXPECT_EQ(QORPreset::delegate.lock(), unit);
    unit->setCurrentPreset(nullptr);
    EXPECT_EQ(unit->currentPreset(), nullptr);
}

TEST_F(UnitPresets, AFileThatIsNoPropertyListStillBecomesCurrent) {
    add("a.plist", "damaged");
    const auto presets = unit->factoryPresets();
    unit->setCurrentPreset(presets->at(0));
    EXPECT_EQ(unit->currentPreset(), presets->at(0));
    EXPECT_THAT(lines(), ElementsAre(::testing::StartsWith("AUPresetFile::FEHLER: ")));
}

TEST_F(UnitPresets, AUserPresetIsReadFromTheFactoryDirectoryAndReportsToTheStandingDelegate) {
    add("mine.plist", presetText(kLimiterMix, "0.5"));
    const auto other = QOR_Limiter_Extension_AudioUnit::init(kQORLimiterComponent, {}).value();
    other->setFullState(std::nullopt);
    const auto mine = preset(-1, "mine");
    unit->setCurrentPreset(mine);
    EXPECT_EQ(unit->currentPreset(), mine);
    EXPECT_EQ(other->getParameter(kLimiterMix), 0.5F) << "the load reported to the delegate that stood";
    EXPECT_EQ(unit->getParameter(kLimiterMix), 1.0F)
        << "the state made from it comes back without parameters";
    EXPECT_EQ(QORPreset::delegate.lock(), unit);
}

TEST_F(UnitPresets, AUserPresetThatIsNotThereIsLoggedTwiceAndTheCurrentOneStays) {
    unit->setCurrentPreset(preset(-3, "gone"));
    EXPECT_THAT(lines(), ElementsAre("AUExtension::ERROR: The preset file 'gone.plist' does not exist.",
                                     "AUExtension::ERROR: Unable to restore set for preset gone"));
    EXPECT_EQ(unit->currentPreset(), nullptr);
}

TEST_F(UnitPresets, PresetStateIsTheFilesStateOrAnError) {
    add("a.plist", presetText(2, "0.5"));
    const auto state = unit->presetStateFor(*preset(0, "a"));
    ASSERT_TRUE(state);
    EXPECT_EQ(state.value().size(), 8U);
    EXPECT_NE(state.value().find("group 0")->asDictionary()->find("param 0"), nullptr);
    const auto missing = unit->presetStateFor(*preset(0, "b"));
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().domain, "NSOSStatusErrorDomain");
    EXPECT_EQ(missing.error().code, -66742);
    EXPECT_THAT(missing.error().userInfo, IsEmpty());
    EXPECT_THAT(lines(), ElementsAre("AUExtension::ERROR: The preset file 'b.plist' does not exist."));
}

TEST_F(UnitPresets, ADelegateThatIsGoneIsAbsent) {
    unit->setFullState(std::nullopt);
    unit = nullptr;
    EXPECT_EQ(QORPreset::delegate.lock(), nullptr);
    QORPreset().makeFrom(stateWith(0, 0.5F));
}

using UnitPresetsDeathTest = UnitPresets;

TEST_F(UnitPresetsDeathTest, AProgramWithoutResourcesStops) {
    const ScopedVariable nowhere{Bundle::main().overrideVariable().c_str(), "/no/such/directory"};
    EXPECT_DEATH((void)unit->factoryPresets(), "Unexpectedly found nil while unwrapping an Optional value");
    unit->presets = {preset(0, "a")};
    EXPECT_DEATH(unit->setCurrentPreset(unit->presets[0]),
                 "Unexpectedly found nil while unwrapping an Optional value");
    EXPECT_DEATH((void)unit->presetStateFor(*unit->presets[0]),
                 "Unexpectedly found nil while unwrapping an Optional value");
}

TEST_F(UnitPresetsDeathTest, AStateWithAValueOfAnotherKindStopsTheProcess) {
    EXPECT_DEATH(unit->setFullState(PropertyListDictionary{{"version", "1"}}),
                 "Unexpectedly found nil while unwrapping an Optional value");
}
