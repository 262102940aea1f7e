// Sound devices without a JACK server, through RtAudio.
#include "hosts/standalone/AudioBackend.h"

#include <alsa/asoundlib.h>
#include <rtaudio/RtAudio.h>

#include <algorithm>
#include <atomic>

namespace qor::app {

namespace {

constexpr unsigned kFrames = 256; // asked for; a device may take another block size
constexpr unsigned kUsualRate = 48000;

// The library throws; nothing of that leaves these functions.
template <class F>
auto guarded(const F& work) -> decltype(work()) {
    try {
        return work();
    } catch (const std::exception& error) {
        return soundError(std::string("the sound device cannot be used: ") + error.what());
    }
}

// JACK has a backend of its own.
std::vector<RtAudio::Api> deviceApis() {
    std::vector<RtAudio::Api> apis;
    RtAudio::getCompiledApi(apis);
    std::erase_if(
        apis, [](RtAudio::Api api) { return api == RtAudio::UNIX_JACK || api == RtAudio::RTAUDIO_DUMMY; });
    return apis;
}

struct Device {
    unsigned number;
    RtAudio::DeviceInfo info;
};

std::vector<Device> devicesOf(RtAudio& audio) {
    std::vector<Device> found;
    const unsigned count = audio.getDeviceCount();
    for (unsigned i = 0; i < count; ++i) {
        if (RtAudio::DeviceInfo info = audio.getDeviceInfo(i); info.probed) {
            found.push_back({i, std::move(info)});
        }
    }
    return found;
}

// What the user asked for, otherwise the default device, otherwise the first.
const Device* choose(const std::vector<Device>& devices, const std::string& wanted, bool output) {
    const auto fits = [output](const Device& device) {
        return (output ? device.info.outputChannels : device.info.inputChannels) > 0;
    };
    const Device* best = nullptr;
    for (const Device& device : devices) {
        if (!fits(device)) {
            continue;
        }
        const bool isDefault = output ? device.info.isDefaultOutput : device.info.isDefaultInput;
        if (!wanted.empty()) {
            if (wanted == std::to_string(device.number) ||
                device.info.name.find(wanted) != std::string::npos) {
                return &device;
            }
        } else if (best == nullptr || isDefault) {
            best = &device;
        }
    }
    return best;
}

unsigned rateFor(const Device& output, const Device* input) {
    const auto both = [&](unsigned rate) {
        const auto has = [rate](const Device& device) {
            const auto& rates = device.info.sampleRates;
            return std::find(rates.begin(), rates.end(), rate) != rates.end();
        };
        return has(output) && (input == nullptr || has(*input));
    };
    for (const unsigned rate : {output.info.preferredSampleRate, kUsualRate, 44100U}) {
        if (both(rate)) {
            return rate;
        }
    }
    for (const unsigned rate : output.info.sampleRates) {
        if (both(rate)) {
            return rate;
        }
    }
    return kUsualRate;
}

class RtAudioBackend final : public AudioBackend {
public:
    RtAudioBackend(std::unique_ptr<RtAudio> audio, Device output, std::optional<Device> input)
        : audio_(std::move(audio)), output_(std::move(output)), input_(std::move(input)),
          rate_(rateFor(output_, input_ ? &*input_ : nullptr)) {}
    ~RtAudioBackend() override { RtAudioBackend::stop(); }

    std::string name() const override { return output_.info.name; }
    double sampleRate() const override { return rate_; }

    Result<void> start(AudioTarget& target) override {
        target_ = &target;
        return guarded([this]() -> Result<void> {
            RtAudio::StreamParameters out;
            out.deviceId = output_.number;
            out.nChannels = std::min(2U, output_.info.outputChannels);
            outputs_ = out.nChannels;
            RtAudio::StreamParameters in;
            if (input_) {
                in.deviceId = input_->number;
                in.nChannels = std::min(2U, input_->info.inputChannels);
                inputs_ = in.nChannels;
            }
            RtAudio::StreamOptions options;
            options.flags = RTAUDIO_NONINTERLEAVED | RTAUDIO_SCHEDULE_REALTIME;
            options.streamName = "QOR Limiter";
            unsigned frames = kFrames;
            audio_->openStream(&out, input_ ? &in : nullptr, RTAUDIO_FLOAT32, rate_, &frames, callback, this,
                               &options, [](RtAudioError::Type /*type*/, const std::string& /*text*/) {});
            if (!audio_->isStreamOpen()) {
                return soundError("the sound device '" + output_.info.name +
                                  "' cannot be opened. Is another program using it?");
            }
            audio_->startStream();
            started_ = true;
            return {};
        });
    }

    void stop() noexcept override {
        started_ = false;
        try {
            if (audio_->isStreamRunning()) {
                audio_->abortStream();
            }
            if (audio_->isStreamOpen()) {
                audio_->closeStream();
            }
        } catch (
            const std::exception&) { // NOLINT(bugprone-empty-catch): a device that is gone needs no closing
        }
    }

    // Devices are connected by being opened.
    Result<void> connect() override { return {}; }

    std::optional<std::string> loss() const override {
        if (started_ && !audio_->isStreamRunning()) {
            return "the sound device '" + output_.info.name + "' has gone";
        }
        return std::nullopt;
    }

private:
    static int callback(void* output, void* input, unsigned frames, double /*time*/,
                        RtAudioStreamStatus /*status*/, void* self) {
        static_cast<RtAudioBackend*>(self)->process(static_cast<float*>(output),
                                                    static_cast<const float*>(input), frames);
        return 0;
    }

    // Channels lie one behind the other; a single input feeds both sides, a single output gets the left one.
    void process(float* output, const float* input, unsigned frames) noexcept {
        const float* const in[2] = {input, input != nullptr && inputs_ > 1 ? input + frames : input};
        float* const out[2] = {output, output != nullptr && outputs_ > 1 ? output + frames : nullptr};
        target_->process(in, out, frames);
    }

    std::unique_ptr<RtAudio> audio_;
    Device output_;
    std::optional<Device> input_;
    unsigned rate_;
    unsigned outputs_ = 0;
    unsigned inputs_ = 0;
    bool started_ = false;
    AudioTarget* target_ = nullptr;
};

// NOLINTNEXTLINE(cert-dcl50-cpp): the library's own signature
void dropAlsaText(const char* /*file*/, int /*line*/, const char* /*function*/, int /*error*/,
                  const char* /*format*/, ...) {}

std::unique_ptr<RtAudio> openApi(RtAudio::Api api) {
    // ALSA's library writes to standard error by itself; what matters is said by us.
    snd_lib_error_set_handler(dropAlsaText);
    auto audio = std::make_unique<RtAudio>(api);
    audio->showWarnings(false);
    return audio;
}

} // namespace

Result<std::unique_ptr<AudioBackend>> openRtAudio(const DeviceChoice& choice) {
    return guarded([&]() -> Result<std::unique_ptr<AudioBackend>> {
        for (const RtAudio::Api api : deviceApis()) {
            auto audio = openApi(api);
            const std::vector<Device> devices = devicesOf(*audio);
            const Device* output = choose(devices, choice.output, true);
            if (output == nullptr) {
                continue;
            }
            const Device* input = choose(devices, choice.input, false);
            if (input == nullptr && !choice.input.empty()) {
                return soundError("there is no input device '" + choice.input + "'. See --list-devices.");
            }
            return std::unique_ptr<AudioBackend>(std::make_unique<RtAudioBackend>(
                std::move(audio), *output, input == nullptr ? std::nullopt : std::optional(*input)));
        }
        return soundError(choice.output.empty()
                              ? std::string("there is no sound device.")
                              : "there is no output device '" + choice.output + "'. See --list-devices.");
    });
}

std::vector<std::string> describeRtAudio() {
    std::vector<std::string> lines;
    for (const RtAudio::Api api : deviceApis()) {
        std::string title = "RtAudio, " + RtAudio::getApiDisplayName(api) + ":";
        try {
            const auto audio = openApi(api);
            const std::vector<Device> devices = devicesOf(*audio);
            lines.push_back(title + (devices.empty() ? " no devices" : ""));
            for (const Device& device : devices) {
                lines.push_back("  " + std::to_string(device.number) + ": " + device.info.name + ", " +
                                std::to_string(device.info.inputChannels) + " in, " +
                                std::to_string(device.info.outputChannels) + " out" +
                                (device.info.isDefaultInput ? ", default input" : "") +
                                (device.info.isDefaultOutput ? ", default output" : ""));
            }
        } catch (const std::exception& error) {
            lines.push_back(title + " " + error.what());
        }
    }
    return lines;
}

} // namespace qor::app
