// The unit between a backend's input and output.
#pragma once

#include "hosts/shared/UnitHost.h"
#include "hosts/standalone/AudioBackend.h"

#include <atomic>
#include <string>

namespace qor::app {

enum class BackendChoice : std::uint8_t { automatic, jack, rtaudio, none };

struct SoundOptions {
    BackendChoice backend = BackendChoice::automatic;
    bool connect = false;
    std::string clientName = "qor-limiter";
    DeviceChoice devices;
};

/// Main thread, apart from `process`. The host must outlive it.
class Sound final : private AudioTarget {
public:
    explicit Sound(host::UnitHost& host) : host_(host) {}
    ~Sound() override { stop(); }
    Sound(const Sound&) = delete;
    Sound& operator=(const Sound&) = delete;

    /// Opens the backend that was asked for, or the first that is there, and starts it. Notes on what did not
    /// work on the way are added to `notes`.
    Result<void> start(const SoundOptions& options, std::vector<std::string>& notes);
    void stop() noexcept;
    bool isRunning() const noexcept { return backend_ != nullptr; }
    /// "JACK, 48000 Hz", or "no sound".
    std::string description() const;
    /// Once, when the sound has ended by itself: why. It is stopped then.
    std::optional<std::string> takeLoss();
    /// Makes the unit ready for the backend's sample rate if that has changed, with silence meanwhile.
    /// Returns whether it has; the parameters stay as they are.
    bool followRate();

    /// Starts a backend that is there already.
    Result<void> run(std::unique_ptr<AudioBackend> backend);

private:
    enum class Door : std::uint8_t { open, inside, shut };

    void process(const float* const input[2], float* const output[2], std::uint32_t frames) noexcept override;

    host::UnitHost& host_;
    std::unique_ptr<AudioBackend> backend_;
    double rate_ = 0.0;                  // the unit's
    std::atomic<Door> door_{Door::open}; // shut while the unit isn't ready to render
};

} // namespace qor::app
