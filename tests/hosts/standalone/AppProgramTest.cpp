// The program where it shows no window.
#include "AppProcess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using test::AppProcess;
using testing::HasSubstr;

class AppProgram : public testing::Test {
protected:
    test::TemporaryDirectory home_;
    test::ScopedVariable display_{"DISPLAY", std::nullopt};
};

TEST_F(AppProgram, HelpAndVersionNeedNoDisplay) {
    AppProcess help({"--help"}, home_);
    EXPECT_EQ(help.wait(), 0);
    EXPECT_THAT(help.output(), HasSubstr("--list-devices"));
    EXPECT_EQ(help.errors(), "");
    AppProcess version({"--version"}, home_);
    EXPECT_EQ(version.wait(), 0);
    EXPECT_THAT(version.output(), testing::MatchesRegex("qor-limiter-app [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST_F(AppProgram, TheManPageNamesEveryOption) {
    const std::string page = test::readFile(QOR_APP_MAN_PAGE);
    AppProcess process({"--help"}, home_);
    EXPECT_EQ(process.wait(), 0);
    const std::string help = process.output();
    std::size_t options = 0;
    for (std::size_t at = help.find("--"); at != std::string::npos; at = help.find("--", at + 2)) {
        const std::size_t end = help.find_first_not_of("abcdefghijklmnopqrstuvwxyz-", at);
        std::string option = help.substr(at, end - at);
        for (std::size_t dash = 0; (dash = option.find('-', dash)) != std::string::npos; dash += 2) {
            option.insert(dash, "\\");
        }
        EXPECT_THAT(page, HasSubstr(option));
        ++options;
    }
    EXPECT_GE(options, 10U);
}

TEST_F(AppProgram, WithoutADisplayItSaysSoAndEndsWithOne) {
    AppProcess process({"--backend", "none"}, home_);
    EXPECT_EQ(process.wait(), 1);
    EXPECT_EQ(process.errors(),
              "qor-limiter-app: there is no display: the variable DISPLAY is not set. Start from a "
              "graphical session.\n");
    EXPECT_EQ(process.output(), "");
}

TEST_F(AppProgram, ListsDevicesWithoutADisplay) {
    AppProcess process({"--list-devices"}, home_);
    EXPECT_EQ(process.wait(), 0);
    EXPECT_THAT(process.output(), HasSubstr("JACK: no JACK server is running. Start jackd or PipeWire.\n"));
    EXPECT_THAT(process.output(), HasSubstr("RtAudio, ALSA:"));
    EXPECT_EQ(process.errors(), "");
}

TEST_F(AppProgram, WrongUsageEndsWithTwo) {
    AppProcess process({"--backend", "oss"}, home_);
    EXPECT_EQ(process.wait(), 2);
    EXPECT_THAT(process.errors(), HasSubstr("See 'qor-limiter-app --help'."));
}

} // namespace
