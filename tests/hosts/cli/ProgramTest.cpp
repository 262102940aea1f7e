#include "Program.h"
#include "SoundFiles.h"

#include "kernel/ParameterTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pty.h>

using test::Outcome;
using test::runProgram;
using testing::EndsWith;
using testing::HasSubstr;

TEST(Program, EveryHelpTextHasAnExampleAndGoesToStandardOutput) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"--help"},
                                               {"render", "--help"},
                                               {"params", "-h"},
                                               {"presets", "--help"},
                                               {"state", "--help"},
                                               {"snapshot", "--help"},
                                               {"diagnostics", "--help"}}) {
        const Outcome outcome = runProgram(arguments);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_THAT(outcome.output, HasSubstr("Example:\n  qor-limiter "));
        EXPECT_EQ(outcome.errors, "");
    }
}

TEST(Program, TheManPageNamesEveryOption) {
    const std::string page = test::contentOf(QOR_MAN_PAGE);
    std::size_t options = 0;
    const std::vector<std::vector<std::string>> commands = {
        {"render"},        {"params"},         {"presets"},  {"presets", "show"}, {"presets", "save"},
        {"state", "save"}, {"state", "check"}, {"snapshot"}, {"diagnostics"}};
    for (const std::vector<std::string>& command : commands) {
        std::vector<std::string> arguments = command;
        arguments.emplace_back("--help");
        const std::string help = runProgram(arguments).output;
        EXPECT_THAT(page, HasSubstr("\n.B qor\\-limiter " + command.front())) << "in the synopsis";
        for (std::size_t at = help.find("--"); at != std::string::npos; at = help.find("--", at + 2)) {
            const std::size_t end = help.find_first_not_of("abcdefghijklmnopqrstuvwxyz-", at);
            std::string option = help.substr(at, end - at);
            for (std::size_t dash = 0; (dash = option.find('-', dash)) != std::string::npos; dash += 2) {
                option.insert(dash, "\\");
            }
            EXPECT_THAT(page, HasSubstr(option)) << command.back();
            ++options;
        }
    }
    EXPECT_GT(options, 20U);
}

TEST(Program, TheVersionIsPrinted) {
    const Outcome outcome = runProgram({"--version"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.output, testing::MatchesRegex("qor-limiter [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST(Program, ParamsPrintsOneLinePerParameter) {
    const Outcome outcome = runProgram({"params"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 13);
    EXPECT_THAT(outcome.output,
                HasSubstr("\n2        threshold      kLimiterThreshold      0.0 to 1.0  0.8\n"));
    EXPECT_THAT(outcome.output,
                HasSubstr("\n6        mode           kLimiterMode           0.0 to 3.0  0.0      "
                          "Stereo, Linked, Mid/Side, Mid/Side Linked\n"));
    for (const qor::ParameterRow& row : qor::kParameterTable) {
        EXPECT_THAT(outcome.output, HasSubstr(row.identifier));
    }
}

TEST(Program, ParamsPrintsJsonWithEveryRow) {
    const std::string json = runProgram({"params", "--json"}).output;
    EXPECT_THAT(json, testing::StartsWith("[\n  {\"address\": 0, \"identifier\": \"kLimiterAttack\", "));
    EXPECT_THAT(json, EndsWith("}\n]\n"));
    EXPECT_THAT(json,
                HasSubstr("{\"address\": 2, \"identifier\": \"kLimiterThreshold\", \"name\": \"threshold\",\n"
                          "   \"displayName\": \"Limiter Threshold\", \"hostName\": \"Threshold\",\n"
                          "   \"minimum\": 0.0, \"maximum\": 1.0, \"default\": 0.8, \"unit\": \"generic\",\n"
                          "   \"values\": [],\n"));
    EXPECT_THAT(json, HasSubstr("\"unit\": \"boolean\",\n   \"values\": [\"Off\", \"On\"],"));
    EXPECT_EQ(std::count(json.begin(), json.end(), '{'), 12);
}

TEST(Program, TheProgressBarIsDrawnOnATerminalAndClearedAtTheEnd) {
    const test::TemporaryFolder folder;
    test::writeSound(folder.path("in.wav"), test::burstyNoise(100000));
    int terminal = -1;
    int line = -1;
    ASSERT_EQ(::openpty(&terminal, &line, nullptr, nullptr, nullptr), 0);
    const Outcome outcome = runProgram({"render", folder.path("in.wav"), "-o", folder.path("out.wav")},
                                       [&] { ::dup2(line, STDERR_FILENO); });
    ::close(line);
    EXPECT_EQ(outcome.status, 0);
    std::string drawn(65536, '\0');
    drawn.resize(
        static_cast<std::size_t>(std::max<ssize_t>(0, ::read(terminal, drawn.data(), drawn.size()))));
    ::close(terminal);
    EXPECT_THAT(drawn, HasSubstr("#] 100 %"));
    EXPECT_THAT(drawn, EndsWith("\r\x1b[K"));
}
