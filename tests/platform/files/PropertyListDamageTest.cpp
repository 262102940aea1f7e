#include "platform/files/PropertyListSerialization.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

using namespace platform;

namespace {

std::string plist(const std::string& body) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n" + body + "\n</plist>\n";
}

/// The error's text, or "fine: " and the value.
std::string readingOf(const std::string& xml, const PropertyListLimits& limits = {}) {
    NSPropertyListFormat format = NSPropertyListXMLFormat_v1_0;
    const auto list = PropertyListSerialization::propertyListWithData(dataFromText(xml), 2, format, limits);
    return list ? "fine: " + describe(list.value()) : list.error().localizedDescription();
}

void expectRefusal(const std::string& xml, const std::string& part) {
    const std::string reading = readingOf(xml);
    EXPECT_TRUE(reading.starts_with("The property list can't be read: ")) << xml << "\n" << reading;
    EXPECT_NE(reading.find(part), std::string::npos) << xml << "\n" << reading;
}

} // namespace

TEST(PropertyListDamage, NumbersThatAreNoneAreRefused) {
    for (const char* text :
         {"", "abc", "1.5", "0x10", "99999999999999999999", "9223372036854775808", "1 2"}) {
        expectRefusal(plist("<integer>" + std::string(text) + "</integer>"), "a whole number of 64 bits");
    }
    for (const char* text : {"", "abc", "0x10", "1,5", "1e999", "--1"}) {
        expectRefusal(plist("<real>" + std::string(text) + "</real>"), "not a number");
    }
    expectRefusal(plist("<integer/>"), "a whole number of 64 bits");
}

TEST(PropertyListDamage, DatesAndDataThatAreNoneAreRefused) {
    for (const char* text : {"", "garbage", "2024-13-01T00:00:00Z", "2024-01-01", "9999-01-01T00:00:00Z"}) {
        expectRefusal(plist("<date>" + std::string(text) + "</date>"), "not a date");
    }
    for (const char* text : {"!!!!", "QQ", "QQ=", "=QQQ", "QQ=Q"}) {
        expectRefusal(plist("<data>" + std::string(text) + "</data>"), "not base64");
    }
}

TEST(PropertyListDamage, BrokenStructureIsRefusedWithItsLine) {
    expectRefusal("", "the text ends too early");
    expectRefusal("no list at all", "there is text where a tag belongs");
    expectRefusal("<dict></dict>", "outermost");
    expectRefusal("<plist/>", "outermost");
    expectRefusal(plist(""), "</plist> stands where a value belongs");
    expectRefusal(plist("<true/><true/>"), "more than one value");
    expectRefusal(plist("<dict><string>x</string></dict>"), "line 3: <string> stands where a key belongs");
    expectRefusal(plist("<dict>\n<key>a</key>\n</dict>"), "line 5: a key has no value");
    expectRefusal(plist("<dict><key>a</key><key>b</key></dict>"), "a key has no value");
    expectRefusal(plist("<dict></array>"), "not closed by its own tag");
    expectRefusal(plist("<string>a</integer>"), "not closed by its own tag");
    expectRefusal(plist("<float>1</float>"), "<float> is unknown");
    expectRefusal(plist("<array><true/>"), "not closed by its own tag");
    expectRefusal(plist("<true/>") + "more", "something follows behind");
    expectRefusal(plist("<string a=\"b\">x</string>"), "has attributes");
    expectRefusal(plist("<!-- open"), "a comment is not closed");
    expectRefusal(plist("<string>a&b</string>"), "a character reference is not closed");
    expectRefusal(plist("<string>&bogus;</string>"), "the entity &bogus; is unknown");
    expectRefusal(plist("<string>&#0;</string>"), "unknown");
}

TEST(PropertyListDamage, EntityBombsAreRefused) {
    expectRefusal("<?xml version=\"1.0\"?>\n<!DOCTYPE plist [\n<!ENTITY a \"aaaaaaaaaa\">\n"
                  "<!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;\">\n]>\n<plist><string>&b;</string></plist>",
                  "line 2: the document type holds declarations");
}

TEST(PropertyListDamage, DepthAndSizeAreLimited) {
    const auto nested = [](int depth) {
        std::string open;
        std::string close;
        for (int i = 0; i < depth; ++i) {
            open += "<array>";
            close += "</array>";
        }
        return plist(open + close);
    };
    EXPECT_EQ(readingOf(nested(4), {1000, 4}), "fine: [[[[]]]]");
    EXPECT_NE(readingOf(nested(5), {1000, 4}).find("nested deeper than 4 levels"), std::string::npos);
    EXPECT_NE(readingOf(nested(5), {100, 4}).find("the limit is 100"), std::string::npos);
    EXPECT_NE(readingOf(nested(200000)).find("nested deeper than 128 levels"), std::string::npos);
}

TEST(PropertyListDamage, OtherEncodingsAndBinaryFormsAreRefused) {
    expectRefusal("bplist00\xD0\x08", "binary");
    expectRefusal(std::string("<\0p\0", 4), "not a text in UTF-8");
    expectRefusal(plist("<string>\xFF</string>"), "not a text in UTF-8");
    expectRefusal("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><plist><true/></plist>", "not UTF-8");
}

TEST(PropertyListDamage, WhatIsUnusualButRightIsRead) {
    EXPECT_EQ(readingOf("\xEF\xBB\xBF" + plist("<true/>")), "fine: true");
    EXPECT_EQ(
        readingOf(plist("<!-- a --><dict><!-- b --><key>k</key><!-- c --><integer> 5 </integer></dict>")),
        "fine: {k = 5}");
    EXPECT_EQ(readingOf(plist("<string>a<![CDATA[<real>&x;]]>b&#65;&#x42;&amp;lt;</string>")),
              "fine: a<real>&x;bAB&lt;");
    EXPECT_EQ(readingOf(plist("<real>+1.5e-3</real>")), "fine: 0.0015");
    EXPECT_EQ(readingOf(plist("<dict><key>a</key><true/><key>a</key><false/></dict>")), "fine: {a = false}");
}

TEST(PropertyListDamage, EveryTruncationIsRefused) {
    const std::string whole =
        plist("<dict><key>a</key><array><real>1.5</real><string>x &amp; y</string></array></dict>");
    const std::size_t end = whole.find("</plist>") + 8;
    for (std::size_t length = 0; length < end; ++length) {
        expectRefusal(whole.substr(0, length), "");
    }
}
