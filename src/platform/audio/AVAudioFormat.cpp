#include "platform/audio/AVAudioFormat.h"

#include "platform/core/Text.h"

#include <cmath>

namespace platform {

namespace {

std::string rateText(double rate) {
    return std::floor(rate) == rate && std::abs(rate) < 1e9 ? fixedText(rate, 0) : text(rate);
}

} // namespace

std::optional<std::string> AVAudioFormat::channelLayout() const {
    if (channelCount_ <= 2) {
        return std::nullopt;
    }
    return "discrete in order, " + text(channelCount_) + " channels";
}

std::map<std::string, std::string> AVAudioFormat::settings() const {
    return {
        {"AVFormatIDKey", "lpcm"},
        {"AVLinearPCMBitDepthKey", "32"},
        {"AVLinearPCMIsBigEndianKey", "0"},
        {"AVLinearPCMIsFloatKey", "1"},
        {"AVLinearPCMIsNonInterleaved", "1"},
        {"AVNumberOfChannelsKey", text(channelCount_)},
        {"AVSampleRateKey", rateText(sampleRate_)},
    };
}

std::string AVAudioFormat::description() const {
    return text(channelCount_) + " ch, " + rateText(sampleRate_) + " Hz, Float32, deinterleaved";
}

std::string text(AVAudioCommonFormat format) {
    switch (format) {
    case AVAudioCommonFormat::PCMFormatFloat32:
        return "pcmFloat32";
    case AVAudioCommonFormat::PCMFormatFloat64:
        return "pcmFloat64";
    case AVAudioCommonFormat::PCMFormatInt16:
        return "pcmInt16";
    case AVAudioCommonFormat::PCMFormatInt32:
        return "pcmInt32";
    case AVAudioCommonFormat::OtherFormat:
        break;
    }
    return "other";
}

} // namespace platform
