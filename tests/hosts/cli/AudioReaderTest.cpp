#include "hosts/cli/AudioReader.h"

#include "SoundFiles.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

using namespace qor::cli;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

std::string refusal(const std::string& file) {
    const auto reader = AudioReader::open(file);
    EXPECT_FALSE(reader);
    return reader ? "" : reader.error().localizedDescription();
}

} // namespace

TEST(AudioReader, DeliversFloatsAsTheyAreAlsoBeyondFullScale) {
    const test::TemporaryFolder folder;
    const float infinity = std::numeric_limits<float>::infinity();
    test::writeSound(folder.path("a.wav"), {44100, 2, {0.1F, -0.2F, 3.5F, -infinity, 1e-40F, 1.0F}});
    auto reader = AudioReader::open(folder.path("a.wav"));
    ASSERT_TRUE(reader);
    EXPECT_EQ(reader.value()->sampleRate(), 44100);
    EXPECT_EQ(reader.value()->frames(), 3);
    std::vector<float> left(8);
    std::vector<float> right(8);
    EXPECT_EQ(reader.value()->read(left.data(), right.data(), 8).value(), 3U);
    EXPECT_EQ(left[0], 0.1F);
    EXPECT_EQ(right[0], -0.2F);
    EXPECT_EQ(left[1], 3.5F);
    EXPECT_EQ(right[1], -infinity);
    EXPECT_EQ(left[2], 1e-40F);
    EXPECT_EQ(reader.value()->read(left.data(), right.data(), 8).value(), 0U);
}

TEST(AudioReader, PutsOneChannelOnBothSides) {
    const test::TemporaryFolder folder;
    test::writeSound(folder.path("a.wav"), {8000, 1, {0.25F, 0.5F}});
    auto reader = AudioReader::open(folder.path("a.wav"));
    ASSERT_TRUE(reader);
    std::vector<float> left(2);
    std::vector<float> right(2);
    EXPECT_EQ(reader.value()->read(left.data(), right.data(), 2).value(), 2U);
    EXPECT_EQ(left, (std::vector<float>{0.25F, 0.5F}));
    EXPECT_EQ(right, left);
}

TEST(AudioReader, RefusesMissingFilesFoldersAndWhatIsNoSound) {
    const test::TemporaryFolder folder;
    EXPECT_EQ(refusal(folder.path("none.wav")),
              "cannot read '" + folder.path("none.wav") + "': there is no such file. Check the path.");
    EXPECT_EQ(refusal(folder.path("")),
              "cannot read '" + folder.path("") + "': it is a folder. Name a file in it.");
    const std::string noise = folder.write("noise.wav", "this is no sound file, only a line of text");
    EXPECT_THAT(refusal(noise), StartsWith("cannot read '" + noise + "': "));
    EXPECT_THAT(refusal(noise),
                HasSubstr(". Give a sound file that libsndfile reads: WAV, AIFF, FLAC, Ogg, MP3"));
    EXPECT_THAT(refusal(folder.write("empty.wav", "")), HasSubstr("cannot read"));
}

TEST(AudioReader, RefusesMoreThanTwoChannels) {
    const test::TemporaryFolder folder;
    test::writeSound(folder.path("a.wav"), test::burstyNoise(10, 3));
    EXPECT_EQ(refusal(folder.path("a.wav")),
              "cannot limit '" + folder.path("a.wav") +
                  "': it has 3 channels. Give a file with one or two channels.");
}

TEST(AudioReader, TakesRatesFrom8000To384000Hz) {
    const test::TemporaryFolder folder;
    for (const int rate : {7999, 384001}) {
        test::writeSound(folder.path("a.wav"), test::burstyNoise(10, 2, rate));
        EXPECT_EQ(refusal(folder.path("a.wav")), "cannot limit '" + folder.path("a.wav") +
                                                     "': its sample rate is " + std::to_string(rate) +
                                                     " Hz. Convert it to a rate from 8000 to 384000 Hz.");
    }
    for (const int rate : {8000, 384000}) {
        test::writeSound(folder.path("a.wav"), test::burstyNoise(10, 2, rate));
        EXPECT_TRUE(AudioReader::open(folder.path("a.wav")));
    }
}

TEST(AudioReader, ReadsAFileThatIsCutAsFarAsItGoes) {
    const test::TemporaryFolder folder;
    test::writeSound(folder.path("a.wav"), test::burstyNoise(1000));
    const std::string whole = test::contentOf(folder.path("a.wav"));
    auto reader = AudioReader::open(folder.write("cut.wav", whole.substr(0, whole.size() - 4000)));
    ASSERT_TRUE(reader);
    std::vector<float> left(1000);
    std::vector<float> right(1000);
    EXPECT_EQ(reader.value()->read(left.data(), right.data(), 1000).value(), 500U);
}
