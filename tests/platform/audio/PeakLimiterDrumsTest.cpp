// The system peak limiter on drums as they were recorded (package sonic-pi-samples).
#include "platform/audio/Audio.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <sndfile.h>
#include <string>
#include <vector>

namespace {

using namespace platform;

struct Recording {
    double rate = 0.0;
    std::array<std::vector<float>, 2> channels;

    std::size_t frames() const { return channels[0].size(); }
    float peak() const {
        float highest = 0.0F;
        for (const auto& channel : channels) {
            for (const float sample : channel) {
                highest = std::max(highest, std::fabs(sample));
            }
        }
        return highest;
    }
};

/// A file of the package; a recording in mono stands on both sides.
Recording read(const std::string& name) {
    const std::string path = QOR_DRUMS_FOLDER "/" + name;
    SF_INFO info{};
    SNDFILE* const file = sf_open(path.c_str(), SFM_READ, &info);
    Recording recording;
    if (file == nullptr) {
        ADD_FAILURE() << path << " cannot be read: install the package sonic-pi-samples";
        return recording;
    }
    std::vector<float> interleaved(static_cast<std::size_t>(info.frames * info.channels));
    EXPECT_EQ(sf_readf_float(file, interleaved.data(), info.frames), info.frames) << path;
    sf_close(file);
    recording.rate = info.samplerate;
    const auto stride = static_cast<std::size_t>(info.channels);
    for (std::size_t c = 0; c < 2; ++c) {
        for (std::size_t at = std::min(c, stride - 1); at < interleaved.size(); at += stride) {
            recording.channels[c].push_back(interleaved[at]);
        }
    }
    return recording;
}

/// Through the whole unit, in calls of 512 frames, with this pre-gain from the first frame on.
Recording limited(const Recording& input, float preGain) {
    constexpr std::uint32_t kBlock = 512;
    Recording output = input;
    const Ref<AUAudioUnit> unit = instantiateAudioUnit(kSystemPeakLimiter).value();
    const AVAudioFormat format(input.rate, 2);
    EXPECT_TRUE((*unit->inputBusses())[0].setFormat(format).ok());
    EXPECT_TRUE((*unit->outputBusses())[0].setFormat(format).ok());
    unit->parameterTree()->parameterWithAddress(kLimiterParam_PreGain)->setValue(preGain);
    EXPECT_TRUE(unit->allocateRenderResources().ok());
    const AUInternalRenderBlock render = unit->internalRenderBlock();
    AudioTimeStamp stamp;
    const AURenderPullInputBlock source = [&](AudioUnitRenderActionFlags*, const AudioTimeStamp*,
                                              std::uint32_t frames, long, AudioBufferList* list) -> OSStatus {
        const auto at = static_cast<std::size_t>(stamp.mSampleTime);
        for (std::size_t c = 0; c < 2; ++c) {
            std::memcpy(list->mBuffers[c].mData, input.channels[c].data() + at, frames * sizeof(float));
        }
        return noErr;
    };
    for (std::size_t at = 0; at < input.frames(); at += kBlock) {
        const auto frames = static_cast<std::uint32_t>(std::min<std::size_t>(kBlock, input.frames() - at));
        stamp.mSampleTime = static_cast<double>(at);
        AudioBufferListStorage<2> list;
        for (std::size_t c = 0; c < 2; ++c) {
            list.list.mBuffers[c] = {1, frames * 4, output.channels[c].data() + at};
        }
        AudioUnitRenderActionFlags flags = 0;
        EXPECT_EQ(render(&flags, &stamp, frames, 0, &list.list, nullptr, source), noErr);
    }
    return output;
}

class PeakLimiterDrums : public testing::TestWithParam<const char*> {};

TEST_P(PeakLimiterDrums, NeverLeaveAboveFullScaleAtPreGainsOf24To40Decibels) {
    const Recording drums = read(GetParam());
    ASSERT_GT(drums.frames(), 10000U);
    for (const float preGain : {24.0F, 28.0F, 32.0F, 36.0F, 40.0F}) {
        ASSERT_GT(drums.peak() * std::pow(10.0F, preGain / 20.0F), 4.0F); // there is something to limit
        const Recording output = limited(drums, preGain);
        EXPECT_LE(output.peak(), 1.0F) << preGain << " dB";
        EXPECT_GT(output.peak(), 0.9F) << preGain << " dB"; // and it is not done by silence
    }
}

TEST_P(PeakLimiterDrums, PassBitForBitAtZeroDecibelsAsTheyStayBelowTheCeiling) {
    const Recording drums = read(GetParam());
    ASSERT_GT(drums.frames(), 10000U);
    ASSERT_LE(drums.peak(), 1.0F);
    const Recording output = limited(drums, 0.0F);
    for (std::size_t c = 0; c < 2; ++c) {
        for (std::size_t i = 0; i < drums.frames(); ++i) {
            ASSERT_EQ(std::bit_cast<std::uint32_t>(output.channels[c][i]),
                      std::bit_cast<std::uint32_t>(drums.channels[c][i]))
                << "channel " << c << ", frame " << i;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Recorded, PeakLimiterDrums,
                         testing::Values("loop_amen.flac", "drum_roll.flac", "drum_snare_hard.flac",
                                         "drum_tom_lo_hard.flac"),
                         [](const auto& parameter) {
                             const std::string name = parameter.param;
                             return name.substr(0, name.find('.'));
                         });

} // namespace
