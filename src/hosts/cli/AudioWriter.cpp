#include "hosts/cli/AudioWriter.h"

#include <algorithm>
#include <cmath>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace qor::cli {

namespace {

constexpr std::int64_t kLargestWav = 0xFFFFFFFFLL - 4096; // bytes of samples, with room for the headers

int bytesPerSample(OutputFormat format) {
    switch (format) {
    case OutputFormat::float32:
        return 4;
    case OutputFormat::pcm16:
        return 2;
    case OutputFormat::pcm24:
    case OutputFormat::flac:
        break;
    }
    return 3;
}

int libraryFormat(OutputFormat format, std::int64_t frames) {
    const int container = needsRF64(format, frames) ? SF_FORMAT_RF64 : SF_FORMAT_WAV;
    switch (format) {
    case OutputFormat::float32:
        return container | SF_FORMAT_FLOAT;
    case OutputFormat::pcm24:
        return container | SF_FORMAT_PCM_24;
    case OutputFormat::pcm16:
        return container | SF_FORMAT_PCM_16;
    case OutputFormat::flac:
        break;
    }
    return SF_FORMAT_FLAC | SF_FORMAT_PCM_24;
}

} // namespace

bool needsRF64(OutputFormat format, std::int64_t frames) {
    return format != OutputFormat::flac && frames > kLargestWav / (2LL * bytesPerSample(format));
}

// The library's own file handling does not tell what went wrong with a write, so it goes through ours.
SF_VIRTUAL_IO AudioWriter::callbacks() {
    SF_VIRTUAL_IO io{};
    io.get_filelen = [](void* user) -> sf_count_t {
        struct stat status {};
        return ::fstat(static_cast<Stream*>(user)->descriptor, &status) == 0 ? status.st_size : -1;
    };
    io.seek = [](sf_count_t offset, int whence, void* user) -> sf_count_t {
        return ::lseek(static_cast<Stream*>(user)->descriptor, offset, whence);
    };
    io.tell = [](void* user) -> sf_count_t {
        return ::lseek(static_cast<Stream*>(user)->descriptor, 0, SEEK_CUR);
    };
    io.read = [](void* to, sf_count_t count, void* user) -> sf_count_t {
        return std::max<ssize_t>(
            0, ::read(static_cast<Stream*>(user)->descriptor, to, static_cast<std::size_t>(count)));
    };
    io.write = [](const void* from, sf_count_t count, void* user) -> sf_count_t {
        auto& stream = *static_cast<Stream*>(user);
        const int failure =
            writeAll(stream.descriptor, {static_cast<const char*>(from), static_cast<std::size_t>(count)});
        if (failure != 0) {
            stream.failure = failure;
        }
        return failure == 0 ? count : 0;
    };
    return io;
}

Result<std::unique_ptr<AudioWriter>> AudioWriter::create(const std::string& file, OutputFormat format,
                                                         int sampleRate, std::int64_t expectedFrames) {
    Result<std::unique_ptr<OutputFile>> target = OutputFile::create(file);
    if (!target) {
        return target.error();
    }
    std::unique_ptr<AudioWriter> writer(new AudioWriter(std::move(target).value(), format));
    SF_INFO info{};
    info.samplerate = sampleRate;
    info.channels = 2;
    info.format = libraryFormat(format, expectedFrames);
    SF_VIRTUAL_IO io = callbacks();
    writer->file_.reset(sf_open_virtual(&io, SFM_WRITE, &info, &writer->stream_));
    if (writer->file_ == nullptr) {
        if (writer->stream_.failure != 0) {
            return writer->failure();
        }
        return workFailed("cannot write " + quotedName(file) + " at " + std::to_string(sampleRate) +
                          " Hz: " + sf_strerror(nullptr) + " Choose another --format.");
    }
    // The chunk of peaks holds the time of writing.
    sf_command(writer->file_.get(), SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
    return writer;
}

AudioWriter::AudioWriter(std::unique_ptr<OutputFile> target, OutputFormat format)
    : target_(std::move(target)), format_(format) {
    stream_.descriptor = target_->descriptor();
}

NSError AudioWriter::failure() const {
    if (stream_.failure != 0) {
        return writeFailure(target_->target(), stream_.failure);
    }
    return workFailed("cannot write " + quotedName(target_->target()) + ": " + sf_strerror(file_.get()) +
                      " Choose another --format.");
}

Result<void> AudioWriter::write(const float* left, const float* right, std::size_t count) {
    sf_count_t written = 0;
    if (format_ == OutputFormat::float32) {
        floats_.resize(2 * count);
        for (std::size_t i = 0; i < count; ++i) {
            floats_[2 * i] = left[i];
            floats_[2 * i + 1] = right[i];
        }
        written = sf_writef_float(file_.get(), floats_.data(), static_cast<sf_count_t>(count));
    } else {
        const int bits = 8 * bytesPerSample(format_);
        const double fullScale = std::ldexp(1.0, bits - 1);
        // The library takes the upper bits of an int.
        const auto place = static_cast<int>(std::ldexp(1.0, 32 - bits));
        const auto convert = [&](float sample) {
            if (std::isnan(sample)) {
                return 0;
            }
            const double scaled = std::nearbyint(static_cast<double>(sample) * fullScale);
            const double cut = std::clamp(scaled, -fullScale, fullScale - 1.0);
            clipped_ += std::abs(sample) > 1.0F ? 1 : 0;
            return static_cast<int>(cut) * place;
        };
        integers_.resize(2 * count);
        for (std::size_t i = 0; i < count; ++i) {
            integers_[2 * i] = convert(left[i]);
            integers_[2 * i + 1] = convert(right[i]);
        }
        written = sf_writef_int(file_.get(), integers_.data(), static_cast<sf_count_t>(count));
    }
    if (stream_.failure != 0 || written != static_cast<sf_count_t>(count)) {
        return failure();
    }
    return {};
}

Result<void> AudioWriter::finish() {
    if (file_ != nullptr) {
        closingStatus_ = sf_close(file_.release());
    }
    if (stream_.failure != 0) {
        return writeFailure(target_->target(), stream_.failure);
    }
    if (closingStatus_ != 0) {
        return workFailed("cannot complete " + quotedName(target_->target()) + ": " +
                          sf_error_number(closingStatus_) + " Choose another --format.");
    }
    return target_->sync();
}

Result<void> AudioWriter::commit() {
    if (Result<void> finished = finish(); !finished) {
        return finished;
    }
    return target_->commit();
}

} // namespace qor::cli
