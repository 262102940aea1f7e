// What the program makes of real files.
#include "RenderFixture.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <cstring>

using test::burstyNoise;
using test::Outcome;
using test::Render;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

using Options = std::vector<std::string>;

float peakOf(const std::vector<float>& samples) {
    float peak = 0.0F;
    for (const float sample : samples) {
        peak = std::max(peak, std::abs(sample));
    }
    return peak;
}

std::vector<std::string> linesOf(const std::string& content) {
    std::vector<std::string> lines;
    std::istringstream stream(content);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

const std::vector<Options> kSettings{
    {},
    {"--set", "mode=1", "--set", "knee=1", "--set", "threshold=0.4"},
    {"--set", "mode=2", "--set", "threshold=0.3", "--set", "audition=1"},
    {"--set", "mode=3", "--set", "threshold=0.3", "--set", "mix=0.7"},
    {"--set", "inputfilterhp=0.2", "--set", "inputfilterlp=0.7", "--set", "threshold=0.3"},
    {"--set", "mode=3", "--set", "inputfilterhp=0.1", "--set", "threshold=0.2"},
};

} // namespace

TEST_F(Render, WritesStereo32BitFloatAtTheSameRateAndLowersThePeaks) {
    input(burstyNoise(20000, 2, 44100));
    const Outcome outcome = render("out.wav", {"--set", "threshold=0.3", "--set", "attack=0"});
    int format = 0;
    const test::Sound sound = test::readSound(path("out.wav"), &format);
    EXPECT_EQ(format, SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    EXPECT_EQ(sound.rate, 44100);
    EXPECT_EQ(sound.channels, 2);
    EXPECT_EQ(sound.frames(), 20000U);
    EXPECT_GT(peakOf(samples("in.wav")), 1.1F);
    EXPECT_LT(peakOf(sound.samples), 0.5F * peakOf(samples("in.wav")));
    EXPECT_EQ(outcome.errors, "");
}

TEST_F(Render, EveryBlockSizeGivesTheSameBytes) {
    input(burstyNoise(9001));
    for (const Options& settings : kSettings) {
        Options options = settings;
        options.insert(options.end(), {"--block", "512"});
        render("512.wav", options);
        for (const char* block : {"1", "7", "64", "480", "4096"}) {
            options.back() = block;
            render("other.wav", options);
            EXPECT_EQ(bytes("512.wav"), bytes("other.wav")) << "block " << block;
        }
    }
}

TEST_F(Render, AFileCutAnywhereGivesTheBeginningOfTheWholeRender) {
    const test::Sound whole = burstyNoise(9001);
    for (const Options& settings : kSettings) {
        input(whole);
        render("whole.wav", settings);
        const std::vector<float> expected = samples("whole.wav");
        for (const std::size_t frames : {1, 63, 511, 512, 513, 4097, 8999}) {
            test::Sound cut = whole;
            cut.samples.resize(2 * frames);
            input(cut);
            render("cut.wav", settings);
            const std::vector<float> got = samples("cut.wav");
            ASSERT_EQ(got.size(), 2 * frames);
            EXPECT_EQ(std::memcmp(got.data(), expected.data(), got.size() * sizeof(float)), 0) << frames;
        }
    }
}

TEST_F(Render, MonoComesOutOnBothSides) {
    const test::Sound mono = burstyNoise(3000, 1);
    input(mono);
    render("mono.wav");
    test::Sound stereo{mono.rate, 2, {}};
    for (const float sample : mono.samples) {
        stereo.samples.insert(stereo.samples.end(), {sample, sample});
    }
    input(stereo);
    render("stereo.wav");
    EXPECT_EQ(bytes("mono.wav"), bytes("stereo.wav"));
}

TEST_F(Render, ANameThatEndsInFlacAsksForFlac) {
    input(burstyNoise(5000));
    render("out.flac");
    int format = 0;
    test::readSound(path("out.flac"), &format);
    EXPECT_EQ(format, SF_FORMAT_FLAC | SF_FORMAT_PCM_24);
}

TEST_F(Render, EachFormatHoldsTheFloatResultWithinHalfAStep) {
    input(burstyNoise(5000));
    render("float.wav", {"--set", "threshold=0.4"});
    const std::vector<float> expected = samples("float.wav");
    const struct {
        const char* name;
        int format;
        double step;
    } rows[] = {{"pcm16", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 1.0 / 32768},
                {"pcm24", SF_FORMAT_WAV | SF_FORMAT_PCM_24, 1.0 / 8388608},
                {"flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_24, 1.0 / 8388608}};
    for (const auto& row : rows) {
        render("out", {"--set", "threshold=0.4", "--format", row.name});
        int format = 0;
        const std::vector<float> got = test::readSound(path("out"), &format).samples;
        EXPECT_EQ(format, row.format);
        ASSERT_EQ(got.size(), expected.size());
        for (std::size_t i = 0; i < got.size(); ++i) {
            const double wanted = std::clamp(static_cast<double>(expected[i]), -1.0, 1.0 - row.step);
            ASSERT_NEAR(got[i], wanted, 0.5001 * row.step) << row.name << " " << i;
        }
    }
}

TEST_F(Render, ReadsWhatTheLibraryReads) {
    for (const int format : {SF_FORMAT_AIFF | SF_FORMAT_PCM_16, SF_FORMAT_FLAC | SF_FORMAT_PCM_16,
                             SF_FORMAT_OGG | SF_FORMAT_VORBIS, SF_FORMAT_WAV | SF_FORMAT_PCM_24}) {
        input(burstyNoise(4000), format);
        render("out.wav");
        EXPECT_EQ(test::readSound(path("out.wav")).frames(), 4000U);
    }
}

TEST_F(Render, APipeGivesTheSameBytesAsTheFileInEveryFormat) {
    for (const int format : {SF_FORMAT_WAV | SF_FORMAT_FLOAT, SF_FORMAT_FLAC | SF_FORMAT_PCM_16,
                             SF_FORMAT_OGG | SF_FORMAT_VORBIS}) {
        input(burstyNoise(20000), format);
        render("file.wav");
        renderPiped(bytes("in.wav"), "pipe.wav");
        EXPECT_TRUE(bytes("pipe.wav") == bytes("file.wav")) << std::hex << format;
    }
}

TEST_F(Render, AStreamOfUnknownLengthMakesAnOrdinaryFile) {
    input(burstyNoise(20000));
    render("file.wav");
    std::string streamed = bytes("in.wav");
    streamed.replace(4, 4, 4, '\xFF'); // what a program that writes into a pipe has to leave open
    streamed.replace(streamed.find("data") + 4, 4, 4, '\xFF');
    renderPiped(streamed, "pipe.wav");
    EXPECT_TRUE(bytes("pipe.wav") == bytes("file.wav"));
}

TEST_F(Render, PrintsLengthPeaksAndLoudness) {
    test::Sound tone{48000, 2, {}};
    for (int i = 0; i < 96000; ++i) {
        const auto sample = static_cast<float>(0.1 * std::sin(i * 2.0 * 3.14159265358979 * 1000.0 / 48000.0));
        tone.samples.insert(tone.samples.end(), {sample, sample});
    }
    input(tone);
    EXPECT_EQ(render("out.wav", {"--set", "bypass=1", "--set", "finallimiter=0"}).output,
              "frames: 96000\n"
              "seconds: 2.000\n"
              "sample rate: 48000 Hz\n"
              "input peak: -20.00 dBFS\n"
              "input loudness: -20.0 LUFS\n"
              "output peak: -20.00 dBFS\n"
              "output loudness: -20.0 LUFS\n"
              "output: " +
                  path("out.wav") + "\n");
    EXPECT_EQ(samples("out.wav"), tone.samples);
}

TEST_F(Render, AnEmptyFileGivesAnEmptyFile) {
    input({48000, 2, {}});
    EXPECT_THAT(render("out.wav").output, HasSubstr("frames: 0\nseconds: 0.000\n"));
    EXPECT_EQ(test::readSound(path("out.wav")).frames(), 0U);
}

TEST_F(Render, SettingsAreAppliedInTheOrderGivenRawOrNot) {
    input(burstyNoise(3000));
    render("mode0.wav");
    render("mode1.wav", {"--set", "mode=1"});
    ASSERT_NE(bytes("mode0.wav"), bytes("mode1.wav"));
    render("out.wav", {"--set", "mode=0", "--raw-set", "6=1.9"});
    EXPECT_EQ(bytes("out.wav"), bytes("mode1.wav"));
    render("out.wav", {"--raw-set", "6=1.9", "--set", "mode=0"});
    EXPECT_EQ(bytes("out.wav"), bytes("mode0.wav"));
    render("out.wav", {"--raw-set=6=1", "--set=mode=2", "--raw-set=6=0"});
    EXPECT_EQ(bytes("out.wav"), bytes("mode0.wav"));
}

TEST_F(Render, TheLogShowsTheDefaultsThenTheSettingsThenTheAutomation) {
    input(burstyNoise(1000));
    folder.write("moves.txt", "700 trim 0.25\n");
    const Outcome outcome =
        render("out.wav", {"--set", "mix=0.5", "--raw-set", "15=3.5", "--set", "threshold=1", "--automation",
                           path("moves.txt"), "--log", path("log.txt")});
    EXPECT_THAT(outcome.output, testing::Not(HasSubstr("unit received")));
    const std::string expected[] = {
        "0, value:0.100000", "1, value:0.500000", "2, value:0.800000", "3, value:0.500000",
        "4, value:0.500000", "5, value:1.000000", "6, value:0.000000", "7, value:0.000000",
        "8, value:0.000000", "9, value:0.000000", "10, value:1.000000", "11, value:1.000000",
        // once more after the allocation, which has reset the filter
        "0, value:0.100000", "1, value:0.500000", "2, value:0.800000", "3, value:0.500000",
        "4, value:0.500000", "5, value:1.000000", "6, value:0.000000", "7, value:0.000000",
        "8, value:0.000000", "11, value:1.000000", "9, value:0.000000", "10, value:1.000000",
        "9, value:0.000000",
        // the settings, then the automation
        "5, value:0.500000", "15, value:3.500000", "2, value:1.000000", "4, value:0.250000"};
    std::vector<std::string> received;
    const std::string start = "unit received parameter : address:";
    for (const std::string& line : linesOf(bytes("log.txt"))) {
        if (line.starts_with(start)) {
            received.push_back(line.substr(start.size()));
        }
    }
    EXPECT_THAT(received, testing::ElementsAreArray(expected));
}

TEST_F(Render, TheLogIsOffUnlessAskedFor) {
    input(burstyNoise(1000));
    EXPECT_THAT(linesOf(render("out.wav").output), testing::SizeIs(8));
    EXPECT_THAT(render("out.wav", {"--log", "-"}).output,
                HasSubstr("unit received parameter : address:0, value:0.1"));
}

TEST_F(Render, AutomationActsExactlyAtItsSampleInEveryBlockSize) {
    input(burstyNoise(5000));
    render("limited.wav", {"--set", "threshold=0.3", "--set", "finallimiter=0"});
    const std::vector<float> limited = samples("limited.wav");
    const std::vector<float> dry = samples("in.wav");
    folder.write("moves.txt", "1234 bypass 1\n");
    for (const char* block : {"1", "617", "1234", "4096"}) {
        render("out.wav", {"--set", "threshold=0.3", "--set", "finallimiter=0", "--automation",
                           path("moves.txt"), "--block", block});
        const std::vector<float> got = samples("out.wav");
        EXPECT_TRUE(std::equal(got.begin(), got.begin() + 2L * 1234, limited.begin())) << block;
        EXPECT_TRUE(std::equal(got.begin() + 2L * 1234, got.end(), dry.begin() + 2L * 1234)) << block;
    }
}

TEST_F(Render, AnAutomatedFinalLimiterSwitchesExactlyAtItsSampleInEveryBlockSize) {
    input(burstyNoise(5000));
    render("with.wav", {"--set", "trim=0.8"});
    render("without.wav", {"--set", "trim=0.8", "--set", "finallimiter=0"});
    folder.write("moves.txt", "1234 finallimiter 0\n");
    const std::vector<float> with = samples("with.wav");
    const std::vector<float> without = samples("without.wav");
    constexpr long kTurn = 2L * 1234;
    ASSERT_NE(with, without);
    ASSERT_FALSE(std::equal(with.begin() + 2L * 1024, with.begin() + kTurn, without.begin() + 2L * 1024));
    for (const char* block : {"1", "512", "4096"}) {
        render("out.wav", {"--set", "trim=0.8", "--automation", path("moves.txt"), "--block", block});
        const std::vector<float> got = samples("out.wav");
        EXPECT_TRUE(std::equal(got.begin(), got.begin() + kTurn, with.begin())) << block;
        EXPECT_TRUE(std::equal(got.begin() + kTurn, got.end(), without.begin() + kTurn)) << block;
    }
}

TEST_F(Render, EventsAtOneSampleKeepTheirOrder) {
    input(burstyNoise(2000));
    render("limited.wav", {"--set", "threshold=0.3"});
    folder.write("off.txt", "0 bypass 1\n0 bypass 0\n");
    render("out.wav", {"--set", "threshold=0.3", "--automation", path("off.txt")});
    EXPECT_EQ(bytes("out.wav"), bytes("limited.wav"));
    folder.write("on.txt", "0 bypass 0\n0 bypass 1\n");
    render("out.wav", {"--set", "threshold=0.3", "--set", "finallimiter=0", "--automation", path("on.txt")});
    EXPECT_EQ(samples("out.wav"), samples("in.wav"));
}

TEST_F(Render, EventsBehindTheEndAreReported) {
    input(burstyNoise(1000));
    folder.write("moves.txt", "999 trim 0.4\n1000 trim 0.5\n5000 trim 0.6\n");
    EXPECT_EQ(
        render("out.wav", {"--automation", path("moves.txt")}).errors,
        "qor-limiter: warning: " + path("moves.txt") +
            ": 2 of the events lie at or behind the end of the recording and were not applied, the first at "
            "1000.\n");
}

TEST_F(Render, TheMeterTableHasOneRowPerRenderCall) {
    test::Sound sound = burstyNoise(1000);
    std::fill(sound.samples.begin(), sound.samples.begin() + 600, 0.0F);
    input(sound);
    render("out.wav", {"--set", "threshold=0.3", "--block", "300", "--meters", path("m.csv")});
    const std::vector<std::string> lines = linesOf(bytes("m.csv"));
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_EQ(lines[0], "sampletime,dynamics1,dynamics2,peak1,peak2");
    EXPECT_EQ(lines[1], "0,1.0,1.0,0.0,0.0");
    EXPECT_THAT(lines[2], testing::StartsWith("300,0."));
    EXPECT_THAT(lines[3], testing::StartsWith("600,0."));
    EXPECT_THAT(lines[4], testing::StartsWith("900,0."));
}

TEST_F(Render, SamplesThatAreNoNumbersAreReported) {
    test::Sound sound = burstyNoise(1000);
    sound.samples[100] = std::nanf("");
    input(sound);
    EXPECT_THAT(render("out.wav").errors,
                HasSubstr("warning: 1 samples of '" + path("in.wav") +
                          "' are infinite or no numbers; they were taken as silence."));
}

TEST_F(Render, CutSamplesOfAnIntegerFormatAreReported) {
    input({48000, 2, {0.5F, 1.5F, -2.0F, 0.5F}});
    const Outcome outcome =
        render("out.wav", {"--set", "bypass=1", "--set", "finallimiter=0", "--format", "pcm16"});
    EXPECT_EQ(
        outcome.errors,
        "qor-limiter: warning: 2 samples beyond full scale were cut. Use --format float to keep them.\n");
}

TEST_F(Render, PeakMemoryDoesNotGrowWithTheFile) {
    const auto peakMemory = [this](int seconds) {
        test::writeRepeated(path("in.wav"), burstyNoise(48000), seconds);
        return render("out.wav", {"--meters", path("m.csv")}).peakMemory;
    };
    const long small = peakMemory(1);
    const long large = peakMemory(60);
    EXPECT_LT(large, small + 2048) << "KiB; the files differ by 22 MiB";
}

TEST_F(Render, WritesIntoTheWorkingFolderByABareName) {
    input(burstyNoise(100));
    const std::string where = path("");
    const Outcome outcome = test::runProgram({"render", "in.wav", "-o", "out.wav"},
                                             [&] { static_cast<void>(::chdir(where.c_str())); });
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_THAT(folder.names(), ElementsAre("in.wav", "out.wav"));
}
