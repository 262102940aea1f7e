#include "hosts/standalone/Sound.h"

#include "platform/core/Text.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>

namespace qor::app {

namespace {

constexpr std::chrono::milliseconds kDoorPause{1};

} // namespace

Result<void> Sound::start(const SoundOptions& options, std::vector<std::string>& notes) {
    stop();
    const bool any = options.backend == BackendChoice::automatic;
    if (options.backend == BackendChoice::none) {
        return {};
    }
    Result<void> done = soundError("there is no way to sound.");
    if (any || options.backend == BackendChoice::jack) {
        auto jack = openJack(options.clientName);
        done = jack ? run(std::move(jack).value()) : Result<void>(jack.error());
    }
    if (!done && (any || options.backend == BackendChoice::rtaudio)) {
        if (any) {
            notes.push_back(done.error().localizedDescription());
        }
        auto devices = openRtAudio(options.devices);
        done = devices ? run(std::move(devices).value()) : Result<void>(devices.error());
    }
    if (done && options.connect) {
        if (auto joined = backend_->connect(); !joined) {
            notes.push_back(joined.error().localizedDescription());
        }
    }
    return done;
}

Result<void> Sound::run(std::unique_ptr<AudioBackend> backend) {
    stop();
    rate_ = backend->sampleRate();
    if (auto ready = host_.activate(rate_); !ready) {
        return ready;
    }
    if (auto started = backend->start(*this); !started) {
        backend.reset();
        host_.deactivate();
        return started;
    }
    backend_ = std::move(backend);
    return {};
}

void Sound::stop() noexcept {
    if (backend_ != nullptr) {
        backend_.reset(); // no call of `process` behind this
        host_.deactivate();
        door_.store(Door::open);
    }
}

std::string Sound::description() const {
    if (backend_ == nullptr) {
        return "no sound";
    }
    return backend_->name() + ", " + std::to_string(std::lround(backend_->sampleRate())) + " Hz";
}

std::optional<std::string> Sound::takeLoss() {
    if (backend_ == nullptr) {
        return std::nullopt;
    }
    auto loss = backend_->loss();
    if (loss) {
        stop();
    }
    return loss;
}

bool Sound::followRate() {
    if (backend_ == nullptr || backend_->sampleRate() == rate_) {
        return false;
    }
    Door expected = Door::open;
    while (!door_.compare_exchange_weak(expected, Door::shut)) { // a block is being rendered
        expected = Door::open;
        std::this_thread::sleep_for(kDoorPause);
    }
    rate_ = backend_->sampleRate();
    host_.deactivate();
    if (host_.activate(rate_)) { // otherwise the unit renders silence
        door_.store(Door::open);
    }
    return true;
}

void Sound::process(const float* const input[2], float* const output[2], std::uint32_t frames) noexcept {
    Door expected = Door::open;
    if (!door_.compare_exchange_strong(expected, Door::inside)) {
        for (int c = 0; c < 2; ++c) {
            if (output[c] != nullptr) {
                std::fill_n(output[c], frames, 0.0F);
            }
        }
        return;
    }
    host_.render(input, output, frames, host::SpanEvents({}));
    door_.store(Door::open);
}

} // namespace qor::app
