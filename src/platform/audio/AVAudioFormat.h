// The shape of an audio signal: rate, channels, sample type.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace platform {

enum class AVAudioCommonFormat : std::uint8_t {
    OtherFormat = 0,
    PCMFormatFloat32 = 1,
    PCMFormatFloat64 = 2,
    PCMFormatInt16 = 3,
    PCMFormatInt32 = 4,
};

/// An immutable value. Only the standard form exists here: 32-bit floats, one buffer per channel.
class AVAudioFormat {
public:
    /// `initStandardFormatWithSampleRate:channels:`. `sampleRate` in hertz. Takes any values; a bus refuses
    /// what it cannot carry.
    AVAudioFormat(double sampleRate, std::uint32_t channels)
        : sampleRate_(sampleRate), channelCount_(channels) {}

    double sampleRate() const noexcept { return sampleRate_; }
    std::uint32_t channelCount() const noexcept { return channelCount_; }
    AVAudioCommonFormat commonFormat() const noexcept { return AVAudioCommonFormat::PCMFormatFloat32; }
    bool isInterleaved() const noexcept { return false; }
    bool isStandard() const noexcept { return true; }
    /// Absent for mono and stereo, whose order needs no telling; otherwise the layout's name.
    std::optional<std::string> channelLayout() const;
    /// The format's description as keys and value texts, ordered by key.
    std::map<std::string, std::string> settings() const;
    /// One line for people: "2 ch, 44100 Hz, Float32, deinterleaved".
    std::string description() const;

    friend bool operator==(const AVAudioFormat&, const AVAudioFormat&) = default;

private:
    double sampleRate_;
    std::uint32_t channelCount_;
};

/// "pcmFloat32" and so on.
std::string text(AVAudioCommonFormat format);

} // namespace platform
