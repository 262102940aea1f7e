#include "hosts/cli/OutputFormat.h"

#include <gtest/gtest.h>

using namespace qor::cli;

namespace {

std::string refusal(const std::string& file, const std::string& wanted) {
    const auto chosen = chooseOutputFormat(file, wanted);
    EXPECT_FALSE(chosen);
    EXPECT_EQ(chosen.error().code, kExitWrongUsage);
    return chosen.error().localizedDescription();
}

} // namespace

TEST(OutputFormat, NamesAreKnownAndOthersAreNot) {
    EXPECT_EQ(outputFormatNamed("pcm16"), OutputFormat::pcm16);
    EXPECT_EQ(outputFormatNamed("float"), OutputFormat::float32);
    EXPECT_EQ(outputFormatNamed("mp3"), std::nullopt);
    EXPECT_EQ(refusal("a.wav", "mp3"), "--format: 'mp3' is no format. Give float, pcm24, pcm16 or flac.");
}

TEST(OutputFormat, WithoutAWishTheEndingDecides) {
    EXPECT_EQ(chooseOutputFormat("a.wav", "").value(), OutputFormat::float32);
    EXPECT_EQ(chooseOutputFormat("a.FLAC", "").value(), OutputFormat::flac);
    EXPECT_EQ(chooseOutputFormat("a.flac/b", "").value(), OutputFormat::float32);
    EXPECT_EQ(chooseOutputFormat("a.part", "").value(), OutputFormat::float32);
}

TEST(OutputFormat, AWishCountsWhereTheEndingPromisesNothingElse) {
    EXPECT_EQ(chooseOutputFormat("a.wav", "pcm16").value(), OutputFormat::pcm16);
    EXPECT_EQ(chooseOutputFormat("a.flac", "flac").value(), OutputFormat::flac);
    EXPECT_EQ(chooseOutputFormat("a", "flac").value(), OutputFormat::flac);
    EXPECT_EQ(chooseOutputFormat("a.v2", "pcm24").value(), OutputFormat::pcm24);
    EXPECT_EQ(refusal("a.flac", "pcm24"),
              "--format: pcm24 makes a WAV file, and 'a.flac' ends in .flac. Name it .wav, or give flac.");
    EXPECT_EQ(refusal("a.Wav", "flac"), "--format: flac makes a FLAC file, and 'a.Wav' ends in .wav. Name it "
                                        ".flac, or give another format.");
}

TEST(OutputFormat, AnEndingOfAnotherKindOfFileIsRefused) {
    for (const std::string ending : {".mp3", ".ogg", ".opus", ".aiff", ".m4a", ".w64"}) {
        for (const char* wanted : {"", "float", "flac"}) {
            EXPECT_EQ(refusal("x" + ending, wanted), "--output: 'x" + ending + "' ends in " + ending +
                                                         ", which can't be written. Name it .wav or .flac.");
        }
    }
}
