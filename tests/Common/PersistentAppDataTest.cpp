#include "Common/PersistentAppData.h"

#include "support/CapturedLog.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace qor;
using Storage = PersistentAppData::Storage;
using testing::ElementsAre;

class PersistentData : public testing::Test {
protected:
    test::TemporaryDirectory config_;
    test::ScopedVariable variable_{"XDG_CONFIG_HOME", config_.path().string()};
    PersistentAppData& data_ = PersistentAppData::sharedInstance();
};

} // namespace

TEST_F(PersistentData, KeysNeverSetGiveZeroOrNothing) {
    for (const Storage storage : {Storage::defaults, Storage::shared, Storage::combined}) {
        EXPECT_EQ(data_.getFloat("x", storage), 0.0F);
        EXPECT_EQ(data_.getInteger("x", storage), 0);
        EXPECT_FALSE(data_.getBool("x", storage));
        EXPECT_EQ(data_.getString("x", storage), std::nullopt);
        EXPECT_EQ(data_.getUrl("x", storage), std::nullopt);
        EXPECT_EQ(data_.getObject("x", storage), std::nullopt);
    }
}

TEST_F(PersistentData, EveryTypeReadsBackFromItsStorage) {
    for (const Storage storage : {Storage::defaults, Storage::shared, Storage::combined}) {
        data_.setString("string", "text", storage);
        data_.setInteger("integer", -5, storage);
        data_.setFloat("float", 0.1F, storage);
        data_.setBool("bool", true, storage);
        data_.setURL("url", URL::fileURLWithPath("/tmp/a b"), storage);
        data_.setObject("object", PropertyListArray{1, "x"}, storage);
        EXPECT_EQ(data_.getString("string", storage), "text");
        EXPECT_EQ(data_.getInteger("integer", storage), -5);
        EXPECT_EQ(data_.getFloat("float", storage), 0.1F);
        EXPECT_TRUE(data_.getBool("bool", storage));
        EXPECT_EQ(data_.getUrl("url", storage)->path(), "/tmp/a b");
        EXPECT_EQ(data_.getObject("object", storage), PropertyList(PropertyListArray{1, "x"}));
    }
}

TEST_F(PersistentData, TheStorageIsDefaultsUnlessSaid) {
    data_.setInteger("n", 1);
    data_.setInteger("n", 2, Storage::shared);
    EXPECT_EQ(data_.getInteger("n"), 1);
    EXPECT_EQ(data_.getInteger("n", Storage::defaults), 1);
    EXPECT_EQ(data_.getInteger("n", Storage::shared), 2);
}

TEST_F(PersistentData, AnAbsentLocationOrValueIsPassedOn) {
    data_.setURL("url", URL::fileURLWithPath("/tmp"));
    data_.setObject("object", 1);
    data_.setURL("url", std::nullopt);
    data_.setObject("object", std::nullopt);
    EXPECT_EQ(data_.getUrl("url"), std::nullopt);
    EXPECT_EQ(data_.getObject("object"), std::nullopt);
}

TEST_F(PersistentData, AValueWrittenToSharedReadsBackThroughCombined) {
    data_.setString("key", "of the suite", Storage::shared);
    EXPECT_EQ(data_.getString("key", Storage::combined), "of the suite");
    EXPECT_EQ(data_.combined, data_.defaults) << "the same standard object";
}

TEST_F(PersistentData, StoragesHaveTheirRawValuesAndNoOthers) {
    EXPECT_EQ(PersistentAppData::initRawValue(0), Storage::defaults);
    EXPECT_EQ(PersistentAppData::initRawValue(1), Storage::shared);
    EXPECT_EQ(PersistentAppData::initRawValue(2), Storage::combined);
    EXPECT_EQ(PersistentAppData::initRawValue(3), std::nullopt);
    EXPECT_EQ(PersistentAppData::initRawValue(-1), std::nullopt);
}

TEST_F(PersistentData, AFrameReadsBackThroughItsDictionary) {
    const CGRect frame = CGRectMake(1.5, -2.25, 512.0, 340.0);
    EXPECT_EQ(describe(PersistentAppData::frameToDictionary(frame)),
              "{left = 1.5, top = -2.25, width = 512.0, height = 340.0}");
    data_.setObject("frame", PersistentAppData::frameToDictionary(frame));
    EXPECT_EQ(PersistentAppData::dictionaryToFrame("frame"), frame);
}

TEST_F(PersistentData, FramesAreNarrowedTo32Bits) {
    data_.setObject("frame", PersistentAppData::frameToDictionary(CGRectMake(0.1, 0.0, 1.0 / 3.0, 0.0)));
    EXPECT_EQ(PersistentAppData::dictionaryToFrame("frame"),
              CGRectMake(static_cast<double>(0.1F), 0.0, static_cast<double>(1.0F / 3.0F), 0.0));
}

TEST_F(PersistentData, AMissingHeightIsZeroAndOtherKeysAreIgnored) {
    data_.setObject("frame",
                    PropertyListDictionary{{"left", 1.0}, {"top", 2}, {"width", 3.0}, {"depth", 9.0}});
    EXPECT_EQ(PersistentAppData::dictionaryToFrame("frame"), CGRectMake(1.0, 2.0, 3.0, 0.0));
}

TEST_F(PersistentData, AStoredFrameOfTheWrongTypeIsAbsent) {
    for (const PropertyList& wrong :
         {PropertyList("text"), PropertyList(1), PropertyList(PropertyListArray{}),
          PropertyList(PropertyListDictionary{{"left", "1"}}),
          PropertyList(PropertyListDictionary{{"x", true}})}) {
        data_.setObject("frame", wrong);
        EXPECT_EQ(PersistentAppData::dictionaryToFrame("frame"), std::nullopt) << describe(wrong);
    }
    EXPECT_EQ(PersistentAppData::dictionaryToFrame("missing"), std::nullopt);
    data_.setObject("frame", PersistentAppData::frameToDictionary(CGRectMake(1, 2, 3, 4)), Storage::shared);
    data_.setObject("frame", "text");
    EXPECT_EQ(PersistentAppData::dictionaryToFrame("frame"), std::nullopt)
        << "the standard defaults come first";
}

TEST_F(PersistentData, DumpoutListsTheThreeStores) {
    data_.setInteger("own", 1);
    data_.setString("both", "suite", Storage::shared);
    data_.setObject("both", PropertyListArray{0.5});
    const test::CapturedLog log;
    data_.dumpout();
    // The standard object has had the suite added to it, so its list holds the suite's keys too.
    EXPECT_THAT(
        log.lines(),
        ElementsAre("PersistentAppData::dumpout() : UserDefaults.standard : ", "own = 1", "both = [0.5]",
                    "PersistentAppData::dumpout() : UserDefaults.shared : ", "both = suite",
                    "PersistentAppData::dumpout() : UserDefaults.combined : ", "own = 1", "both = [0.5]"));
}

TEST_F(PersistentData, TheGroupIsAReverseDomainName) {
    EXPECT_EQ(sharedContainer, "group.org.qrvk.qor-limiter");
    data_.setInteger("n", 1, Storage::shared);
    EXPECT_TRUE(FileManager::defaultManager().fileExistsAtPath(
        config_.file("qor-limiter/group.org.qrvk.qor-limiter.plist")));
}

TEST(PersistentAppDataDeathTest, ASuiteThatCannotBeOpenedStopsTheProcess) {
    EXPECT_DEATH(
        {
            sharedContainer = "";
            (void)UserDefaults::shared();
        },
        "^Unexpectedly found nil while unwrapping an Optional value\n$");
}
