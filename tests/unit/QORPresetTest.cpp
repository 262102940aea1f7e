#include "unit/QORPreset.h"

#include "support/CapturedLog.h"
#include "support/TemporaryDirectory.h"
#include "unit/PresetTestSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace qor;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

Ref<AUParameterTree> makeTree() {
    return AUParameterTree::createTree(
        {AUParameterTree::createGroup(
             "kGlobalParameters", "Global",
             {test::makeParameter("kFirst", 0, 0.1F), test::makeParameter("kSecond", 7, 1.0F)}),
         test::makeParameter("kLoose", 9, 0.5F),
         AUParameterTree::createGroup(
             "Filter 3", "Filter",
             {AUParameterTree::createGroup("inner", "Inner", {test::makeParameter("kDeep", 11, 0.25F)})})});
}

/// A dictionary as the reader wants it: one group with a single "param".
PropertyListDictionary readable() {
    return {{"name", "Mine"},
            {"group 0", PropertyListDictionary{{"identifier", "Filter 3"},
                                               {"param", PropertyListDictionary{{"identifier", "kKnee"},
                                                                                {"address", 3},
                                                                                {"value", 0.75}}}}}};
}

class Preset : public testing::Test {
protected:
    void SetUp() override { QORPreset::delegate = delegate_; }

    Ref<test::RecordingDelegate> delegate_ = makeRef<test::RecordingDelegate>();
    test::CapturedLog log_;
    test::TemporaryDirectory directory_;
    QORPreset preset_;
};

} // namespace

TEST_F(Preset, NewObjectsHaveTheirInitialValues) {
    const PresetPatch& patch = *preset_.patch;
    EXPECT_EQ(patch.version, 1);
    EXPECT_EQ(patch.type, 1635085670U);
    EXPECT_EQ(patch.manufacturer, 1364350539);
    EXPECT_EQ(patch.subtype, 1902931249);
    EXPECT_EQ(patch.number, 0);
    EXPECT_EQ(patch.name, "QOR Limiter Preset");
    EXPECT_THAT(patch.data, IsEmpty());
    EXPECT_THAT(patch.groups, IsEmpty());
    const PresetGroup group;
    EXPECT_EQ(group.id, 0);
    EXPECT_EQ(group.count, 0);
    EXPECT_EQ(group.identifier, "group");
    const PresetParam param;
    EXPECT_EQ(param.group.lock(), nullptr);
    EXPECT_EQ(param.address, 0U);
    EXPECT_EQ(param.identifier, "parameter");
    EXPECT_EQ(param.value, 0.0F);
}

TEST_F(Preset, AnEmptyDictionaryLeavesDefaultsAndNoGroups) {
    preset_.makeFrom(makeTree().get());
    preset_.makeFrom(PropertyListDictionary{});
    EXPECT_THAT(preset_.patch->groups, IsEmpty());
    EXPECT_EQ(preset_.getDictionary(), QORPreset().getDictionary());
}

TEST_F(Preset, AnAbsentDictionaryReadsNothing) {
    preset_.makeFrom(makeTree().get());
    preset_.makeFrom(std::nullopt);
    EXPECT_EQ(preset_.patch->groups.size(), 2U);
}

TEST_F(Preset, ATreeBecomesOneGroupPerChildGroup) {
    preset_.makeFrom(makeTree().get());
    ASSERT_EQ(preset_.patch->groups.size(), 2U) << "the parameter beside the groups is skipped";
    const PresetGroup& first = *preset_.patch->groups[0];
    EXPECT_EQ(first.identifier, "kGlobalParameters");
    EXPECT_EQ(first.count, 0) << "never updated";
    ASSERT_EQ(first.params.size(), 2U);
    EXPECT_EQ(first.params[1]->identifier, "kSecond");
    EXPECT_EQ(first.params[1]->address, 7U);
    EXPECT_EQ(first.params[1]->value, 1.0F);
    EXPECT_EQ(first.params[1]->group.lock(), nullptr) << "not set from a tree";
    EXPECT_EQ(preset_.patch->groups[1]->id, 0) << "not found from a tree, in spite of the 3";
    EXPECT_EQ(preset_.patch->groups[1]->params.at(0)->address, 11U)
        << "parameters below inner groups belong to it";
}

TEST_F(Preset, MakingFromATreeTwiceAddsASecondCopy) {
    preset_.makeFrom(makeTree().get());
    preset_.makeFrom(makeTree().get());
    EXPECT_EQ(preset_.patch->groups.size(), 4U);
}

TEST_F(Preset, AnAbsentTreeOrOneWithoutChildrenIsPrintedAndChangesNothing) {
    preset_.makeFrom(static_cast<const AUParameterGroup*>(nullptr));
    preset_.makeFrom(makeRef<AUParameterTree>().get());
    EXPECT_THAT(log_.lines(), ElementsAre("PresetPatch: The parameter group has no children.",
                                          "PresetPatch: The parameter group has no children."));
    EXPECT_THAT(preset_.patch->groups, IsEmpty());
}

TEST_F(Preset, TheDictionaryHasItsKeysInOrder) {
    preset_.makeFrom(makeTree().get());
    EXPECT_EQ(describe(*preset_.getDictionary()),
              "{version = 1, type = 1635085670, manufacturer = 1364350539, subtype = 1902931249, number = 0, "
              "name = \"QOR Limiter Preset\", count = 2, "
              "group 0 = {identifier = \"kGlobalParameters\", count = 2, "
              "param 0 = {address = 0, identifier = \"kFirst\", value = 0.10000000149011612}, "
              "param 1 = {address = 7, identifier = \"kSecond\", value = 1.0}}, "
              "group 1 = {identifier = \"Filter 3\", count = 1, "
              "param 0 = {address = 11, identifier = \"kDeep\", value = 0.25}}}");
}

TEST_F(Preset, WritingATreeAndReadingItBackKeepsGroupsAndLosesParameters) {
    preset_.makeFrom(makeTree().get());
    QORPreset read;
    read.makeFrom(preset_.getDictionary());
    ASSERT_EQ(read.patch->groups.size(), 2U);
    EXPECT_EQ(read.patch->groups[0]->identifier, "kGlobalParameters");
    EXPECT_EQ(read.patch->groups[1]->identifier, "Filter 3");
    EXPECT_THAT(read.patch->groups[0]->params, IsEmpty());
    EXPECT_THAT(read.patch->groups[1]->params, IsEmpty());
    EXPECT_THAT(delegate_->found, IsEmpty());
}

TEST_F(Preset, AKeyThatIsExactlyParamIsReadAndReportedWithItsGroupsNumber) {
    preset_.makeFrom(readable());
    ASSERT_EQ(preset_.patch->groups.size(), 1U);
    const Ref<PresetGroup>& group = preset_.patch->groups[0];
    ASSERT_EQ(group->params.size(), 1U);
    EXPECT_EQ(group->params[0]->group.lock(), group);
    EXPECT_THAT(delegate_->found, ElementsAre(test::FoundParameter{3, "kKnee", 3, 0.75F}));
}

TEST_F(Preset, AParamThatComesBeforeTheIdentifierIsReportedWithGroupNumberZero) {
    preset_.makeFrom(PropertyListDictionary{
        {"group", PropertyListDictionary{{"param", PropertyListDictionary{{"address", 1}}},
                                         {"identifier", "Filter 3"}}}});
    EXPECT_THAT(delegate_->found, ElementsAre(test::FoundParameter{0, "parameter", 1, 0.0F}));
    EXPECT_EQ(preset_.patch->groups[0]->id, 3);
}

TEST_F(Preset, NumberedAndOtherKeysInAGroupAreNotParameters) {
    const PropertyListDictionary param = {{"address", 3}, {"value", 0.5}};
    preset_.makeFrom(PropertyListDictionary{{"group 0", PropertyListDictionary{{"param 0", param},
                                                                               {"param ", param},
                                                                               {"params", param},
                                                                               {"Param", param},
                                                                               {"xparam", param}}}});
    EXPECT_THAT(preset_.patch->groups.at(0)->params, IsEmpty());
    EXPECT_THAT(delegate_->found, IsEmpty());
}

TEST_F(Preset, EveryKeyThatHoldsTheWordGroupIsAGroupInTheDictionarysOrder) {
    preset_.makeFrom(PropertyListDictionary{
        {"my groups of old", PropertyListDictionary{{"identifier", "b"}}},
        {"Group", 1},
        {"group", PropertyListDictionary{{"identifier", "a"}}},
        {"regrouped", PropertyListDictionary{}},
        {"other", "ignored"},
    });
    ASSERT_EQ(preset_.patch->groups.size(), 3U);
    EXPECT_EQ(preset_.patch->groups[0]->identifier, "b");
    EXPECT_EQ(preset_.patch->groups[1]->identifier, "a");
    EXPECT_EQ(preset_.patch->groups[2]->identifier, "group");
}

TEST_F(Preset, CountsHaveNoEffectOnReading) {
    PropertyListDictionary dictionary = readable();
    dictionary.set("count", "no number at all");
    dictionary.find("group 0")->asDictionary()->set("count", -5);
    preset_.makeFrom(dictionary);
    EXPECT_EQ(preset_.patch->groups.size(), 1U);
    EXPECT_EQ(preset_.patch->groups[0]->params.size(), 1U);
    EXPECT_EQ(*preset_.getDictionary()->find("count"), PropertyList(1)) << "written from the true length";
}

TEST_F(Preset, TheGroupNumberIsTheNumberBehindTheLastBlank) {
    const auto numberOf = [this](const char* identifier) {
        preset_.makeFrom(
            PropertyListDictionary{{"group", PropertyListDictionary{{"identifier", identifier}}}});
        return preset_.patch->groups.at(0)->id;
    };
    EXPECT_EQ(numberOf("kGlobalParameters"), 0);
    EXPECT_EQ(numberOf("Filter 3"), 3);
    EXPECT_EQ(numberOf("My Filter Bank 12"), 12);
    EXPECT_EQ(numberOf("7"), 7);
    EXPECT_EQ(numberOf("Filter -2"), -2);
    EXPECT_EQ(numberOf("Filter 3 "), 0) << "the piece behind a trailing blank is empty";
    EXPECT_EQ(numberOf("Filter 3x"), 0);
    EXPECT_EQ(numberOf("Filter 3.5"), 0);
    EXPECT_EQ(numberOf("Filter 99999999999999999999"), 0);
    EXPECT_EQ(numberOf(""), 0);
}

TEST_F(Preset, AnIntegerIsFineWhereARealIsWanted) {
    PropertyListDictionary dictionary = readable();
    dictionary.find("group 0")->asDictionary()->find("param")->asDictionary()->set("value", 1);
    preset_.makeFrom(dictionary);
    EXPECT_EQ(delegate_->found.at(0).value, 1.0F);
}

TEST_F(Preset, WithoutADelegateReadingIsQuiet) {
    delegate_.reset();
    preset_.makeFrom(readable());
    EXPECT_EQ(preset_.patch->groups.at(0)->params.size(), 1U);
}

TEST_F(Preset, AFileRoundTripKeepsEveryValueBitForBit) {
    const URL url = URL::fileURLWithPath(directory_.file("a.plist"));
    preset_.makeFrom(makeTree().get());
    preset_.patch->name = "Fl\xC3\xBCstern & <Drums>";
    preset_.save(url);
    NSPropertyListFormat format = 0;
    const auto list = PropertyListSerialization::propertyListWithData(
        *FileManager::defaultManager().contentsAtPath(url.path()), 0, format);
    ASSERT_TRUE(list);
    EXPECT_EQ(list.value(), PropertyList(*preset_.getDictionary()));
    QORPreset read;
    read.load(url);
    EXPECT_EQ(read.patch->name, preset_.patch->name);
    EXPECT_EQ(read.patch->groups.size(), 2U);
    EXPECT_THAT(delegate_->found, IsEmpty());
    EXPECT_THAT(log_.lines(), IsEmpty());
}

TEST_F(Preset, AFailedWriteIsPrintedAndTheOldFileStays) {
    preset_.save(URL::fileURLWithPath("/no/such/directory/a.plist"));
    ASSERT_EQ(log_.lines().size(), 1U);
    EXPECT_THAT(log_.lines()[0],
                testing::MatchesRegex("PresetPatch::FEHLER: Die Daten konnten nicht gespeichert werden\\. "
                                      "\\(Error Domain=NSPOSIXErrorDomain Code=2 .*\\)"));
}

TEST_F(Preset, WhatCannotBeSerialisedIsPrintedAndNothingIsWritten) {
    preset_.patch->name = "bad \x01 name";
    preset_.save(URL::fileURLWithPath(directory_.file("a.plist")));
    EXPECT_THAT(log_.lines(),
                ElementsAre("PresetPatch::FEHLER: Die Daten konnten nicht serialisiert werden."));
    EXPECT_FALSE(FileManager::defaultManager().fileExistsAtPath(directory_.file("a.plist")));
}

TEST_F(Preset, AFileThatIsNoPropertyListIsPrintedAndThePatchStays) {
    test::writeFile(directory_.file("a.plist"), "not a list");
    preset_.makeFrom(makeTree().get());
    preset_.load(URL::fileURLWithPath(directory_.file("a.plist")));
    EXPECT_EQ(preset_.patch->groups.size(), 2U);
    ASSERT_EQ(log_.lines().size(), 1U);
    EXPECT_THAT(
        log_.lines()[0],
        testing::StartsWith("AUPresetFile::FEHLER: Die Datei konnte nicht eingelesen werden: Error Domain="));
    EXPECT_THAT(log_.lines()[0], testing::EndsWith(", Format: 100"));
}

TEST_F(Preset, TheKeyedCodingFormKeepsObjectsAndTheirReferences) {
    preset_.makeFrom(readable());
    const auto archive = KeyedArchiver::archive(preset_.patch->groups.at(0));
    EXPECT_EQ(describe(archive),
              "{$top = 0, $objects = [{id = 3, count = 0, identifier = \"Filter 3\", params = [1]}, "
              "{group = 0, address = 3, identifier = \"kKnee\", value = 0.75}]}");
    const auto group = KeyedUnarchiver::unarchive<PresetGroup>(archive);
    ASSERT_NE(group, nullptr);
    EXPECT_EQ(group->id, 3);
    ASSERT_EQ(group->params.size(), 1U);
    EXPECT_EQ(group->params[0]->group.lock(), group);
    EXPECT_EQ(group->params[0]->value, 0.75F);
}

TEST_F(Preset, ADamagedKeyedArchiveGivesNothingOrDefaults) {
    EXPECT_EQ(KeyedUnarchiver::unarchive<PresetGroup>({}), nullptr);
    EXPECT_EQ(KeyedUnarchiver::unarchive<PresetGroup>({{"$top", 5}, {"$objects", PropertyListArray{}}}),
              nullptr);
    const PropertyListDictionary confused = {
        {"$top", 0},
        {"$objects", PropertyListArray{PropertyListDictionary{{"params", PropertyListArray{0, -1, "x"}}}}}};
    const auto group = KeyedUnarchiver::unarchive<PresetGroup>(confused);
    ASSERT_NE(group, nullptr);
    EXPECT_THAT(group->params, IsEmpty()) << "a group is no parameter";
}
