// Sound files made and read for the tests.
#pragma once

#include <sndfile.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace test {

/// Interleaved samples.
struct Sound {
    int rate = 48000;
    int channels = 2;
    std::vector<float> samples;

    std::size_t frames() const { return samples.size() / static_cast<std::size_t>(channels); }
};

/// A decaying, uneven mixture that crosses the limiter's threshold often; the same for the same seed.
inline Sound burstyNoise(std::size_t frames, int channels = 2, int rate = 48000, unsigned seed = 1) {
    std::mt19937 generator(seed);
    std::uniform_real_distribution<float> noise(-1.0F, 1.0F);
    Sound sound{rate, channels, {}};
    for (std::size_t i = 0; i < frames; ++i) {
        const float level = 1.2F * std::exp(-static_cast<float>(i % 4000) / 1500.0F);
        for (int c = 0; c < channels; ++c) {
            sound.samples.push_back(level * noise(generator));
        }
    }
    return sound;
}

/// The sound so many times in a row, without holding all of it.
inline void writeRepeated(const std::string& file, const Sound& sound, int times,
                          int format = SF_FORMAT_WAV | SF_FORMAT_FLOAT) {
    SF_INFO info{};
    info.samplerate = sound.rate;
    info.channels = sound.channels;
    info.format = format;
    SNDFILE* handle = sf_open(file.c_str(), SFM_WRITE, &info);
    if (handle == nullptr) {
        throw std::runtime_error(sf_strerror(nullptr));
    }
    sf_command(handle, SFC_SET_CLIPPING, nullptr, SF_TRUE);
    for (int i = 0; i < times; ++i) {
        sf_writef_float(handle, sound.samples.data(), static_cast<sf_count_t>(sound.frames()));
    }
    sf_close(handle);
}

inline void writeSound(const std::string& file, const Sound& sound,
                       int format = SF_FORMAT_WAV | SF_FORMAT_FLOAT) {
    writeRepeated(file, sound, 1, format);
}

/// `format` receives the library's format bits.
inline Sound readSound(const std::string& file, int* format = nullptr) {
    SF_INFO info{};
    SNDFILE* handle = sf_open(file.c_str(), SFM_READ, &info);
    if (handle == nullptr) {
        throw std::runtime_error(sf_strerror(nullptr));
    }
    Sound sound{info.samplerate, info.channels,
                std::vector<float>(static_cast<std::size_t>(info.frames * info.channels))};
    sf_readf_float(handle, sound.samples.data(), info.frames);
    sf_close(handle);
    if (format != nullptr) {
        *format = info.format;
    }
    return sound;
}

} // namespace test
