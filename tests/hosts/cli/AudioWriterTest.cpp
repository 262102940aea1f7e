#include "hosts/cli/AudioWriter.h"

#include "SoundFiles.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

using namespace qor::cli;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

void writeStereo(const std::string& file, OutputFormat format, const std::vector<float>& left,
                 const std::vector<float>& right, std::uint64_t* clipped = nullptr) {
    auto writer = AudioWriter::create(file, format, 48000, static_cast<std::int64_t>(left.size()));
    ASSERT_TRUE(writer) << writer.error().localizedDescription();
    ASSERT_TRUE(writer.value()->write(left.data(), right.data(), left.size()));
    if (clipped != nullptr) {
        *clipped = writer.value()->clippedSamples();
    }
    ASSERT_TRUE(writer.value()->commit());
}

} // namespace

TEST(AudioWriter, FloatKeepsEveryBit) {
    const test::TemporaryFolder folder;
    const std::vector<float> left{0.1F, 5.0F, 1e-42F, -0.0F};
    const std::vector<float> right{-0.3F, std::numeric_limits<float>::infinity(), 0.5F, -1e30F};
    writeStereo(folder.path("a.wav"), OutputFormat::float32, left, right);
    int format = 0;
    const test::Sound sound = test::readSound(folder.path("a.wav"), &format);
    EXPECT_EQ(format, SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    EXPECT_EQ(sound.rate, 48000);
    EXPECT_EQ(sound.channels, 2);
    ASSERT_EQ(sound.frames(), left.size());
    for (std::size_t i = 0; i < left.size(); ++i) {
        EXPECT_EQ(std::signbit(sound.samples[2 * i]), std::signbit(left[i]));
        EXPECT_EQ(sound.samples[2 * i], left[i]);
        EXPECT_EQ(sound.samples[2 * i + 1], right[i]);
    }
}

TEST(AudioWriter, IntegerFormatsRoundToTheNearestAndCutAtFullScale) {
    const test::TemporaryFolder folder;
    const struct {
        OutputFormat format;
        int expected;
        double fullScale;
    } cases[] = {{OutputFormat::pcm16, SF_FORMAT_WAV | SF_FORMAT_PCM_16, 32768.0},
                 {OutputFormat::pcm24, SF_FORMAT_WAV | SF_FORMAT_PCM_24, 8388608.0},
                 {OutputFormat::flac, SF_FORMAT_FLAC | SF_FORMAT_PCM_24, 8388608.0}};
    for (const auto& row : cases) {
        const auto step = static_cast<float>(1.0 / row.fullScale);
        std::uint64_t clipped = 0;
        writeStereo(folder.path("a"), row.format, {0.5F, 2.0F, 3.4F * step, 1.0F},
                    {-0.25F, -2.0F, -3.6F * step, std::numeric_limits<float>::quiet_NaN()}, &clipped);
        int format = 0;
        const test::Sound sound = test::readSound(folder.path("a"), &format);
        EXPECT_EQ(format, row.expected);
        EXPECT_EQ(clipped, 2U) << "1.0 itself is not counted";
        EXPECT_THAT(sound.samples, ElementsAre(0.5F, -0.25F, 1.0F - step, -1.0F, 3.0F * step, -4.0F * step,
                                               1.0F - step, 0.0F));
    }
}

TEST(AudioWriter, A16BitFileComesBackUnchangedThroughTheReadersScale) {
    const test::TemporaryFolder folder;
    std::vector<float> left;
    for (int value = -32768; value < 32768; value += 7) {
        left.push_back(static_cast<float>(value) / 32768.0F);
    }
    writeStereo(folder.path("a.wav"), OutputFormat::pcm16, left, left);
    const test::Sound sound = test::readSound(folder.path("a.wav"));
    for (std::size_t i = 0; i < left.size(); ++i) {
        ASSERT_EQ(sound.samples[2 * i], left[i]);
    }
}

TEST(AudioWriter, TheSameSamplesGiveTheSameBytes) {
    const test::TemporaryFolder folder;
    const std::vector<float> samples(5000, 0.7F);
    for (const OutputFormatName& row : kOutputFormats) {
        writeStereo(folder.path("one"), row.format, samples, samples);
        writeStereo(folder.path("two"), row.format, samples, samples);
        EXPECT_EQ(test::contentOf(folder.path("one")), test::contentOf(folder.path("two"))) << row.name;
        EXPECT_EQ(test::contentOf(folder.path("one")).find("PEAK"), std::string::npos)
            << "a chunk with the time of writing";
    }
}

TEST(AudioWriter, NothingAppearsBeforeTheCommit) {
    const test::TemporaryFolder folder;
    {
        auto writer = AudioWriter::create(folder.path("a.wav"), OutputFormat::float32, 48000, 4);
        ASSERT_TRUE(writer);
        const std::vector<float> samples(4);
        ASSERT_TRUE(writer.value()->write(samples.data(), samples.data(), 4));
        EXPECT_THAT(folder.names(), testing::Not(testing::Contains("a.wav")));
    }
    EXPECT_TRUE(folder.names().empty());
}

TEST(AudioWriter, GoesTo64BitSizesOnlyWhereAWavFileCannotHoldTheSamples) {
    EXPECT_FALSE(needsRF64(OutputFormat::float32, 48000LL * 3600));
    EXPECT_FALSE(needsRF64(OutputFormat::float32, 536870399));
    EXPECT_TRUE(needsRF64(OutputFormat::float32, 536870912));
    EXPECT_FALSE(needsRF64(OutputFormat::pcm16, 536870912));
    EXPECT_TRUE(needsRF64(OutputFormat::pcm16, 2LL * 536870912));
    EXPECT_TRUE(needsRF64(OutputFormat::pcm24, 715827883));
    EXPECT_FALSE(needsRF64(OutputFormat::flac, 1LL << 40));
}

TEST(AudioWriter, WritesAReadableFileWithSizesOf64Bits) {
    const test::TemporaryFolder folder;
    auto writer = AudioWriter::create(folder.path("a.wav"), OutputFormat::float32, 48000, 1LL << 32);
    ASSERT_TRUE(writer);
    const std::vector<float> samples{0.5F, 0.25F};
    ASSERT_TRUE(writer.value()->write(samples.data(), samples.data(), 2));
    ASSERT_TRUE(writer.value()->commit());
    EXPECT_THAT(test::readSound(folder.path("a.wav")).samples, ElementsAre(0.5F, 0.5F, 0.25F, 0.25F));
}
