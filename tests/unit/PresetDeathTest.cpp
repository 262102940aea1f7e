#include "unit/QORPreset.h"

#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

using namespace qor;

namespace {

constexpr const char* kForced = "^Unexpectedly found nil while unwrapping an Optional value\n$";

void read(const PropertyListDictionary& dictionary) {
    QORPreset().makeFrom(dictionary);
}

void readParam(const char* key, const PropertyList& value) {
    read({{"group 0", PropertyListDictionary{{"param", PropertyListDictionary{{key, value}}}}}});
}

} // namespace

TEST(PresetDeathTest, AVersionThatIsAStringStopsTheProcess) {
    EXPECT_DEATH(read({{"version", "1"}}), kForced);
}

TEST(PresetDeathTest, AFileWithAVersionThatIsAStringStopsTheProcess) {
    const test::TemporaryDirectory directory;
    test::writeFile(directory.file("a.plist"),
                    "<plist version=\"1.0\"><dict><key>version</key><string>1</string></dict></plist>");
    EXPECT_DEATH(QORPreset().load(URL::fileURLWithPath(directory.file("a.plist"))), kForced);
}

TEST(PresetDeathTest, EveryTopLevelKeyStopsOnAnotherKind) {
    for (const char* key : {"version", "manufacturer", "subtype", "number", "type"}) {
        EXPECT_DEATH(read({{key, true}}), kForced) << key;
        EXPECT_DEATH(read({{key, 1.0}}), kForced) << key;
        EXPECT_DEATH(read({{key, PropertyListArray{}}}), kForced) << key;
    }
    EXPECT_DEATH(read({{"name", 1}}), kForced);
    EXPECT_DEATH(read({{"group 0", 1}}), kForced);
    EXPECT_DEATH(read({{"a grouped thing", "x"}}), kForced);
}

TEST(PresetDeathTest, ATypeBeyond32BitsOrBelowZeroStopsTheProcess) {
    EXPECT_DEATH(read({{"type", std::int64_t{1} << 32U}}), kForced);
    EXPECT_DEATH(read({{"type", -1}}), kForced);
    read({{"type", std::int64_t{std::numeric_limits<std::uint32_t>::max()}}});
}

TEST(PresetDeathTest, GroupAndParameterKeysStopOnAnotherKind) {
    EXPECT_DEATH(read({{"group 0", PropertyListDictionary{{"identifier", 3}}}}), kForced);
    EXPECT_DEATH(read({{"group 0", PropertyListDictionary{{"param", 3}}}}), kForced);
    EXPECT_DEATH(readParam("identifier", 3), kForced);
    EXPECT_DEATH(readParam("address", "3"), kForced);
    EXPECT_DEATH(readParam("address", 3.0), kForced);
    EXPECT_DEATH(readParam("address", true), kForced);
    EXPECT_DEATH(readParam("value", "0.5"), kForced);
    EXPECT_DEATH(readParam("value", true), kForced);
    EXPECT_DEATH(readParam("value", Data{1}), kForced);
}

TEST(PresetDeathTest, ANegativeAddressStopsTheProcess) {
    EXPECT_DEATH(readParam("address", -1), kForced);
}

TEST(PresetDeathTest, AMissingFileStopsTheProcessWithItsPath) {
    EXPECT_DEATH(QORPreset().load(URL::fileURLWithPath("/no/such/Warm.plist")),
                 "^AUPresetFile::ERROR: The path /no/such/Warm.plist does not exist.\n$");
}

TEST(PresetDeathTest, AFileThatCannotBeReadStopsTheProcess) {
    const test::TemporaryDirectory directory;
    EXPECT_DEATH(QORPreset().load(URL::fileURLWithPath(directory.path().string())), kForced);
}

TEST(PresetDeathTest, AFileWhoseRootIsNoDictionaryStopsTheProcess) {
    const test::TemporaryDirectory directory;
    test::writeFile(directory.file("a.plist"), "<plist version=\"1.0\"><array/></plist>");
    EXPECT_DEATH(QORPreset().load(URL::fileURLWithPath(directory.file("a.plist"))), kForced);
}
