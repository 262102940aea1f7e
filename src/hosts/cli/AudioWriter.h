// Writes stereo 32-bit floats to a sound file that appears when it is complete.
#pragma once

#include "hosts/cli/OutputFile.h"
#include "hosts/cli/OutputFormat.h"

#include <sndfile.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace qor::cli {

/// Whether a stereo WAV file of that many frames must be written as RF64, as its sizes go beyond 32 bits.
bool needsRF64(OutputFormat format, std::int64_t frames);

/// A stereo sound file in the making. The same samples give the same bytes: no time stamp goes in.
class AudioWriter {
public:
    /// `expectedFrames` decides between WAV and RF64 only.
    static Result<std::unique_ptr<AudioWriter>> create(const std::string& file, OutputFormat format,
                                                       int sampleRate, std::int64_t expectedFrames);

    /// Appends frames. In the integer formats samples are scaled by their full scale, rounded to the nearest,
    /// cut at full scale and counted if beyond 1.0; what is no number becomes 0.
    Result<void> write(const float* left, const float* right, std::size_t count);
    /// Completes the content and brings it to the disk. Nothing may be written afterwards.
    Result<void> finish();
    /// Finishes the file and gives it its name.
    Result<void> commit();

    /// Samples beyond 1.0 that the integer formats had to cut.
    std::uint64_t clippedSamples() const noexcept { return clipped_; }

private:
    // What the library's callbacks work on; the first failure of the system is kept for the error text.
    struct Stream {
        int descriptor = -1;
        int failure = 0;
    };
    struct Close {
        void operator()(SNDFILE* file) const noexcept { sf_close(file); }
    };

    AudioWriter(std::unique_ptr<OutputFile> target, OutputFormat format);
    static SF_VIRTUAL_IO callbacks();
    NSError failure() const;

    std::unique_ptr<OutputFile> target_;
    OutputFormat format_;
    Stream stream_;
    std::unique_ptr<SNDFILE, Close> file_; // after `stream_`, which closing still uses
    int closingStatus_ = 0;
    std::vector<float> floats_;
    std::vector<int> integers_;
    std::uint64_t clipped_ = 0;
};

} // namespace qor::cli
