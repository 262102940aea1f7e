// Reads a sound file as stereo 32-bit floats.
#pragma once

#include "hosts/cli/Failure.h"
#include "platform/files/FileDescriptor.h"

#include <sndfile.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace qor::cli {

inline constexpr int kLowestRate = 8000;    // Hz
inline constexpr int kHighestRate = 384000; // Hz

/// A sound file with one or two channels. One channel is delivered on both sides. Integer samples are scaled
/// to -1.0 up to below 1.0; floats come as they are, also beyond 1.0. A pipe is read to its end first.
class AudioReader {
public:
    /// Refuses what is missing, no sound file, has more than two channels or a rate outside 8000 to 384000
    /// Hz.
    static Result<std::unique_ptr<AudioReader>> open(const std::string& file);

    int sampleRate() const noexcept { return info_.samplerate; } // Hz
    int channels() const noexcept { return info_.channels; }
    /// What the file says of its length; reading may end earlier if the file is cut.
    std::int64_t frames() const noexcept { return info_.frames; }

    /// Reads the next frames, at most `count`; fewer at the file's end, 0 behind it.
    Result<std::size_t> read(float* left, float* right, std::size_t count);

private:
    struct Close {
        void operator()(SNDFILE* file) const noexcept { sf_close(file); }
    };

    AudioReader(std::string name, FileDescriptor kept, std::unique_ptr<SNDFILE, Close> file,
                const SF_INFO& info);

    std::string name_;
    FileDescriptor kept_; // what came through a pipe
    std::unique_ptr<SNDFILE, Close> file_;
    SF_INFO info_;
    std::vector<float> interleaved_;
};

} // namespace qor::cli
