// What the program says when it cannot do what it is asked, and that it leaves nothing behind.
#include "RenderFixture.h"

#include <gmock/gmock.h>

#include <csignal>
#include <linux/capability.h>
#include <poll.h>
#include <pty.h>
#include <sys/prctl.h>
#include <sys/stat.h>

using test::burstyNoise;
using test::Outcome;
using test::Render;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
namespace fs = std::filesystem;

namespace {

class RenderFailure : public Render {
protected:
    /// Expects the status and the message, and that the folder holds what it held before.
    void expectRefusal(const std::vector<std::string>& options, int status, const std::string& message,
                       const std::function<void()>& prepare = {}) {
        const std::vector<std::string> before = folder.names();
        const Outcome outcome = attempt("out.wav", options, prepare);
        EXPECT_EQ(outcome.status, status);
        EXPECT_EQ(outcome.errors, "qor-limiter: " + message + "\n");
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(folder.names(), before);
    }
};

void limitFileSize(rlim_t bytes) {
    const rlimit limit{bytes, bytes};
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

} // namespace

TEST_F(RenderFailure, AMissingInput) {
    expectRefusal({}, 1, "cannot read '" + path("in.wav") + "': there is no such file. Check the path.");
}

TEST_F(RenderFailure, AnInputThatIsNoSound) {
    folder.write("in.wav", std::string(4096, 'x'));
    const Outcome outcome = attempt("out.wav");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, StartsWith("qor-limiter: cannot read '" + path("in.wav") + "': "));
    EXPECT_THAT(outcome.errors, HasSubstr("Give a sound file that libsndfile reads"));
    EXPECT_THAT(folder.names(), ElementsAre("in.wav"));
}

TEST_F(RenderFailure, AnInputThatMayNotBeRead) {
    input(burstyNoise(100));
    fs::permissions(path("in.wav"), fs::perms::none);
    expectRefusal({}, 1,
                  "cannot read '" + path("in.wav") +
                      "': Permission denied. Make the file readable for you (chmod u+r).",
                  [] { // so that permissions count for root, too
                      ::prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
                      ::prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH);
                  });
}

TEST_F(RenderFailure, AFolderThatMayNotBeWritten) {
    input(burstyNoise(100));
    fs::create_directory(path("closed"));
    fs::permissions(path("closed"), fs::perms::owner_read | fs::perms::owner_exec);
    const Outcome outcome = attempt("closed/out.wav", {}, [] { ::prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE); });
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, "qor-limiter: cannot write '" + path("closed/out.wav") +
                                  "': Permission denied. Choose a folder that you may write to.\n");
}

TEST_F(RenderFailure, MoreThanTwoChannels) {
    input(burstyNoise(10, 6));
    expectRefusal({}, 1,
                  "cannot limit '" + path("in.wav") +
                      "': it has 6 channels. Give a file with one or two channels.");
}

TEST_F(RenderFailure, ARateOutside8000To384000Hz) {
    input(burstyNoise(10, 2, 4000));
    expectRefusal({}, 1,
                  "cannot limit '" + path("in.wav") +
                      "': its sample rate is 4000 Hz. Convert it to a rate from 8000 to 384000 Hz.");
}

TEST_F(RenderFailure, AnUnknownParameter) {
    input(burstyNoise(10));
    expectRefusal(
        {"--set", "treshold=1"}, 2,
        "--set: there is no parameter 'treshold'. Did you mean 'threshold'? 'qor-limiter params' lists "
        "them.");
}

TEST_F(RenderFailure, AValueThatIsNoFiniteNumberInTheRange) {
    input(burstyNoise(10));
    expectRefusal({"--set", "threshold=x"}, 2,
                  "--set: 'x' is no number. Give threshold a value from 0.0 to 1.0.");
    expectRefusal({"--set", "threshold=inf"}, 2,
                  "--set: 'inf' is not finite. Give threshold a value from 0.0 to 1.0.");
    expectRefusal({"--set", "mode=4"}, 2,
                  "--set: '4' is outside the range. Give mode a value from 0.0 to 3.0.");
    expectRefusal({"--raw-set", "3=nan"}, 2, "--raw-set: 'nan' is not finite. Give a finite number.");
    expectRefusal({"--raw-set", "16=1"}, 2,
                  "--raw-set: '16' is no raw address. Give a whole number from 0 to 15.");
}

TEST_F(RenderFailure, AnAutomationLineThatDoesNotParse) {
    input(burstyNoise(10));
    folder.write("moves.txt", "0 trim 0.5\nx trim 0.5\n");
    expectRefusal({"--automation", path("moves.txt")}, 1,
                  path("moves.txt") + ":2: 'x' is no sample time. Give a whole number of frames, 0 or more.");
    expectRefusal({"--automation", path("none.txt")}, 1,
                  "cannot read '" + path("none.txt") + "': there is no such file. Check the path.");
}

TEST_F(RenderFailure, AnOutputThatIsTheInputByAnyName) {
    input(burstyNoise(100));
    const std::string before = bytes("in.wav");
    fs::create_symlink("in.wav", path("soft.wav"));
    fs::create_hard_link(path("in.wav"), path("hard.wav"));
    for (const char* name : {"in.wav", "soft.wav", "hard.wav", "./in.wav"}) {
        const Outcome outcome = attempt(name);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.errors, "qor-limiter: --output '" + path(name) +
                                      "' is the same file as the input '" + path("in.wav") +
                                      "'. Name another file.\n");
    }
    EXPECT_EQ(bytes("in.wav"), before);
}

TEST_F(RenderFailure, TwoOutputsIntoOneFileOrOverTheAutomation) {
    input(burstyNoise(100));
    folder.write("moves.txt", "0 trim 0.5\n");
    expectRefusal({"--meters", path("out.wav")}, 2,
                  "--meters '" + path("out.wav") + "' is the same file as --output '" + path("out.wav") +
                      "'. Name another file.");
    expectRefusal({"--log", path("in.wav")}, 2,
                  "--log '" + path("in.wav") + "' is the same file as the input '" + path("in.wav") +
                      "'. Name another file.");
    expectRefusal({"--automation", path("moves.txt"), "--meters", path("moves.txt")}, 2,
                  "--meters '" + path("moves.txt") + "' is the same file as the automation '" +
                      path("moves.txt") + "'. Name another file.");
    EXPECT_EQ(bytes("moves.txt"), "0 trim 0.5\n");
}

TEST_F(RenderFailure, NoRoomForTheOutputInEachFormat) {
    input(burstyNoise(100000));
    for (const auto& [format, name] :
         {std::pair{"float", "a.wav"}, {"pcm16", "b.wav"}, {"pcm24", "c.wav"}, {"flac", "d.flac"}}) {
        const Outcome outcome = attempt(name, {"--format", format}, [] { limitFileSize(100000); });
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.errors,
                  "qor-limiter: cannot write '" + path(name) +
                      "': File too large. The file is larger than the system allows here; choose a smaller "
                      "format or raise the limit.\n");
    }
    EXPECT_THAT(folder.names(), ElementsAre("in.wav"));
}

TEST_F(RenderFailure, NoRoomForTheLastBytesLeavesNoMetersAndNoReportEither) {
    input(burstyNoise(100000));
    ASSERT_EQ(attempt("out.flac").status, 0);
    const rlim_t length = fs::file_size(path("out.flac"));
    ASSERT_GT(length, 200000U) << "longer than what is written beside it";
    fs::remove(path("out.flac"));
    const Outcome outcome =
        attempt("out.flac", {"--meters", path("m.csv"), "--report", path("r.png"), "--block", "4096"},
                [length] { limitFileSize(length - 1); });
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("cannot write '" + path("out.flac") + "': File too large"));
    EXPECT_THAT(folder.names(), ElementsAre("in.wav"));
}

TEST_F(RenderFailure, AnEndingThatIsNotWhatIsWritten) {
    input(burstyNoise(100));
    const Outcome outcome = attempt("out.mp3");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.errors, "qor-limiter: --output: '" + path("out.mp3") +
                                  "' ends in .mp3, which can't be written. Name it .wav or .flac.\n");
    EXPECT_THAT(folder.names(), ElementsAre("in.wav"));
}

TEST_F(RenderFailure, AnInterruptWhileAPipeIsSilentEndsTheWork) {
    ASSERT_EQ(::mkfifo(path("in.wav").c_str(), 0600), 0);
    const auto interruptOnceThePipeIsOpen = [this] {
        const pid_t program = ::getpid();
        if (::fork() == 0) {
            const int pipe = ::open(path("in.wav").c_str(), O_WRONLY); // waits for the program
            ::kill(program, SIGINT);
            static_cast<void>(!::write(pipe, "R", 1)); // in case it doesn't wait for bytes yet
            pollfd reader{pipe, 0, 0};
            ::poll(&reader, 1, -1); // until the program is gone
            ::_exit(0);
        }
    };
    const Outcome outcome = attempt("out.wav", {}, interruptOnceThePipeIsOpen);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, "qor-limiter: stopped; '" + path("in.wav") + "' was not read to its end.\n");
    EXPECT_THAT(folder.names(), ElementsAre("in.wav"));
}

TEST_F(RenderFailure, NoRoomForTheMetersLeavesNoOutputEither) {
    input(burstyNoise(10000));
    expectRefusal(
        {"--format", "pcm16", "--block", "1", "--meters", path("m.csv")}, 1,
        "cannot write '" + path("m.csv") +
            "': File too large. The file is larger than the system allows here; choose a smaller format "
            "or raise the limit.",
        [] { limitFileSize(60000); });
}

TEST_F(RenderFailure, AnOldOutputStaysWhenTheNewOneFails) {
    input(burstyNoise(100000));
    folder.write("out.wav", "old");
    EXPECT_EQ(attempt("out.wav", {}, [] { limitFileSize(100000); }).status, 1);
    EXPECT_EQ(bytes("out.wav"), "old");
    EXPECT_THAT(folder.names(), ElementsAre("in.wav", "out.wav"));
}

TEST_F(RenderFailure, AFullDiskUnderTheLogOrStandardOutput) {
    input(burstyNoise(100));
    const Outcome log = attempt("out.wav", {"--log", "/dev/full"});
    EXPECT_EQ(log.status, 1);
    EXPECT_EQ(log.errors,
              "qor-limiter: cannot write '/dev/full': No space left on device. Free some space or "
              "choose another disk.\n");
    const Outcome output =
        attempt("out.wav", {}, [] { ::dup2(::open("/dev/full", O_WRONLY | O_CLOEXEC), STDOUT_FILENO); });
    EXPECT_EQ(output.status, 1);
    EXPECT_EQ(output.errors,
              "qor-limiter: cannot write to standard output. Direct it to a place with room.\n");
}

TEST_F(RenderFailure, AMissingFolderAFolderAndADeviceAsOutput) {
    input(burstyNoise(100));
    EXPECT_EQ(attempt("none/out.wav").errors, "qor-limiter: cannot write '" + path("none/out.wav") +
                                                  "': No such file or directory. Create the folder first.\n");
    fs::create_directory(path("folder"));
    EXPECT_EQ(attempt("folder").errors,
              "qor-limiter: cannot write '" + path("folder") + "': it is a folder. Add a file name.\n");
    const Outcome device = test::runProgram({"render", path("in.wav"), "-o", "/dev/full"});
    EXPECT_EQ(device.status, 1);
    EXPECT_EQ(device.errors,
              "qor-limiter: cannot write '/dev/full': it is not a plain file. Name a plain file.\n");
}

TEST_F(RenderFailure, BlockSizesAndFormatsThatDoNotExist) {
    input(burstyNoise(100));
    for (const char* block : {"0", "4097", "-1"}) {
        expectRefusal({"--block", block}, 2,
                      "--block: " + std::string(block) + " is outside the range. Give 1 to 4096 frames.");
    }
    expectRefusal({"--format", "mp3"}, 2, "--format: 'mp3' is no format. Give float, pcm24, pcm16 or flac.");
}

TEST_F(RenderFailure, WrongUsageEndsWithStatus2AndPointsToTheHelp) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{},
                                               {"limit"},
                                               {"render"},
                                               {"render", "a.wav"},
                                               {"render", "a.wav", "-o"},
                                               {"params", "x"},
                                               {"render", "a.wav", "-o", "b.wav", "--block", "many"},
                                               {"render", "a", "-o", "b", "--loud"}}) {
        const Outcome outcome = test::runProgram(arguments);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.output, "");
        EXPECT_THAT(outcome.errors, StartsWith("qor-limiter: "));
        EXPECT_THAT(outcome.errors, EndsWith(" --help'.\n"));
    }
    EXPECT_THAT(test::runProgram({"render"}).errors, EndsWith("See 'qor-limiter render --help'.\n"));
}

TEST_F(RenderFailure, DamageInTheMiddleOfAFlacFile) {
    input(burstyNoise(50000), SF_FORMAT_FLAC | SF_FORMAT_PCM_16);
    std::string content = bytes("in.wav");
    content.resize(content.size() / 2);
    folder.write("in.wav", content);
    const Outcome outcome = attempt("out.wav");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("cannot read '" + path("in.wav") + "'"));
    EXPECT_THAT(folder.names(), ElementsAre("in.wav"));
}
