#include "platform/files/Files.h"

#include "support/GermanLocale.h"

#include <gtest/gtest.h>

#include <bit>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

using namespace platform;

namespace {

std::string xmlOf(const PropertyList& list) {
    const auto data = PropertyListSerialization::dataWithPropertyList(list, NSPropertyListXMLFormat_v1_0, 0);
    return data ? std::string(textView(data.value())) : "error: " + data.error().localizedDescription();
}

PropertyList roundTrip(const PropertyList& list) {
    NSPropertyListFormat format = 0;
    auto read = PropertyListSerialization::propertyListWithData(dataFromText(xmlOf(list)), 2, format);
    EXPECT_TRUE(read) << read.error().localizedDescription();
    EXPECT_EQ(format, NSPropertyListXMLFormat_v1_0);
    return read ? read.value() : PropertyList("failed");
}

} // namespace

TEST(PropertyList, DictionariesKeepTheOrderOfTheirKeys) {
    PropertyListDictionary dictionary;
    for (const char* key : {"zeta", "alpha", "group 10", "group 9", ""}) {
        dictionary.set(key, 1);
    }
    dictionary.set("alpha", 2);
    const PropertyList read = roundTrip(dictionary);
    ASSERT_NE(read.asDictionary(), nullptr);
    std::string order;
    for (const auto& [key, value] : *read.asDictionary()) {
        order += key + "=" + describe(value) + ";";
    }
    EXPECT_EQ(order, "zeta=1;alpha=2;group 10=1;group 9=1;=1;");
}

TEST(PropertyList, AThousandKeysKeepTheirOrder) {
    PropertyListDictionary dictionary;
    for (int i = 0; i < 1000; ++i) {
        dictionary.append("key " + std::to_string(i * 7919 % 1000), i);
    }
    EXPECT_EQ(roundTrip(dictionary), PropertyList(dictionary));
}

TEST(PropertyList, EveryKindComesBackAsItWas) {
    const PropertyListDictionary all = {
        {"yes", true},
        {"no", false},
        {"zero", 0},
        {"least", std::numeric_limits<std::int64_t>::min()},
        {"most", std::numeric_limits<std::int64_t>::max()},
        {"text", " a <b> & \"q\" 'r' \t\n\r \xC3\xA9 \xF0\x9F\x8E\x9A ]]> "},
        {"empty", ""},
        {" <key> & \"more\" ", 1},
        {"data", Data{0, 1, 2, 0xFF, 0}},
        {"no data", Data{}},
        {"date", PropertyListDate{1000.0}},
        {"old date", PropertyListDate{-1000000000.0}},
        {"array", PropertyListArray{1, 2.5, "x", PropertyListArray{}, PropertyListDictionary{}}},
        {"one as real", 1.0},
    };
    EXPECT_EQ(roundTrip(all), PropertyList(all));
}

TEST(PropertyList, RealsComeBackBitForBit) {
    std::mt19937_64 random(1);
    PropertyListArray reals = {0.0,   -0.0,   0.1,    0.1F, 1.0,          -1.0 / 3.0,
                               1e300, 1e-300, 5e-324, 1e16, 123456789.125};
    while (reals.size() < 3000) {
        const auto real = std::bit_cast<double>(random());
        if (std::isfinite(real)) {
            reals.emplace_back(real);
        }
        reals.emplace_back(static_cast<double>(static_cast<float>(random() % 100001) / 100000.0F));
    }
    const PropertyList read = roundTrip(reals);
    ASSERT_EQ(read.asArray()->size(), reals.size());
    for (std::size_t i = 0; i < reals.size(); ++i) {
        ASSERT_EQ(read.asArray()->at(i).kind(), PropertyList::Kind::real);
        ASSERT_EQ(std::bit_cast<std::uint64_t>(*read.asArray()->at(i).asNumber()),
                  std::bit_cast<std::uint64_t>(*reals[i].asNumber()))
            << describe(reals[i]);
    }
}

TEST(PropertyList, InfinitiesAndNaNAreRealsToo) {
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(roundTrip(infinity), PropertyList(infinity));
    EXPECT_EQ(roundTrip(-infinity), PropertyList(-infinity));
    EXPECT_TRUE(std::isnan(roundTrip(std::nan("")).asNumber().value_or(0.0)));
}

TEST(PropertyList, NumbersDoNotDependOnTheLocale) {
    const test::GermanLocale german;
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
    const std::string xml = xmlOf(PropertyListArray{0.25, 1234567.5});
    const PropertyList read = roundTrip(PropertyListArray{0.25, 1234567.5});
    EXPECT_NE(xml.find("<real>0.25</real>"), std::string::npos) << xml;
    EXPECT_NE(xml.find("<real>1234567.5</real>"), std::string::npos) << xml;
    EXPECT_EQ(read, PropertyList(PropertyListArray{0.25, 1234567.5}));
}

TEST(PropertyList, TheXmlIsThatOfTheFormatInUtf8) {
    const std::string xml = xmlOf(PropertyListDictionary{{"version", 1}, {"value", 0.1F}});
    EXPECT_TRUE(xml.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC")) << xml;
    EXPECT_NE(xml.find("<key>version</key>\n\t<integer>1</integer>"), std::string::npos) << xml;
    EXPECT_NE(xml.find("<key>value</key>\n\t<real>0.10000000149011612</real>"), std::string::npos) << xml;
}

TEST(PropertyList, WhatXmlCannotHoldIsNotWritten) {
    for (const std::string& bad : {std::string("a\0b", 3), std::string("\x01"), std::string("\xFF"),
                                   std::string("\xC0\xAF"), std::string("\xED\xA0\x80")}) {
        const auto text =
            PropertyListSerialization::dataWithPropertyList(bad, NSPropertyListXMLFormat_v1_0, 0);
        ASSERT_FALSE(text);
        EXPECT_EQ(text.error().domain, NSCocoaErrorDomain);
        EXPECT_FALSE(PropertyListSerialization::dataWithPropertyList(PropertyListDictionary{{bad, 1}},
                                                                     NSPropertyListXMLFormat_v1_0, 0));
    }
    EXPECT_FALSE(PropertyListSerialization::dataWithPropertyList(PropertyListArray{PropertyListDate{1e12}},
                                                                 NSPropertyListXMLFormat_v1_0, 0));
    EXPECT_FALSE(PropertyListSerialization::dataWithPropertyList(1, 200, 0)) << "another format";
}

TEST(PropertyList, NumbersAreReadByKind) {
    EXPECT_EQ(PropertyList(3).asNumber(), 3.0);
    EXPECT_EQ(PropertyList(3.5).asInteger(), std::nullopt);
    EXPECT_EQ(PropertyList(true).asNumber(), std::nullopt);
    EXPECT_EQ(PropertyList("3").asNumber(), std::nullopt);
    EXPECT_EQ(kindName(PropertyList("3").kind()), "string");
    EXPECT_EQ(kindName(PropertyList(PropertyListDictionary{}).kind()), "dictionary");
}

TEST(PropertyList, DescribesItselfInOneLine) {
    EXPECT_EQ(describe(PropertyListDictionary{{"a", 1}, {"b", PropertyListArray{0.5, "x", true, Data{1}}}}),
              "{a = 1, b = [0.5, \"x\", true, <1 bytes>]}");
    EXPECT_EQ(describe("plain"), "plain");
}
