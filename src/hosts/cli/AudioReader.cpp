#include "hosts/cli/AudioReader.h"

#include "hosts/cli/FileChecks.h"
#include "hosts/cli/InputPipe.h"

#include <utility>

namespace qor::cli {

namespace {

// sndfile ends its texts with a period of their own, mostly.
std::string withoutPeriod(std::string text) {
    while (!text.empty() && (text.back() == '.' || text.back() == ' ')) {
        text.pop_back();
    }
    return text;
}

} // namespace

Result<std::unique_ptr<AudioReader>> AudioReader::open(const std::string& file) {
    if (Result<void> readable = requireReadableFile(file); !readable) {
        return readable.error();
    }
    SF_INFO info{};
    std::unique_ptr<SNDFILE, Close> handle;
    Result<FileDescriptor> kept = isPipe(file) ? keepPipe(file) : FileDescriptor(-1);
    if (!kept) {
        return kept.error();
    }
    if (kept.value()) {
        handle.reset(sf_open_fd(kept.value().get(), SFM_READ, &info, SF_FALSE));
    } else { // by name, as some formats are told by the ending
        handle.reset(sf_open(file.c_str(), SFM_READ, &info));
    }
    if (handle == nullptr) {
        return workFailed("cannot read " + quotedName(file) + ": " + withoutPeriod(sf_strerror(nullptr)) +
                          ". Give a sound file that libsndfile reads: WAV, AIFF, FLAC, Ogg, MP3 and others.");
    }
    if (info.channels < 1 || info.channels > 2) {
        return workFailed("cannot limit " + quotedName(file) + ": it has " + std::to_string(info.channels) +
                          " channels. Give a file with one or two channels.");
    }
    if (info.samplerate < kLowestRate || info.samplerate > kHighestRate) {
        return workFailed("cannot limit " + quotedName(file) + ": its sample rate is " +
                          std::to_string(info.samplerate) +
                          " Hz. Convert it to a rate from 8000 to 384000 Hz.");
    }
    return std::unique_ptr<AudioReader>(
        new AudioReader(file, std::move(kept).value(), std::move(handle), info));
}

AudioReader::AudioReader(std::string name, FileDescriptor kept, std::unique_ptr<SNDFILE, Close> file,
                         const SF_INFO& info)
    : name_(std::move(name)), kept_(std::move(kept)), file_(std::move(file)), info_(info) {}

Result<std::size_t> AudioReader::read(float* left, float* right, std::size_t count) {
    const auto channelCount = static_cast<std::size_t>(info_.channels);
    interleaved_.resize(count * channelCount);
    const sf_count_t got = sf_readf_float(file_.get(), interleaved_.data(), static_cast<sf_count_t>(count));
    if (sf_error(file_.get()) != SF_ERR_NO_ERROR) {
        return workFailed("cannot read " + quotedName(name_) + " to its end: " +
                          withoutPeriod(sf_strerror(file_.get())) + ". The file is damaged; copy it again.");
    }
    const auto frames = static_cast<std::size_t>(got);
    for (std::size_t i = 0; i < frames; ++i) {
        left[i] = interleaved_[i * channelCount];
        right[i] = interleaved_[i * channelCount + (channelCount - 1)];
    }
    return frames;
}

} // namespace qor::cli
