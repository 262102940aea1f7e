#include "platform/net/URLContents.h"

#include "support/LoopbackServer.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

using platform::dataWithContentsOfURL;
using platform::textView;
using platform::URL;
using testing::HasSubstr;

TEST(URLContents, AreTheBytesOfAFileWithAnyName) {
    const test::TemporaryDirectory directory;
    const URL url = URL::fileURLWithPath((directory.path() / "a b%c \xC3\xA4.bin").string());
    const std::string bytes("a\0\xFF\r\n", 5);
    std::ofstream(url.path(), std::ios::binary) << bytes;
    const auto data = dataWithContentsOfURL(url);
    ASSERT_TRUE(data.ok()) << data.error().localizedDescription();
    EXPECT_EQ(textView(data.value()), bytes);
}

TEST(URLContents, OfAnAbsentFileAreAnErrorThatNamesIt) {
    const auto data = dataWithContentsOfURL(URL::fileURLWithPath("/nonexistent/picture.png"));
    ASSERT_FALSE(data.ok());
    EXPECT_THAT(data.error().localizedDescription(), HasSubstr("/nonexistent/picture.png"));
}

TEST(URLContents, ComeOverHttpAlsoAfterARedirection) {
    std::string large(300000, 'x');
    large[7] = '\0';
    test::LoopbackServer server({{"/page", {"200 OK", "", large}},
                                 {"/moved", {"302 Found", "Location: /page\r\n", "elsewhere"}},
                                 {"/query?a=b", {"200 OK", "", "answer"}}});
    const auto page = dataWithContentsOfURL(*URL::initWithString(server.url("/page")));
    ASSERT_TRUE(page.ok()) << page.error().localizedDescription();
    EXPECT_EQ(textView(page.value()), large);
    const auto moved = dataWithContentsOfURL(*URL::initWithString(server.url("/moved")));
    ASSERT_TRUE(moved.ok());
    EXPECT_EQ(moved.value().size(), large.size());
    const auto query = dataWithContentsOfURL(*URL::initWithString(server.url("/query?a=b")));
    ASSERT_TRUE(query.ok());
    EXPECT_EQ(textView(query.value()), "answer");
}

TEST(URLContents, OfAnErrorPageAreAnError) {
    test::LoopbackServer server({});
    const auto data = dataWithContentsOfURL(*URL::initWithString(server.url("/absent")));
    ASSERT_FALSE(data.ok());
    EXPECT_EQ(data.error().code, 404);
    EXPECT_THAT(data.error().localizedDescription(), HasSubstr("/absent"));
}

TEST(URLContents, NeverFollowARedirectionToAFile) {
    test::LoopbackServer server({{"/trap", {"302 Found", "Location: file:///etc/hostname\r\n", ""}}});
    EXPECT_FALSE(dataWithContentsOfURL(*URL::initWithString(server.url("/trap"))).ok());
}

TEST(URLContents, OfOtherSchemesAreRefused) {
    EXPECT_FALSE(dataWithContentsOfURL(*URL::initWithString("gopher://127.0.0.1/")).ok());
    EXPECT_FALSE(dataWithContentsOfURL(*URL::initWithString("nonsense:x")).ok());
}
