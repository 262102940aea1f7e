#include "hosts/shared/PresetStore.h"

#include "hosts/shared/StateTestSupport.h"
#include "support/TemporaryDirectory.h"
#include "unit/UnitComponent.h"

#include <gmock/gmock.h>

#include <set>

namespace {

using namespace qor;
using namespace qor::host;

class FactoryPresets : public test::StateHost {
protected:
    static std::vector<PresetEntry> factory() {
        std::vector<PresetEntry> entries = listPresets();
        std::erase_if(entries, [](const PresetEntry& entry) { return !entry.isFactory; });
        return entries;
    }

    test::ScopedVariable resources_{Bundle::main().overrideVariable().c_str(), std::nullopt};
};

} // namespace

TEST_F(FactoryPresets, ThereAreAtLeastSixteenAndNothingElseLiesBesideThem) {
    const auto entries = factory();
    EXPECT_GE(entries.size(), 16U);
    const URL directory =
        Bundle::main().resourceURL()->appendingPathComponent("QOR Limiter Folder/Library/Factory Presets/");
    EXPECT_EQ(FileManager::defaultManager().contentsOfDirectoryAtPath(directory.path()).value().size(),
              entries.size());
}

TEST_F(FactoryPresets, AreSoundSetAllTwelveAndCarryTheirFilesName) {
    std::set<PropertyListArray,
             decltype([](const auto& a, const auto& b) { return describe(a) < describe(b); })>
        distinct;
    for (const PresetEntry& entry : factory()) {
        const auto preset = readPreset(entry, Completeness::allParameters);
        ASSERT_TRUE(preset) << preset.error().localizedDescription();
        EXPECT_THAT(preset.value().notes, testing::IsEmpty()) << entry.name;
        EXPECT_EQ(preset.value().name, entry.name);
        EXPECT_EQ(preset.value().values.at(kLimiterBypass), 0.0F) << entry.name;
        PropertyListArray values;
        for (const auto& value : preset.value().values) {
            values.emplace_back(*value);
        }
        EXPECT_TRUE(distinct.insert(values).second) << entry.name << " is another preset under a new name";
    }
}

TEST_F(FactoryPresets, MoveAllTwelveOfTheUnitByItsOwnReader) {
    RunLoop loop;
    const RunLoop::Scope scope(loop);
    const auto unit = QOR_Limiter_Extension_AudioUnit::init(kQORLimiterComponent, {}).value();
    const auto listed = unit->factoryPresets().value();
    ASSERT_EQ(listed.size(), factory().size());
    for (const Ref<AUAudioUnitPreset>& preset : listed) {
        const auto values = readPreset(findPreset(preset->name()).value()).value().values;
        for (const ParameterRow& row : kParameterTable) {
            const float other = *values.at(row.address) == 0.375F ? 0.625F : 0.375F;
            unit->setParameter(static_cast<std::int32_t>(row.address), other);
        }
        unit->setCurrentPreset(preset);
        EXPECT_EQ(unit->currentPreset(), preset);
        for (const ParameterRow& row : kParameterTable) {
            EXPECT_EQ(unit->getParameter(static_cast<std::int32_t>(row.address)), *values.at(row.address))
                << preset->name() << ": " << row.identifier;
        }
    }
}

TEST_F(FactoryPresets, LoadThroughTheHost) {
    for (const PresetEntry& entry : factory()) {
        ASSERT_TRUE(loadPreset(*host_, entry));
        const auto values = readPreset(entry).value().values;
        for (const ParameterRow& row : kParameterTable) {
            EXPECT_EQ(host_->parameter(row.address), *values.at(row.address)) << entry.name;
        }
    }
}

TEST_F(FactoryPresets, EachHasItsPurposeAndItsFiguresInTheDocumentation) {
    const std::string page = test::readFile(QOR_PRESETS_PAGE);
    for (const PresetEntry& entry : factory()) {
        EXPECT_THAT(page, testing::HasSubstr("- **" + entry.name + "**: "));
        EXPECT_THAT(page, testing::HasSubstr("\n| " + entry.name + " | "));
    }
}
