#include "Program.h"
#include "SoundFiles.h"

#include "hosts/shared/PresetStore.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

using test::Outcome;
using test::runProgram;
using testing::HasSubstr;

namespace {

class PresetCommands : public testing::Test {
protected:
    test::TemporaryDirectory data_;
    test::ScopedVariable dataVariable_{"XDG_DATA_HOME", data_.path().string()};
    test::TemporaryDirectory resources_;
    test::ScopedVariable resourcesVariable_{"QOR_LIMITER_RESOURCES", resources_.path().string()};
};

} // namespace

TEST_F(PresetCommands, EveryHelpTextHasAnExample) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"presets", "--help"},
                                               {"presets", "show", "--help"},
                                               {"presets", "save", "--help"},
                                               {"presets", "delete", "--help"},
                                               {"state", "--help"},
                                               {"state", "save", "--help"},
                                               {"state", "check", "--help"}}) {
        const Outcome outcome = runProgram(arguments);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_THAT(outcome.output, HasSubstr("Example:\n  qor-limiter "));
    }
}

TEST_F(PresetCommands, TheManPageNamesTheirOptions) {
    const std::string page = test::contentOf(QOR_MAN_PAGE);
    for (const char* option : {"\\-\\-preset", "\\-\\-from", "presets show", "presets save", "presets delete",
                               "state save", "state check"}) {
        EXPECT_THAT(page, HasSubstr(option));
    }
}

TEST_F(PresetCommands, SavedPresetsAreListedAndShown) {
    const Outcome saved =
        runProgram({"presets", "save", "My \"Drums\"", "--set", "threshold=0.25", "--set", "mode=linked"});
    EXPECT_EQ(saved.status, 0) << saved.errors;
    EXPECT_EQ(saved.output, data_.file("qor-limiter/presets/My \"Drums\".plist") + "\n");
    EXPECT_EQ(runProgram({"presets"}).output, "KIND     NAME\nuser     My \"Drums\"\n");
    EXPECT_EQ(runProgram({"presets", "--json"}).output,
              "[\n  {\"name\": \"My \\\"Drums\\\"\", \"factory\": false, \"file\": \"" +
                  data_.file("qor-limiter/presets/My \\\"Drums\\\".plist") + "\"}\n]\n");
    const Outcome shown = runProgram({"presets", "show", "my \"drums\""});
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.output, HasSubstr("\nthreshold      0.25\n"));
    EXPECT_THAT(shown.output, HasSubstr("\nmode           1.0          Linked\n"));
    EXPECT_THAT(runProgram({"presets", "show", "my \"drums\"", "--json"}).output,
                HasSubstr("    \"kLimiterThreshold\": 0.25,\n"));
}

TEST_F(PresetCommands, DeletesAPresetOfOnesOwnByItsExactNameAndNothingElse) {
    ASSERT_EQ(runProgram({"presets", "save", "My Drums"}).status, 0);
    const std::string file = data_.file("qor-limiter/presets/My Drums.plist");
    for (const std::string& other : {std::string("my drums"), file, std::string("Nothing")}) {
        const Outcome refused = runProgram({"presets", "delete", other});
        EXPECT_EQ(refused.status, 2);
        EXPECT_EQ(refused.output, "");
        EXPECT_EQ(refused.errors, "qor-limiter: You have no preset '" + other +
                                      "' of your own. 'qor-limiter presets' lists them; large and small "
                                      "letters count.\n");
    }
    const Outcome deleted = runProgram({"presets", "delete", "My Drums"});
    EXPECT_EQ(deleted.status, 0) << deleted.errors;
    EXPECT_EQ(deleted.output, file + "\n");
    EXPECT_EQ(runProgram({"presets"}).output, "KIND     NAME\n");
}

TEST_F(PresetCommands, WithoutPresetsTheListIsEmpty) {
    EXPECT_EQ(runProgram({"presets"}).output, "KIND     NAME\n");
    EXPECT_EQ(runProgram({"presets", "--json"}).output, "[\n]\n");
}

TEST_F(PresetCommands, APresetStartsFromAnother) {
    ASSERT_EQ(runProgram({"presets", "save", "a", "--set", "trim=0.25"}).status, 0);
    ASSERT_EQ(runProgram({"presets", "save", "b", "--from", "a", "--set", "mix=0.5"}).status, 0);
    const auto preset = qor::host::readPreset(qor::host::findPreset("b").value()).value();
    EXPECT_EQ(preset.values.at(qor::kLimiterTrim), 0.25F);
    EXPECT_EQ(preset.values.at(qor::kLimiterMix), 0.5F);
    EXPECT_EQ(preset.values.at(qor::kLimiterThreshold), 0.8F);
}

TEST_F(PresetCommands, ARenderWithAPresetIsTheRenderWithItsSettings) {
    const std::string in = data_.file("in.wav");
    test::writeSound(in, test::burstyNoise(9000));
    const std::vector<std::string> settings = {"--set", "knee=1",   "--set", "threshold=0.3",
                                               "--set", "trim=0.6", "--set", "inputfilterhp=0.5"};
    std::vector<std::string> save = {"presets", "save", "a"};
    save.insert(save.end(), settings.begin(), settings.end());
    ASSERT_EQ(runProgram(save).status, 0);
    std::vector<std::string> plain = {"render", in, "-o", data_.file("plain.wav")};
    plain.insert(plain.end(), settings.begin(), settings.end());
    ASSERT_EQ(runProgram(plain).status, 0);
    const Outcome preset = runProgram({"render", in, "-o", data_.file("preset.wav"), "--preset", "A"});
    ASSERT_EQ(preset.status, 0) << preset.errors;
    EXPECT_EQ(test::readFile(data_.file("preset.wav")), test::readFile(data_.file("plain.wav")));
    ASSERT_EQ(
        runProgram({"render", in, "-o", data_.file("set.wav"), "--preset", "a", "--set", "trim=0.5"}).status,
        0);
    EXPECT_NE(test::readFile(data_.file("set.wav")), test::readFile(data_.file("plain.wav")));
    EXPECT_EQ(runProgram({"render", in, "-o", data_.file("x.wav"), "--preset", "nothing"}).status, 2);
}

TEST_F(PresetCommands, MistakesAreRefusedWithTheirRemedy) {
    const Outcome unknown = runProgram({"presets", "show", "Nothing"});
    EXPECT_EQ(unknown.status, 2);
    EXPECT_THAT(unknown.errors, HasSubstr("There is no preset 'Nothing'."));
    const Outcome name = runProgram({"presets", "save", "a/b"});
    EXPECT_EQ(name.status, 1);
    EXPECT_THAT(name.errors, HasSubstr("can't be a preset's name"));
    EXPECT_EQ(runProgram({"presets", "save", "a", "--set", "nothing=1"}).status, 2);
    EXPECT_EQ(runProgram({"presets", "save", "a", "--set", "trim=7"}).status, 2);
    EXPECT_EQ(runProgram({"state"}).status, 2);
}

TEST_F(PresetCommands, AStateFileIsSoundAndHoldsWhatWasSet) {
    const std::string file = data_.file("s.plist");
    ASSERT_EQ(runProgram({"state", "save", file, "--set", "knee=0.75", "--set", "bypass=on"}).status, 0);
    const Outcome checked = runProgram({"state", "check", file});
    EXPECT_EQ(checked.status, 0) << checked.errors;
    EXPECT_EQ(checked.output, file + ": sound; sets 12 of 12 parameters\n");
    const auto state =
        qor::host::readPresetFile(qor::URL::fileURLWithPath(file), qor::host::Completeness::allParameters);
    ASSERT_TRUE(state);
    EXPECT_EQ(state.value().values.at(qor::kLimiterKnee), 0.75F);
    EXPECT_EQ(state.value().values.at(qor::kLimiterBypass), 1.0F);
}

TEST_F(PresetCommands, AStateIsOnlyWrittenIntoAPlainFile) {
    const std::string pipe = data_.file("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const Outcome refused = runProgram({"state", "save", pipe});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.errors,
              "qor-limiter: cannot write '" + pipe + "': it is not a plain file. Name a plain file.\n");
    EXPECT_TRUE(std::filesystem::is_fifo(pipe));
    EXPECT_EQ(runProgram({"state", "save", data_.file("none/s.plist")}).errors,
              "qor-limiter: cannot write '" + data_.file("none/s.plist") +
                  "': No such file or directory. Create the folder first.\n");
}

TEST_F(PresetCommands, CheckSaysWhatIsWrongWithTheKeyPath) {
    const std::string file = data_.file("s.plist");
    ASSERT_EQ(runProgram({"state", "save", file}).status, 0);
    std::string content = test::readFile(file);
    content.replace(content.find("<integer>9</integer>"), 20, "<true/>");
    test::writeFile(file, content);
    const Outcome checked = runProgram({"state", "check", file});
    EXPECT_EQ(checked.status, 1);
    EXPECT_EQ(checked.output, "");
    EXPECT_THAT(checked.errors, HasSubstr(file));
    EXPECT_THAT(checked.errors,
                HasSubstr("group 09 / param / address: found a value of kind boolean, wanted"));
    EXPECT_THAT(runProgram({"state", "check", "/no/such/file"}).errors, HasSubstr("does not exist"));
}
