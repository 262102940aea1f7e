// Where the program's sound comes from and goes to.
#pragma once

#include "platform/core/Core.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qor::app {

inline constexpr const char* kErrorDomain = "qor-limiter-app";

inline NSError soundError(std::string text) {
    return {kErrorDomain, 1, {{NSLocalizedDescriptionKey, std::move(text)}}};
}

/// Fills the blocks of a backend.
class AudioTarget {
public:
    virtual ~AudioTarget() = default;
    /// The backend's own thread. A null channel is silence or is dropped.
    virtual void process(const float* const input[2], float* const output[2],
                         std::uint32_t frames) noexcept = 0;
};

/// A connection to a sound server or to devices. Main thread, apart from the calls of the target.
class AudioBackend {
public:
    AudioBackend() = default;
    AudioBackend(const AudioBackend&) = delete;
    AudioBackend& operator=(const AudioBackend&) = delete;
    /// Ends the calls of the target.
    virtual ~AudioBackend() = default;

    /// For messages: "JACK".
    virtual std::string name() const = 0;
    /// In hertz, as it is now; known before `start`. A server may change it while it runs.
    virtual double sampleRate() const = 0;
    /// From now on the target is called. It must outlive the backend.
    virtual Result<void> start(AudioTarget& target) = 0;
    virtual void stop() noexcept = 0;
    /// Connects with the first capture and playback channels of the machine.
    virtual Result<void> connect() = 0;
    /// Why there is no sound any more; absent while all is well.
    virtual std::optional<std::string> loss() const = 0;
};

struct DeviceChoice {
    std::string input; // part of a name, or a number of the list; empty for the default
    std::string output;
};

/// Joins a JACK server that runs; never starts one.
Result<std::unique_ptr<AudioBackend>> openJack(const std::string& clientName);
/// Opens devices through RtAudio.
Result<std::unique_ptr<AudioBackend>> openRtAudio(const DeviceChoice& choice);

/// For people, a line each.
std::vector<std::string> describeJack();
std::vector<std::string> describeRtAudio();

} // namespace qor::app
